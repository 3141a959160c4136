#include "platform/linux/base/base_folders.h"
#include "platform/linux/base/files.h"
#include "tests/contracts/files_contract.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

class LinuxFilesMaker {
  public:
    Files& Service() { return files_; }
    std::string Root() const { return folder_.Path().string(); }

  private:
    test::TemporaryFolder folder_;
    LinuxFiles files_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, FilesContract, LinuxFilesMaker);

TEST(LinuxFiles, LinksCountOnceAndNeverLeadRoundInACircle) {
    const test::TemporaryFolder folder;
    const fs::path root = folder.Path().string();
    fs::create_directories(root / "pictures/deep");
    fs::create_directories(root / "other");
    std::ofstream(root / "other/x.png") << "x";
    fs::create_symlink(root / "other", root / "pictures/album");
    fs::create_symlink(root / "pictures", root / "other/back");
    fs::create_symlink("..", root / "pictures/deep/up");
    fs::create_symlink("/", root / "pictures/deep/root");
    fs::create_symlink(".", root / "pictures/deep/self");
    fs::create_symlink(root / "other/x.png", root / "pictures/link.png");
    fs::create_symlink(root / "nowhere.png", root / "pictures/dangling.png");
    ASSERT_EQ(mkfifo((root / "pictures/pipe.png").c_str(), 0600), 0);

    LinuxFiles files;
    FolderListing listing;
    EXPECT_TRUE(files.List(folder.Path().string() + "/pictures", "*.png", listing));
    EXPECT_EQ(Sorted(listing.folders), (Names{"album", "deep"}));
    EXPECT_EQ(Sorted(listing.files), Names{"link.png"});
    EXPECT_TRUE(files.List(folder.Path().string() + "/pictures/deep", "*.png", listing));
    EXPECT_EQ(listing.folders.size(), 0U);
    EXPECT_TRUE(files.List(folder.Path().string() + "/pictures/album/", "*.png", listing));
    EXPECT_EQ(listing.folders.size(), 0U) << "back to where the path came from";
    EXPECT_TRUE(files.List(folder.Path().string() + "/other", "*.png", listing));
    EXPECT_EQ(Sorted(listing.folders), Names{"back"}) << "no circle yet";
}

TEST(LinuxFiles, ReplacingKeepsRightsAndLinks) {
    const test::TemporaryFolder folder;
    LinuxFiles files;
    const std::string target = folder.Path().string() + "/real.bmp";
    const std::string link = folder.Path().string() + "/link.bmp";
    ASSERT_TRUE(StoreFile(files, target, "old"));
    fs::permissions(target, fs::perms(0640));
    fs::create_symlink("real.bmp", link);
    EXPECT_TRUE(StoreFile(files, link, "new"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(files.Read(target), "new");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    std::string why;
    EXPECT_FALSE(files.Replace(folder.Path().string(), why));
    EXPECT_EQ(why, "not a regular file");
}

TEST(LinuxFiles, AFullDiskLeavesTheOldFileWhole) {
    const test::TemporaryFolder folder;
    LinuxFiles files;
    const std::string target = folder.Path().string() + "/Wallpaper.bmp";
    ASSERT_TRUE(StoreFile(files, target, "old"));
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    std::string why;
    {
        const auto writer = files.Replace(target, why);
        ASSERT_TRUE(writer);
        EXPECT_FALSE(writer->Write(std::string(5000, 'n').data(), 5000));
        EXPECT_FALSE(writer->Commit());
        EXPECT_EQ(writer->Why(), "File too large");
    }
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(files.Read(target), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path().string()), fs::directory_iterator()), 1);
    EXPECT_FALSE(files.Replace("/proc/Wallpaper.bmp", why)) << "nothing can be made there";
    EXPECT_EQ(why, "No such file or directory");
}

TEST(LinuxFiles, WhatAKilledProcessLeftGoesWithTheNextSave) {
    const test::TemporaryFolder folder;
    LinuxFiles files;
    // As long as a name can be, its last letters of two bytes each.
    std::string name = "w";
    while (name.size() < 255)
        name += "\u0436";
    const std::string target = folder.Path().string() + "/" + name;
    std::string why;
    const auto alive = files.Replace(target, why);
    ASSERT_TRUE(alive) << why;
    ASSERT_TRUE(alive->Write("alive", 5));
    const pid_t child = fork();
    if (child == 0) {
        const auto dead = files.Replace(target, why);
        _exit(dead && dead->Write("dead", 4) ? 0 : 1);
    }
    int status = 1;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    const auto count = [&] {
        return std::distance(fs::directory_iterator(folder.Path().string()), fs::directory_iterator());
    };
    EXPECT_EQ(count(), 2);
    ASSERT_TRUE(StoreFile(files, target, "new"));
    EXPECT_EQ(count(), 2) << "what is being written stays";
    EXPECT_TRUE(alive->Commit());
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(files.Read(target), "alive");
}

TEST(LinuxFiles, ReadsWhatTellsNoSizeAndFindsItsFolders) {
    LinuxFiles files;
    EXPECT_GT(files.Read("/proc/self/maps").value_or("").size(), 1000U);
    EXPECT_EQ(files.Read("/dev/zero"), std::nullopt) << "it would never end";
    EXPECT_TRUE(files.Exists(files.ProgramDirectory() + "/test_platform_linux_base"));
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(files.WritableDirectory(), "/data/quorvane");
    setenv("XDG_DATA_HOME", "relative", 1);
    setenv("HOME", "/home/ann", 1);
    EXPECT_EQ(files.WritableDirectory(), "/home/ann/.local/share/quorvane");
    unsetenv("XDG_DATA_HOME");
}

TEST(BaseFolders, LieInTheAccountsHomeWhereTheVariableSaysNothing) {
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        unsetenv(name);
    const std::string home = getpwuid(getuid())->pw_dir;
    for (const char* said : {"", "relative"}) {
        setenv("HOME", said, 1);
        EXPECT_EQ(ConfigFolder(), home + "/.config");
        EXPECT_EQ(DataFolder(), home + "/.local/share");
        EXPECT_EQ(StateFolder(), home + "/.local/state");
    }
    unsetenv("HOME");
    EXPECT_EQ(ConfigFolder(), home + "/.config");
}

} // namespace
} // namespace quorvane
