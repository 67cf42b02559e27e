#include "vorix/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <utility>

#include "platform/EndingSignals.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

// Tries with this many names before giving up on a folder full of leftovers.
constexpr int kTemporaryNameAttempts = 100;

std::atomic<unsigned> gTemporaryCounter{0};

// Takes the file off the signal handlers' list.
void Release(int& slot) noexcept {
    ReleaseTemporaryFile(slot);
    slot = -1;
}

std::string Quoted(const std::string& path) {
    return "\"" + path + "\"";
}

// A hidden name beside the output, unique to this process and call.
std::string TemporaryName(const std::filesystem::path& path) {
    std::string name(1, '.');
    name.append(path.filename().string()).append(".vorix-").append(std::to_string(getpid()));
    name.append("-").append(std::to_string(gTemporaryCounter.fetch_add(1))).append(".part");
    return (path.parent_path() / name).string();
}

}  // namespace

PendingOutputFile::PendingOutputFile(const std::string& path) : path_(path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        throw ToolFailure(Quoted(path) + " is a folder; the output needs a file name");
    }
    for (int attempt = 0; attempt < kTemporaryNameAttempts; ++attempt) {
        temporaryPath_ = TemporaryName(std::filesystem::path(path));
        // Enlisted before it exists, so that no signal finds it made but unknown.
        unfinishedSlot_ = EnlistTemporaryFile(temporaryPath_);
        // 0666 before the user's umask, as for any file a program creates.
        descriptor_ = open(temporaryPath_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor_ >= 0) return;
        const int reason = errno;
        Release(unfinishedSlot_);
        errno = reason;
        if (errno != EEXIST) break;
    }
    const std::string folder = std::filesystem::path(path).parent_path().string();
    throw ToolFailure("cannot create a file in " + Quoted(folder.empty() ? "." : folder) + ": " +
                      SystemReason(errno));
}

PendingOutputFile::~PendingOutputFile() {
    if (!committed_) Discard();
}

void PendingOutputFile::Commit() {
    if (fsync(descriptor_) != 0 || close(std::exchange(descriptor_, -1)) != 0 ||
        rename(temporaryPath_.c_str(), path_.c_str()) != 0) {
        const std::string reason = SystemReason(errno);
        Discard();
        throw ToolFailure("cannot put the output in place as " + Quoted(path_) + ": " + reason);
    }
    committed_ = true;
    Release(unfinishedSlot_);
}

void PendingOutputFile::Discard() noexcept {
    if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
    unlink(temporaryPath_.c_str());
    Release(unfinishedSlot_);
}

}  // namespace vorix::cli
