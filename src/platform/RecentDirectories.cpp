#include "platform/RecentDirectories.h"

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <vector>

namespace vorix {
namespace {

namespace fs = std::filesystem;

std::string Reason(int error) {
    return std::error_code(error, std::generic_category()).message();
}

// The home folder from the account entry, for a process started without $HOME.
fs::path AccountHome() {
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr || found->pw_dir == nullptr) {
        return {};
    }
    return found->pw_dir;
}

// An environment variable as a path, or empty when it is unset, empty or not absolute (the XDG
// rule: a relative path there is invalid and ignored).
fs::path AbsoluteFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr) return {};
    const fs::path path(value);
    return path.is_absolute() ? path : fs::path();
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        throw RecentDirectories::StoreError("Cannot create the folder \"" + folder.string() +
                                            "\": " + error.message());
    }
}

// Writes all of `text` to `fd` and flushes it to the disk; false with errno set on failure.
bool WriteAll(int fd, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t n = ::write(fd, text.data() + written, text.size() - written);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return false;
        if (n == 0) {
            errno = EIO;
            return false;
        }
        written += static_cast<std::size_t>(n);
    }
    return ::fsync(fd) == 0;
}

// Writes `text` to a new temporary file beside `target` and renames it over `target`. On any
// failure the temporary file is removed and StoreError says why.
void ReplaceFile(const fs::path& target, const std::string& text) {
    // A hidden name beside the target, so that the rename stays within one file system.
    std::string temporary = target.parent_path().string();
    temporary += "/.";
    temporary += target.filename().string();
    temporary += ".XXXXXX";
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        throw RecentDirectories::StoreError("Cannot create a file in \"" +
                                            target.parent_path().string() + "\": " + Reason(errno));
    }
    int error = 0;
    if (!WriteAll(fd, text)) error = errno;
    if (::close(fd) != 0 && error == 0) error = errno;
    if (error == 0 && std::rename(temporary.c_str(), target.c_str()) != 0) error = errno;
    if (error == 0) return;
    ::unlink(temporary.c_str());
    throw RecentDirectories::StoreError("Cannot write \"" + target.string() +
                                        "\": " + Reason(error));
}

}  // namespace

fs::path UserConfigFolder() {
    if (fs::path xdg = AbsoluteFromEnvironment("XDG_CONFIG_HOME"); !xdg.empty()) return xdg;
    fs::path home = AbsoluteFromEnvironment("HOME");
    if (home.empty()) home = AccountHome();
    return home.empty() ? fs::path() : home / ".config";
}

RecentDirectories RecentDirectories::ForCurrentUser() {
    return RecentDirectories(UserConfigFolder());
}

RecentDirectories::RecentDirectories(fs::path configFolder) {
    if (!configFolder.empty()) file_ = configFolder / kMakerConfigFolder / kRecentDirectoriesFile;
}

std::optional<std::string> RecentDirectories::ReadLastDirectory() const {
    if (file_.empty()) return std::nullopt;
    std::ifstream stream(file_);
    std::string line;
    if (!std::getline(stream, line) || line.empty()) return std::nullopt;
    return line;
}

void RecentDirectories::WriteLastDirectory(const std::string& directory) const {
    if (file_.empty()) {
        throw StoreError("Cannot store the settings directory: no configuration folder is known");
    }
    if (directory.find('\n') != std::string::npos) {
        throw StoreError("Cannot store a directory whose name holds a line feed");
    }
    MakeFolder(file_.parent_path());
    ReplaceFile(file_, directory + "\n");
}

}  // namespace vorix
