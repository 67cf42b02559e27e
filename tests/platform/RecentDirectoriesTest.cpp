#include "platform/RecentDirectories.h"

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace vorix {
namespace {

namespace fs = std::filesystem;

// Each test gets a fresh folder of its own as $XDG_CONFIG_HOME, restored afterwards.
class RecentDirectoriesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (const char* value = std::getenv("XDG_CONFIG_HOME")) savedXdg = value;
        std::string pattern = (fs::temp_directory_path() / "vorix-recent-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        root = pattern;
        ::setenv("XDG_CONFIG_HOME", (root / "config").c_str(), 1);
    }
    void TearDown() override {
        fs::remove_all(root);
        ::setenv("XDG_CONFIG_HOME", savedXdg.c_str(), 1);  // empty counts as unset
    }

    fs::path StoreFolder() const { return root / "config" / "Zorvane Sound Works"; }
    fs::path StoreFile() const { return StoreFolder() / "Recent Directories"; }
    // Nothing but the store itself: no temporary file left beside it.
    long FolderEntries() const {
        return std::distance(fs::directory_iterator(StoreFolder()), fs::directory_iterator());
    }

    std::string savedXdg;
    fs::path root;
};

TEST_F(RecentDirectoriesTest, MissingOrEmptyFileReadsAsNoDirectory) {
    const RecentDirectories store = RecentDirectories::ForCurrentUser();
    EXPECT_EQ(store.ReadLastDirectory(), std::nullopt);
    fs::create_directories(StoreFolder());
    std::ofstream(StoreFile()).close();
    EXPECT_EQ(store.ReadLastDirectory(), std::nullopt);
}

// The file lives in the maker's folder, made as needed; a second write replaces the first whole.
TEST_F(RecentDirectoriesTest, WrittenDirectoryReadsBackAsOneLineOfTheStoreFile) {
    const RecentDirectories store = RecentDirectories::ForCurrentUser();
    EXPECT_EQ(store.FilePath(), StoreFile());
    const std::string directory = "/home/user/My Settings/\xC3\x89t\xC3\xA9 2024";
    store.WriteLastDirectory("/a/rather/long/directory/name/first");
    store.WriteLastDirectory(directory);
    EXPECT_EQ(RecentDirectories::ForCurrentUser().ReadLastDirectory(), directory);
    std::ostringstream contents;
    contents << std::ifstream(StoreFile(), std::ios::binary).rdbuf();
    EXPECT_EQ(contents.str(), directory + "\n");
    EXPECT_EQ(FolderEntries(), 1);
}

// A folder in the file's place makes the final rename fail after the text has been written.
TEST_F(RecentDirectoriesTest, FailedReplacementLeavesNoPartialFile) {
    const RecentDirectories store = RecentDirectories::ForCurrentUser();
    fs::create_directories(StoreFile() / "occupied");
    EXPECT_THROW(store.WriteLastDirectory("/tmp"), RecentDirectories::StoreError);
    EXPECT_EQ(FolderEntries(), 1);
    EXPECT_TRUE(fs::is_directory(StoreFile()));
}

}  // namespace
}  // namespace vorix
