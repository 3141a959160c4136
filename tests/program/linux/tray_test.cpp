#include "tests/program/linux/program.h"

namespace quorvane::test {
namespace {

class TrayMenuTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        MakePictures();
        StartDesktop();
        Set("General", "Change wallpaper at startup", -1);
        Start();
        ASSERT_TRUE(WaitForAnotherWallpaper(""));
        ASSERT_TRUE(WaitForIcon());
        ASSERT_TRUE(WaitFor([this] {
            return !FindWindow([](const Place& place) { return place.width > 250 && place.y < Height / 2; });
        })) << "the splash goes";
        wallpaper_ = RootPixmap();
    }
    Place OpenMenu() {
        ClickIcon({"click", "3"});
        std::optional<Place> menu;
        EXPECT_TRUE(WaitFor([&] { return (menu = PopupMenu()).has_value(); }));
        return menu.value_or(Place{});
    }
    // The entry at this height of the open menu, 0 for its upper edge and 1 for its lower one.
    void ClickEntry(double height) {
        const Place menu = OpenMenu();
        ClickAt(menu.x + 60, menu.y + static_cast<int>(menu.height * height), {"click", "1"});
    }
    // Six entries, one of them a thin line.
    static constexpr double Change = 0.1;
    static constexpr double addFavorite = 0.28;
    static constexpr double addBlacklist = 0.66;
    static constexpr double exit = 0.91;

    std::string wallpaper_;
};

TEST_F(TrayMenuTest, ChangesByEntryAndByDoubleClick) {
    ClickEntry(Change);
    ASSERT_TRUE(WaitForAnotherWallpaper(wallpaper_));
    wallpaper_ = RootPixmap();
    ASSERT_TRUE(WaitFor([this] { return !PopupMenu(); }));
    ClickIcon({"click", "--repeat", "2", "--delay", "60", "1"});
    EXPECT_TRUE(WaitForAnotherWallpaper(wallpaper_));
}

TEST_F(TrayMenuTest, KeepsFavoritesAndBlacklistAtOnceAndExits) {
    ClickEntry(addFavorite);
    ASSERT_TRUE(WaitFor([this] { return Get("General", "First RUN") == "False"; })) << "written at once";
    ClickEntry(addBlacklist);
    ClickEntry(exit);
    EXPECT_EQ(program_->WaitForEnd(), 0);
    const std::string last = Get("General", "Last selected wallpaper");
    EXPECT_TRUE(last.starts_with(pictures_.string())) << last;
    EXPECT_EQ(Get("Favorites", "Favorites source #1"), last);
    EXPECT_EQ(Get("Blacklist", "Blacklisted source #1"), last);
    EXPECT_FALSE(Icon());
}

} // namespace
} // namespace quorvane::test
