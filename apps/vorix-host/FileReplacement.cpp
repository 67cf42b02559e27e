#include "vorix-host/FileReplacement.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/EndingSignals.h"
#include "vorix-host/HostError.h"

namespace vorix {
namespace {

std::string SystemReason() {
    return std::strerror(errno);
}

}  // namespace

FileReplacement::FileReplacement(std::string path) : path_(std::move(path)) {
    std::vector<char> pattern(path_.begin(), path_.end());
    const std::string suffix = ".partial-XXXXXX";
    pattern.insert(pattern.end(), suffix.begin(), suffix.end());
    pattern.push_back('\0');
    // Signals wait while the file is made and enlisted, so that none finds it made but unknown.
    sigset_t all, previous;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &previous);
    const int descriptor = mkstemp(pattern.data());
    const int reason = errno;
    if (descriptor >= 0) slot_ = EnlistTemporaryFile(pattern.data());
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    if (descriptor < 0) {
        throw HostError("The file " + path_ + " could not be written: " + std::strerror(reason) +
                        ".");
    }
    // The file gets the permissions a newly created file would have had.
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(descriptor, static_cast<mode_t>(0666) & ~mask);
    close(descriptor);
    temporary_ = pattern.data();
}

FileReplacement::~FileReplacement() {
    if (!committed_) std::remove(temporary_.c_str());
    ReleaseTemporaryFile(slot_);
}

void FileReplacement::Commit() {
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) {
        throw HostError("The file " + path_ + " could not be put in place: " + SystemReason() +
                        ".");
    }
    committed_ = true;
    ReleaseTemporaryFile(std::exchange(slot_, -1));
}

}  // namespace vorix
