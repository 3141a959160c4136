#include "engine/file_list.h"

#include "engine/folder_scan.h"
#include "tests/engine/engine_bench.h"

namespace quorvane {
namespace {

class FileListTest : public EngineBench {
  protected:
    FileListTest() {
        for (const char* path : {"/pics/a.jpg", "/pics/b.PNG", "/pics/one/c.jpg", "/pics/one/two/d.jpg",
                                 "/pics/one/two/three/e.jpg", "/other/f.jpg"}) {
            files_.Put(path);
        }
    }

    void AddSource(const std::string& path, const std::string& pattern, const std::string& level,
                   bool active = true) {
        record_.WallpaperSources.Add({path, active, pattern, level});
    }

    std::vector<std::string> Rescan() {
        record_.RESCANWALLPAPERSOURCESNOW = true;
        whole_ = fileList_.BuildFileList();
        std::vector<std::string> paths;
        for (std::int32_t index = 1; index <= record_.Wallpapers_Cnt(); ++index)
            paths.emplace_back(record_.Wallpapers[index]);
        return paths;
    }

    using Paths = std::vector<std::string>;

    bool whole_ = false;
};

TEST_F(FileListTest, LevelsCountSubfoldersAndTheDeepestComesFirst) {
    const struct {
        const char* level;
        Paths paths;
    } rows[] = {
        {"0", {"/pics/a.jpg"}},
        {"   ", {"/pics/a.jpg"}},
        {"deep", {"/pics/a.jpg"}},
        {"-3", {"/pics/a.jpg"}},
        {"1", {"/pics/one/c.jpg", "/pics/a.jpg"}},
        {"1.5", {"/pics/one/two/d.jpg", "/pics/one/c.jpg", "/pics/a.jpg"}},
        {" Inf ", {"/pics/one/two/three/e.jpg", "/pics/one/two/d.jpg", "/pics/one/c.jpg", "/pics/a.jpg"}},
    };
    for (const auto& row : rows) {
        record_.WallpaperSources.Clear();
        AddSource("/pics", "*.jpg", row.level);
        EXPECT_EQ(Rescan(), row.paths) << row.level;
        EXPECT_TRUE(whole_);
    }
}

TEST_F(FileListTest, SourcesCountInOrderTwiceIfListedTwiceAndOnlyIfActive) {
    AddSource("/other/", "*.*", "");
    AddSource("/pics", "*.png", "INF", false);
    AddSource("/pics", "*.png", "0");
    AddSource("/other", "*.*", "");
    EXPECT_EQ(Rescan(), (Paths{"/other/f.jpg", "/pics/b.PNG", "/other/f.jpg"}));
    record_.WallpaperSources.Clear();
    EXPECT_EQ(Rescan(), Paths{});
    EXPECT_EQ(record_.Wallpapers_Max_Cnt(), 0);
}

TEST_F(FileListTest, FoldersLinkedAmongEachOtherCountOnceForASource) {
    files_.Put("/other/deep/g.jpg");
    files_.Put("/other/deep/er/h.jpg");
    for (const char* from : {"/pics", "/pics/one", "/other", "/other/deep"}) {
        files_.PutLink(std::string(from) + "/x", "/other");
        files_.PutLink(std::string(from) + "/y", "/other/deep");
    }
    AddSource("/pics", "*.jpg", "inf");
    Paths found = Rescan();
    EXPECT_EQ(found.size(), 7U) << "each file in one place";
    AddSource("/pics", "*.jpg", "inf");
    EXPECT_EQ(Rescan().size(), 14U) << "but in each source";

    // Less deep on the second road, which alone leads to the last file.
    record_.WallpaperSources.Clear();
    AddSource("/start", "*.jpg", "2");
    files_.PutFolder("/start/a");
    files_.PutLink("/start/a/link", "/other/deep");
    files_.PutLink("/start/b", "/other/deep");
    EXPECT_EQ(Rescan(), (Paths{"/start/a/link/g.jpg", "/start/b/er/h.jpg", "/start/b/x/f.jpg"}));
}

TEST_F(FileListTest, AFolderThatIsGoneMakesTheResultFalseAndTheRestGoesOn) {
    AddSource("/pics/one", "*.jpg", "inf");
    AddSource("/gone", "*.jpg", "0");
    AddSource("", "*.jpg", "inf");
    AddSource(" ", "*.jpg", "inf");
    AddSource("/other", "*.jpg", "1e999");
    AddSource("/other", "*.jpg", "0");
    files_.unreadable = {"/pics/one/two/three"};
    files_.onList = [](const std::string& folder) { EXPECT_NE(folder, "/") << "no source names it"; };
    EXPECT_EQ(Rescan(), (Paths{"/pics/one/two/d.jpg", "/pics/one/c.jpg", "/other/f.jpg"}));
    EXPECT_FALSE(whole_);
    EXPECT_FALSE(record_.RESCANWALLPAPERSOURCESNOW) << "the request is used up all the same";
    Rescan();
    EXPECT_EQ(system_.complaints.size(), 3U) << "each folder is named once";
}

TEST_F(FileListTest, ScansWhenAskedToOrWhenThePeriodicRescanIsOff) {
    AddSource("/other", "*.*", "0");
    EXPECT_TRUE(fileList_.BuildFileList());
    EXPECT_EQ(record_.Wallpapers_Cnt(), 0) << "nothing is due";
    record_.RescanWallpaperSources = false;
    EXPECT_TRUE(fileList_.BuildFileList());
    EXPECT_EQ(record_.Wallpapers_Cnt(), 1);
    files_.Put("/other/g.jpg");
    EXPECT_TRUE(fileList_.BuildFileList());
    EXPECT_EQ(record_.Wallpapers_Cnt(), 2);
}

TEST_F(FileListTest, AListingEndsAt32767Entries) {
    for (int i = 0; i < 32768; ++i)
        files_.Put("/many/" + std::to_string(i));
    AddSource("/many", "*.*", "0");
    EXPECT_EQ(Rescan().size(), 32767U);
    EXPECT_EQ(record_.Wallpapers_Max_Cnt(), 35000);
    EXPECT_EQ(system_.complaints.size(), 1U);
}

TEST_F(FileListTest, EventsRunAtOnceAndThenAtMostTwiceASecond) {
    for (int i = 0; i < 20; ++i)
        files_.Put("/slow/" + std::to_string(i) + "/x.jpg");
    files_.onList = [this](const std::string&) { clock_.MoveWall(100); };
    clock_.SetNow({2026, 3, 1, 23, 59, 59, 0}); // over midnight
    std::vector<int> moments;                   // milliseconds since the second began
    events_.onPump = [&] { moments.push_back(clock_.Now().second % 59 * 1000 + clock_.Now().millisecond); };
    AddSource("/slow", "*.jpg", "1");
    Rescan();
    EXPECT_EQ(moments, (std::vector<int>{100, 700, 0, 600, 1100}));
    EXPECT_NEAR(record_.Scan_Time, 86397.9, 0.01) << "the difference of two times of day";
}

TEST_F(FileListTest, AScanInsideAScanLeavesTheOuterOneAlone) {
    AddSource("/pics", "*.jpg", "inf");
    bool entered = false;
    events_.onPump = [&] {
        entered = true;
        EXPECT_TRUE(fileList_.BuildFileList());
        record_.WallpaperSources.Clear(); // a dialogue is applied meanwhile
    };
    EXPECT_EQ(Rescan().size(), 4U);
    EXPECT_TRUE(entered);
}

} // namespace
} // namespace quorvane
