#include "platform/linux/base/base_folders.h"
#include "platform/linux/base/files.h"
#include "tests/contracts/files_contract.h"
#include "tests/support/process.h"

#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>

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

class LinuxFilesTest : public testing::Test {
  protected:
    std::ptrdiff_t Entries() const { return std::distance(fs::directory_iterator(root), {}); }

    test::TemporaryFolder folder;
    const fs::path root = folder.Path();
    LinuxFiles files;
    std::string why;
};

TEST_F(LinuxFilesTest, LinksCountOnceAndNeverLeadRoundInACircle) {
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

    FolderListing listing;
    const auto folders = [&](const char* in) {
        EXPECT_TRUE(files.List((root / in).string(), "*.png", listing)) << in;
        return Sorted(listing.folders);
    };
    EXPECT_EQ(folders("pictures"), (Names{"album", "deep"}));
    EXPECT_EQ(Sorted(listing.files), Names{"link.png"});
    EXPECT_EQ(folders("pictures/deep"), Names{});
    EXPECT_EQ(folders("pictures/album/"), Names{}) << "back to where the path came from";
    EXPECT_EQ(folders("other"), Names{"back"}) << "no circle yet";
}

TEST_F(LinuxFilesTest, ReplacingKeepsRightsAndLinks) {
    const std::string target = root / "real.bmp", link = root / "link.bmp";
    ASSERT_TRUE(StoreFile(files, target, "old"));
    fs::permissions(target, fs::perms(0640));
    fs::create_symlink("real.bmp", link);
    EXPECT_TRUE(StoreFile(files, link, "new"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(files.Read(target), "new");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    EXPECT_FALSE(files.Replace(root, why));
    EXPECT_EQ(why, "not a regular file");
}

TEST_F(LinuxFilesTest, AFullDiskLeavesTheOldFileWhole) {
    const std::string target = root / "Wallpaper.bmp";
    ASSERT_TRUE(StoreFile(files, target, "old"));
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    {
        const auto writer = files.Replace(target, why);
        ASSERT_TRUE(writer);
        EXPECT_FALSE(writer->Write(std::string(5000, 'n').data(), 5000));
        EXPECT_FALSE(writer->Commit());
        EXPECT_EQ(writer->Why(), "File too large");
    }
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(files.Read(target), "old");
    EXPECT_EQ(Entries(), 1);
    EXPECT_FALSE(files.Replace("/proc/Wallpaper.bmp", why)) << "nothing can be made there";
    EXPECT_EQ(why, "No such file or directory");
}

TEST_F(LinuxFilesTest, WhatAKilledProcessLeftGoesWithTheNextSave) {
    // As long as a name can be, its last letters of two bytes each.
    std::string name = "w";
    while (name.size() < 255)
        name += "\u0436";
    const std::string target = root / name;
    const auto alive = files.Replace(target, why);
    ASSERT_TRUE(alive) << why;
    ASSERT_TRUE(alive->Write("alive", 5));
    const pid_t child = test::StartChild([&] {
        auto* dead = files.Replace(target, why).release(); // what a killed process leaves
        return dead && dead->Write("dead", 4) ? 0 : 1;
    });
    ASSERT_EQ(test::StatusOf(child), 0);
    EXPECT_EQ(Entries(), 2);
    ASSERT_TRUE(StoreFile(files, target, "new"));
    EXPECT_EQ(Entries(), 2) << "what is being written stays";
    EXPECT_TRUE(alive->Commit());
    EXPECT_EQ(Entries(), 1);
    EXPECT_EQ(files.Read(target), "alive");
}

TEST_F(LinuxFilesTest, ReadsWhatTellsNoSizeAndFindsItsFolders) {
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
