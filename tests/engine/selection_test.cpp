#include "engine/selection.h"

#include "tests/engine/engine_bench.h"

#include <algorithm>
#include <map>

namespace quorvane {
namespace {

class SelectionTest : public EngineBench {
  protected:
    SelectionTest() { random_.keepsFirstSeed = true; }

    void Candidates(const std::vector<std::string>& paths) {
        record_.Wallpapers.Clear();
        for (const std::string& path : paths)
            record_.Wallpapers.Add(path, "");
    }
    void Favorites(const std::vector<ListedFile>& files) {
        List(record_.FavoritesSources, files);
        record_.UseFavorites = true;
    }
    void Blacklisted(const std::vector<ListedFile>& files) { List(record_.BlacklistedSources, files); }
    static void List(OneBased<ListedFile>& list, const std::vector<ListedFile>& files) {
        list.Clear();
        for (const ListedFile& file : files)
            list.Add(file);
    }
    std::map<std::string, int> Counted(int draws) {
        std::map<std::string, int> counts;
        for (int i = 0; i < draws; ++i)
            ++counts[selection_.GetNewWallpaper()];
        return counts;
    }
    // How many random numbers one draw took.
    int NumbersOfOneDraw(const std::string& expected) {
        random_.draws = 0;
        EXPECT_EQ(selection_.GetNewWallpaper(), expected);
        return random_.draws;
    }

