#include "vorix-host/FileReplacement.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

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
    const int descriptor = mkstemp(pattern.data());
    if (descriptor < 0) {
        throw HostError("The file " + path_ + " could not be written: " + SystemReason() + ".");
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
}

void FileReplacement::Commit() {
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) {
        throw HostError("The file " + path_ + " could not be put in place: " + SystemReason() +
                        ".");
    }
    committed_ = true;
}

}  // namespace vorix
