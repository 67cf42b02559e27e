#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace vorix {

// The folder and file, under the user's configuration folder, that keep the directory of the last
// settings file the user opened or saved.
inline constexpr const char* kMakerConfigFolder = "Zorvane Sound Works";
inline constexpr const char* kRecentDirectoriesFile = "Recent Directories";

// The user's configuration folder: $XDG_CONFIG_HOME when it is an absolute path, else
// $HOME/.config, else the home folder of the user's account entry with ".config"; empty when none
// of these is known. Any thread that does not change the environment meanwhile.
std::filesystem::path UserConfigFolder();

// The one machine-wide preference: the directory in which the settings file dialogs open next.
// It is one line of text in "<config>/Zorvane Sound Works/Recent Directories". Every operation
// does file I/O: main or editor thread, never the audio thread.
class RecentDirectories {
  public:
    // The preference could not be stored; the text says where and why.
    class StoreError : public std::runtime_error {
      public:
        using std::runtime_error::runtime_error;
    };

    // The store in the user's configuration folder (UserConfigFolder). Main or editor thread.
    static RecentDirectories ForCurrentUser();
    // The store in `configFolder`; an empty path is a store that holds nothing and cannot be
    // written. Any thread.
    explicit RecentDirectories(std::filesystem::path configFolder);

    // The file that holds the preference; empty for a store without a folder. Any thread.
    const std::filesystem::path& FilePath() const noexcept { return file_; }

    // The directory last stored; none when the file is missing, unreadable or empty. Never
    // throws for a bad file: a lost preference only means the dialog opens elsewhere.
    std::optional<std::string> ReadLastDirectory() const;

    // Replaces the stored directory, making the folders as needed. The file is replaced whole,
    // by a rename, so a reader sees the old line or the new one and a failure leaves no partial
    // file behind. Throws StoreError when the folder cannot be made or the file not written, and
    // for a directory whose name holds a line feed, which one line cannot keep.
    void WriteLastDirectory(const std::string& directory) const;

  private:
    std::filesystem::path file_;
};

}  // namespace vorix
