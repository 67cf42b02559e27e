#pragma once

#include <string>

namespace vorix {

// Writes a file so that it appears whole or not at all: the writer fills a temporary file beside
// the destination, and Commit renames it into place. Without Commit the temporary file is
// removed. Main thread.
class FileReplacement {
  public:
    // Main thread. Throws HostError when no temporary file can be made beside `path`.
    explicit FileReplacement(std::string path);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Where the writer writes.
    const std::string& TemporaryPath() const noexcept { return temporary_; }
    // Main thread. Puts the written file in place; throws HostError when it cannot.
    void Commit();

  private:
    std::string path_;
    std::string temporary_;
    int slot_ = -1;  // where a signal handler finds the temporary file
    bool committed_ = false;
};

}  // namespace vorix
