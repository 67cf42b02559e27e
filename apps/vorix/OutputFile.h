#pragma once

#include <string>

namespace vorix::cli {

// An output file that appears under its name only when it is complete: it is written under a
// temporary name in the same folder and renamed over the name on Commit, so that a reader never
// sees half a file and a failed command leaves nothing behind (and an older file of the name
// untouched). Main thread.
class PendingOutputFile {
  public:
    // Creates the temporary file. Throws ToolFailure when `path` is a folder or its folder cannot
    // take a new file.
    explicit PendingOutputFile(const std::string& path);
    // Removes the temporary file unless it was committed.
    ~PendingOutputFile();
    PendingOutputFile(const PendingOutputFile&) = delete;
    PendingOutputFile& operator=(const PendingOutputFile&) = delete;

    // The temporary file, open for reading and writing; owned by this object.
    int Descriptor() const noexcept { return descriptor_; }
    const std::string& Path() const noexcept { return path_; }

    // Flushes the data to the disk and puts the file in place under its name. Throws ToolFailure
    // when that fails; the temporary file is removed then.
    void Commit();

  private:
    void Discard() noexcept;

    std::string path_;
    std::string temporaryPath_;
    int descriptor_ = -1;
    int unfinishedSlot_ = -1;  // where a signal handler finds the temporary file
    bool committed_ = false;
};

}  // namespace vorix::cli