    Selection selection_{record_, fileList_, clock_, random_};
};

TEST_F(SelectionTest, CandidatesAreDrawnEvenlyAndTheOneInUseNever) {
    Candidates({"/a", "/b", "/c", "/c", "/in use"});
    record_.LastSelectedWallpaper = "/in use";
    const auto counts = Counted(8000);
    EXPECT_EQ(counts.size(), 3U);
    EXPECT_NEAR(counts.at("/a"), 2000, 200);
    EXPECT_NEAR(counts.at("/b"), 2000, 200);
    EXPECT_NEAR(counts.at("/c"), 4000, 200) << "listed twice, drawn twice as often";
}

TEST_F(SelectionTest, SeedsFromTheTimeOfDay) {
    Candidates({"/a"});
    clock_.SetNow({2026, 5, 1, 1, 1, 1, 500});
    selection_.GetNewWallpaper();
    EXPECT_EQ(random_.seeds, std::vector<double>{3661.5});
}

TEST_F(SelectionTest, FavouritesTakeTheirShare) {
    Candidates({"/a", "/b"});
    Favorites({{"/f", true}, {"/off", false}, {"/g", true}});
    record_.Favorites_Probability = 0.75;
    const auto counts = Counted(8000);
    EXPECT_NEAR(counts.at("/f"), 3000, 200);
    EXPECT_NEAR(counts.at("/g"), 3000, 200);
    EXPECT_NEAR(counts.at("/a"), 1000, 150);
    EXPECT_EQ(counts.count("/off"), 0U);
    record_.UseFavorites = false;
    EXPECT_EQ(Counted(100).size(), 2U);
}

TEST_F(SelectionTest, TheShareIsComparedInSinglePrecisionWithEquality) {
    Candidates({"/a"});
    Favorites({{"/f", true}});
    record_.Favorites_Probability = 0;
    random_.prepared = {0.0F, 0.5F};
    EXPECT_EQ(selection_.GetNewWallpaper(), "/f") << "zero is not below zero";
    random_.prepared = {1e-7F, 0.5F};
    EXPECT_EQ(selection_.GetNewWallpaper(), "/a");
    record_.Favorites_Probability = 0.1; // above 0.1F in double precision, equal to it in single
    random_.prepared = {0.1F, 0.5F};
    EXPECT_EQ(selection_.GetNewWallpaper(), "/f");
}

TEST_F(SelectionTest, OnlyTheCandidatesBranchScans) {
    files_.Put("/pics/a.jpg");
    record_.WallpaperSources.Add({"/pics", true, "*.*", "0"});
    record_.RESCANWALLPAPERSOURCESNOW = true;
    Favorites({{"/f", true}});
    record_.Favorites_Probability = 1;
    EXPECT_EQ(Counted(50).at("/f"), 50);
    EXPECT_TRUE(record_.RESCANWALLPAPERSOURCESNOW);
    record_.Favorites_Probability = -1;
    EXPECT_EQ(selection_.GetNewWallpaper(), "/pics/a.jpg");
    EXPECT_FALSE(record_.RESCANWALLPAPERSOURCESNOW);
}

TEST_F(SelectionTest, AnEmptyCandidateListFallsBackOnTheFavourites) {
    Favorites({{"/f", true}});
    record_.Favorites_Probability = -1;
    EXPECT_EQ(selection_.GetNewWallpaper(), "/f");
    record_.UseFavorites = false;
    EXPECT_EQ(selection_.GetNewWallpaper(), "");
    record_.UseFavorites = true;
    record_.RescanWallpaperSources = false;
    record_.WallpaperSources.Add({"/none", true, "*.*", "0"});
    events_.onPump = [&] { record_.FavoritesSources[1].Active = false; };
    EXPECT_EQ(selection_.GetNewWallpaper(), "") << "switched off while the scan let events run";
}

TEST_F(SelectionTest, TheBlacklistIgnoresCaseAndOuterBlanksAndWhatIsSwitchedOff) {
    Candidates({"/Pics/A.jpg", "/pics/b.jpg", "/pics/ЖУК.jpg", " /pics/c.jpg "});
    Blacklisted({{"  /pics/a.JPG ", true},
                 {"/pics/b.jpg", false},
                 {"/pics/жук.jpg", true},
                 {"/PICS/C.jpg", true},
                 {"/pics", true},
                 {"", true}});
    EXPECT_EQ(Counted(300), (std::map<std::string, int>{{"/pics/b.jpg", 300}}));
}

TEST_F(SelectionTest, TheOneInUseIsComparedExactly) {
    Candidates({"/a.jpg"});
    record_.LastSelectedWallpaper = "/A.jpg";
    EXPECT_EQ(selection_.GetNewWallpaper(), "/a.jpg");
    record_.LastSelectedWallpaper = "/a.jpg";
    EXPECT_EQ(NumbersOfOneDraw(""), 2) << "at once: the branch and one index";
}

TEST_F(SelectionTest, BlacklistHitsEndADraw) {
    Candidates({"/a", "/b"});
    Blacklisted({{"/a", true}, {"/b", true}});
    EXPECT_EQ(NumbersOfOneDraw(""), 1 + 51);
    Candidates({"/a", "/last"});
    Blacklisted({{"/a", true}});
    record_.LastSelectedWallpaper = "/last";
    EXPECT_EQ(selection_.GetNewWallpaper(), "");
    Favorites({{"/a", true}, {"/A", true}, {"/off", false}});
    record_.Favorites_Probability = 1;
    random_.prepared = std::deque<float>(12, 0.0F);
    EXPECT_EQ(NumbersOfOneDraw(""), 1 + 11);
}

TEST_F(SelectionTest, ADrawNeverHangs) {
    Candidates({"/last", "/last", "/last"});
    record_.LastSelectedWallpaper = "/last";
    EXPECT_EQ(selection_.GetNewWallpaper(), "");
    Favorites({{"/last", true}, {"/last", true}, {"/other", false}});
    record_.Favorites_Probability = 1;
    EXPECT_EQ(selection_.GetNewWallpaper(), "");
    record_.FavoritesSources[2].Active = false;
    EXPECT_EQ(selection_.GetNewWallpaper(), "") << "the only active one, though candidates exist";
    Candidates(std::vector<std::string>(2000, "/last"));
    record_.UseFavorites = false;
    record_.Wallpapers.Add("/rare", "");
    EXPECT_EQ(Counted(20).at("/rare"), 20) << "a long row of repeats is no hang";
}

} // namespace
} // namespace quorvane
