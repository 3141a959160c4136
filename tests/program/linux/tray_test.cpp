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
    // By the keys: the entry of this number, from 1 on. Each click lies elsewhere on the icon, as the toolkit
    // takes two right clicks in quick succession at one place for a double click, which opens no menu.
    void PickEntry(int number) {
        clickedLeft_ = !clickedLeft_;
        ClickAt(icon_->x + (clickedLeft_ ? 2 : icon_->width - 3), icon_->y + icon_->height / 2,
                {"click", "3"});
        ASSERT_TRUE(WaitFor([this] { return PopupMenu().has_value(); }));
        std::vector<std::string> keys{"xdotool", "key"};
        keys.insert(keys.end(), static_cast<std::size_t>(number), "Down");
        keys.push_back("Return");
        Ask(keys);
        ASSERT_TRUE(WaitFor([this] { return !PopupMenu(); }));
    }
    static constexpr int Change = 1;
    static constexpr int AddFavorite = 2;
    static constexpr int AddBlacklist = 4;
    static constexpr int Exit = 5;

    std::string wallpaper_;

  private:
    bool clickedLeft_ = false;
};

TEST_F(TrayMenuTest, ChangesByEntryAndByDoubleClick) {
    PickEntry(Change);
    ASSERT_TRUE(WaitForAnotherWallpaper(wallpaper_));
    wallpaper_ = RootPixmap();
    ClickIcon({"click", "--repeat", "2", "--delay", "60", "1"});
    EXPECT_TRUE(WaitForAnotherWallpaper(wallpaper_));
}

TEST_F(TrayMenuTest, KeepsFavoritesAndBlacklistAtOnceAndExits) {
    PickEntry(AddFavorite);
    ASSERT_TRUE(WaitFor([this] { return Get("General", "First RUN") == "False"; })) << "written at once";
    PickEntry(AddBlacklist);
    PickEntry(Exit);
    EXPECT_EQ(program_->WaitForEnd(), 0);
    const std::string last = Get("General", "Last selected wallpaper");
    EXPECT_TRUE(last.starts_with(pictures_.string())) << last;
    EXPECT_EQ(Get("Favorites", "Favorites source #1"), last);
    EXPECT_EQ(Get("Blacklist", "Blacklisted source #1"), last);
    EXPECT_FALSE(Icon());
}

} // namespace
} // namespace quorvane::test
