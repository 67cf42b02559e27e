#include "platform/RecentDirectories.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace vorix {
namespace {

namespace fs = std::filesystem;

// Each test gets a fresh folder of its own as $XDG_CONFIG_HOME, restored afterwards.
class RecentDirectoriesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (const char* value = std::getenv("XDG_CONFIG_HOME")) savedXdg = value;
        root = fs::temp_directory_path() / ("vorix-recent-" + std::to_string(::getpid()));
        store = (folder = root / "config" / "Zorvane Sound Works") / "Recent Directories";
        ::setenv("XDG_CONFIG_HOME", (root / "config").c_str(), 1);
    }
    void TearDown() override {
        fs::remove_all(root);
        ::setenv("XDG_CONFIG_HOME", savedXdg.c_str(), 1);  // empty counts as unset
    }
    // The store alone in its folder: no temporary file left beside it.
    bool StoreIsAlone() const { return std::distance(fs::directory_iterator(folder), {}) == 1; }

    std::string savedXdg;
    fs::path root, folder, store;
};

TEST_F(RecentDirectoriesTest, MissingOrEmptyFileReadsAsNoDirectory) {
    EXPECT_EQ(RecentDirectories::ForCurrentUser().ReadLastDirectory(), std::nullopt);
    fs::create_directories(folder);
    std::ofstream(store).close();
    EXPECT_EQ(RecentDirectories::ForCurrentUser().ReadLastDirectory(), std::nullopt);
}

// The file lives in the maker's folder (config home as set up), made as needed; a second write
// replaces the first whole.
TEST_F(RecentDirectoriesTest, WrittenDirectoryReadsBackAsOneLineOfTheStoreFile) {
    const RecentDirectories recent = RecentDirectories::ForCurrentUser();
    const std::string directory = "/home/user/My Settings/\xC3\x89t\xC3\xA9 2024";
    recent.WriteLastDirectory("/a/rather/long/directory/name/first");
    recent.WriteLastDirectory(directory);
    EXPECT_EQ(RecentDirectories::ForCurrentUser().ReadLastDirectory(), directory);
    std::ifstream file(store, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), directory + "\n");
    EXPECT_TRUE(StoreIsAlone());
}

// A folder in the file's place makes the final rename fail after the text has been written.
TEST_F(RecentDirectoriesTest, FailedReplacementLeavesNoPartialFile) {
    fs::create_directories(store / "occupied");
    EXPECT_THROW(RecentDirectories::ForCurrentUser().WriteLastDirectory("/tmp"),
                 RecentDirectories::StoreError);
    EXPECT_TRUE(StoreIsAlone());
    EXPECT_TRUE(fs::is_directory(store));
}

}  // namespace
}  // namespace vorix
