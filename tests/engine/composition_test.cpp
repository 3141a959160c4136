#include "engine/composition.h"

#include "engine/background.h"
#include "engine/tray_report.h"
#include "tests/engine/engine_bench.h"

namespace quorvane {
namespace {

Color PixelAt(Surface& surface, int x, int y) {
    const std::uint8_t* pixel = surface.Pixels().Row(y) + x * 3;
    return Rgb(pixel[2], pixel[1], pixel[0]);
}

class CompositionTest : public EngineBench {
  protected:
    CompositionTest() {
        record_.WallpaperResolution = 5;
        record_.WallpaperPosition = 4;
        drawing_.AddPicture("/square.png", {10, 10}, Rgb(9, 9, 9));
        drawing_.AddPicture("/wide.png", {20, 10}, Rgb(8, 8, 8));
        drawing_.AddUnreadable("/broken.jpg", "not a picture");
    }

    ComposedWallpaper Compose(const std::string& file = "", PixelSize screen = {40, 20}) {
        drawing_.log.clear();
        return composition_.Compose(file, screen);
    }

    using Log = std::vector<std::string>;

    Selection selection_{record_, fileList_, clock_, random_};
    Composition composition_{
        {record_, fileList_, selection_, complaints_, clock_, events_, drawing_, random_},
        [this](Surface& canvas) {
            drawing_.log.push_back("calendar");
            const PixelSize size = canvas.Size();
            return PixelRect{1, 2, size.width, size.height};
        }};
};

TEST_F(CompositionTest, ResolutionsAndTheMarginOfTheCanvas) {
    EXPECT_EQ(TargetSize(0, {1, 1}), (PixelSize{640, 480}));
    EXPECT_EQ(TargetSize(4, {1, 1}), (PixelSize{1600, 1200}));
    for (const int outside : {6, -1, 1000})
        EXPECT_EQ(TargetSize(outside, {7, 5}), (PixelSize{7, 5})) << "as the screen";
    EXPECT_EQ(Compose("", {1920, 1080}).canvas->Size(), (PixelSize{1924, 1084}));
}

TEST_F(CompositionTest, LayersLieInTheirOrder) {
    record_.UseGradientFill = true;
    record_.GradientStyle = 1;
    record_.Left_Upper_Color = Rgb(0, 0, 255);
    record_.Right_Upper_Color = Rgb(255, 0, 0);
    record_.PaintCalendar = true;
    const ComposedWallpaper composed = Compose("/square.png");
    EXPECT_EQ(drawing_.log, (Log{"surface 44x24", "fill 0,0 44x24 #0000FF",
                                 "gradient top-to-bottom 0,0 #0000FF 44,24 #FF0000",
                                 "stretch /square.png 12,0 24x24", "calendar"}));
    EXPECT_EQ(composed.calendar, (PixelRect{1, 2, 44, 24}));
    EXPECT_EQ(record_.LastSelectedWallpaper, "/square.png");
}

TEST_F(CompositionTest, GradientsRunBetweenTheirCorners) {
    record_.UseGradientFill = true;
    record_.Left_Upper_Color = Rgb(0, 0, 255);
    record_.Right_Upper_Color = Rgb(255, 0, 0);
    record_.Left_Lower_Color = Rgb(0, 255, 0);
    record_.Right_Lower_Color = Rgb(255, 255, 0);
    record_.GradientStyle = 2;
    Compose();
    EXPECT_EQ(drawing_.log[2], "gradient left-to-right 0,0 #0000FF 44,24 #FF0000");
    record_.GradientStyle = 3;
    Compose();
    EXPECT_EQ(drawing_.log[2], "triangle 0,0 #0000FF 44,0 #FF0000 0,24 #00FF00");
    EXPECT_EQ(drawing_.log[3], "triangle 44,0 #FF0000 0,24 #00FF00 44,24 #FFFF00");
    record_.GradientStyle = 4;
    EXPECT_EQ(PixelAt(*Compose().canvas, 22, 12), Rgb(0, 0, 255)) << "no such style: the plain colour";
}

TEST_F(CompositionTest, OnlyPlacingOnTheBackgroundHasOne) {
    record_.UseGradientFill = true;
    record_.GradientStyle = 1;
    record_.Left_Upper_Color = Rgb(0, 0, 255);
    for (const int position : {0, 1, 2}) {
        record_.WallpaperPosition = position;
        EXPECT_EQ(PixelAt(*Compose().canvas, 0, 0), 0) << position;
    }
    record_.WallpaperPosition = 3;
    EXPECT_EQ(PixelAt(*Compose().canvas, 0, 0), Rgb(0, 0, 255));
}

// The 24 numbers of the corners come first, then three for the plain colour; the picture's draw follows.
TEST_F(CompositionTest, RandomColoursAreDrawnInTheirOrder) {
    record_.UseRandomColors = true;
    record_.RandomColorLimitR = 255;
    record_.RandomColorLimitG = 19;
    record_.RandomColorLimitMinG = 10;
    record_.RandomColorLimitB = record_.RandomColorLimitMinB = 100;
    std::deque<float> numbers;
    for (int i = 0; i < 24; ++i)
        numbers.push_back(static_cast<float>(i) / 24);
    random_.prepared = numbers;
    GradientVertices vertices = SettingsVertices(record_, {44, 24});
    DrawRandomColors(vertices, record_, random_);
    EXPECT_EQ(random_.draws, 24);
    EXPECT_EQ(vertices[0].red, 0);
    EXPECT_EQ(vertices[0].green, 10 * 256); // Int(1 / 24 * 10) + 10
    EXPECT_EQ(vertices[0].blue, 100 * 256);
    EXPECT_EQ(vertices[1].red, 32 * 256);          // Int(3 / 24 * 256)
    EXPECT_EQ(vertices[5].red, 160 * 256 - 65536); // Int(15 / 24 * 256)
    EXPECT_EQ(vertices[6].green, 17 * 256);        // Int(19 / 24 * 10) + 10
    EXPECT_EQ(vertices[7].red, vertices[5].red);
    EXPECT_EQ(vertices[8].green, vertices[6].green);
    EXPECT_EQ(vertices[9].red, 224 * 256 - 65536); // Int(21 / 24 * 256)
    EXPECT_EQ(vertices[9].green, 19 * 256);        // Int(22 / 24 * 10) + 10

    numbers.insert(numbers.end(), {0.5F, 0.999F, 0.25F});
    random_.prepared = numbers;
    EXPECT_EQ(PixelAt(*Compose().canvas, 0, 0), Rgb(128, 255, 64)) << "the limits do not hold for it";
    record_.WallpaperPosition = 0;
    random_.draws = 0;
    Compose();
    EXPECT_EQ(random_.draws, 24 + 1) << "no plain colour; one number for the branch of the choice";
}

TEST_F(CompositionTest, AFileNameOverridesAChoiceThatIsMadeAllTheSame) {
    record_.Wallpapers.Add("/square.png", "");
    Compose("/wide.png");
    EXPECT_EQ(record_.LastSelectedWallpaper, "/wide.png");
    EXPECT_EQ(random_.draws, 2);
    Compose();
    EXPECT_EQ(record_.LastSelectedWallpaper, "/square.png");
    Compose();
    EXPECT_EQ(drawing_.log.back(), "stretch /square.png 12,0 24x24")
        << "nothing to choose: the last one again";
}

TEST_F(CompositionTest, NoPictureStillGivesBackgroundAndCalendar) {
    record_.PaintCalendar = true;
    Compose();
    EXPECT_EQ(drawing_.log, (Log{"surface 44x24", "fill 0,0 44x24 #000000", "calendar"}));
    EXPECT_TRUE(system_.complaints.empty());

    Compose("/broken.jpg");
    EXPECT_EQ(record_.LastSelectedWallpaper, "/broken.jpg");
    EXPECT_EQ(drawing_.log.back(), "calendar");
    Compose("/broken.jpg");
    EXPECT_EQ(system_.complaints, Log{"/broken.jpg: not a picture"}) << "said once";

    drawing_.SpoilPixels("/wide.png", "the data ends early");
    record_.WallpaperPosition = 1;
    Compose("/wide.png");
    EXPECT_EQ(drawing_.log, (Log{"surface 44x24", "stretch /wide.png 0,0 24x12", "calendar"}))
        << "no second tile of what cannot be drawn";
    EXPECT_EQ(system_.complaints.back(), "/wide.png: the data ends early");
}

TEST_F(CompositionTest, EventsRunWhileAPictureIsLaidDownInVeryManyTiles) {
    drawing_.AddPicture("/dot.png", {1, 1}, Rgb(9, 9, 9));
    record_.WallpaperPosition = 1;
    int ran = 0;
    events_.Post([&ran] { ++ran; });
    Compose("/square.png");
    EXPECT_EQ(ran, 0) << "few tiles take no time";
    composition_.Compose("/dot.png", {80, 40});
    EXPECT_EQ(ran, 1);
}

TEST_F(CompositionTest, NoMemoryForTheCanvasLosesNothingElse) {
    drawing_.refuseSurfaces = true;
    record_.PaintCalendar = true;
    EXPECT_FALSE(Compose("/square.png").canvas);
    EXPECT_EQ(record_.LastSelectedWallpaper, "/square.png");
    drawing_.refuseSurfaces = false;
    EXPECT_TRUE(Compose("/square.png").canvas);
}

TEST(TrayReport, LongPathsAreShortenedInTheTipAlone) {
    EXPECT_EQ(ChangedReport("").balloonText, "Quorvane II\rWallpaper: []");
    const std::string fits(50, 'p'); // 14 letters around it: exactly 64
    EXPECT_EQ(ChangedReport(fits).tip, "Quorvane II\r[" + fits + "]");
    EXPECT_EQ(ChangedReport("/a\x1b\rb").tip, "Quorvane II\r[/a\\x1b\\rb]");
    const TrayRecord report =
        ChangedReport("/home/" + std::string(32, 'a') + "/the last thirty-two letters.jpg");
    EXPECT_EQ(report.tip, "Quorvane II\r[/home/.../the last thirty-two letters.jpg]") << "70 letters";
    EXPECT_EQ(report.balloonText.substr(0, 25), "Quorvane II\rWallpaper: \r\n");
    const std::string cyrillic = "/фото/" + std::string(58, '-') + "жук.jpg";
    EXPECT_EQ(ChangedReport(cyrillic).tip, "Quorvane II\r[/фото/..." + std::string(25, '-') + "жук.jpg]")
        << "letters, not bytes";
}

} // namespace
} // namespace quorvane
