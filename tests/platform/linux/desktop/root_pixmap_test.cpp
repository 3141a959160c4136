#include "platform/linux/desktop/root_pixmap.h"

#include "platform/linux/desktop/bitmap_rows.h"
#include "platform/linux/desktop/outputs.h"
#include "platform/linux/desktop/xcb_reply.h"
#include "tests/support/virtual_screen.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

QRgb PatternAt(int x, int y) {
    return qRgb(x * 7 % 256, y * 5 % 256, (x + y) * 3 % 256);
}

// A bitmap each pixel of which tells its place.
std::string WritePattern(const test::TemporaryFolder& folder, int width, int height) {
    QImage image(width, height, QImage::Format_RGB888);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, PatternAt(x, y));
    }
    const std::string path = (folder.Path() / "pattern.bmp").string();
    EXPECT_TRUE(image.save(QString::fromStdString(path)));
    return path;
}

// Another program's look at the screen.
class Looker {
  public:
    Looker()
        : connection_(xcb_connect(nullptr, nullptr))
        , screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data) {}
    ~Looker() { xcb_disconnect(connection_); }

    std::uint32_t Property(const std::string& name) const {
        const auto asked = xcb_get_property(connection_, 0, screen_->root, InternAtom(connection_, name),
                                            XCB_ATOM_PIXMAP, 0, 1);
        const auto reply = Own(xcb_get_property_reply(connection_, asked, nullptr));
        return reply && xcb_get_property_value_length(reply.get()) == 4
                   ? *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()))
                   : 0;
    }
    // A pixel of a drawable of 24 bits; nothing where the drawable is no more.
    std::optional<QRgb> Pixel(std::uint32_t drawable, int x, int y) const {
        const auto asked =
            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(x),
                          static_cast<std::int16_t>(y), 1, 1, ~0U);
        const auto reply = Own(xcb_get_image_reply(connection_, asked, nullptr));
        if (!reply) return std::nullopt;
        const std::uint8_t* bytes = xcb_get_image_data(reply.get());
        return qRgb(bytes[2], bytes[1], bytes[0]);
    }
    std::uint32_t Root() const { return screen_->root; }

  private:
    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
};

class RootPixmapTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_FALSE(screen_.Display().empty()) << "Xvfb is needed";
        setenv("DISPLAY", screen_.Display().c_str(), 1);
    }
    const std::vector<PixelRect> oneMonitor_{{0, 0, 320, 240}};
    test::VirtualScreen screen_{"320x240x24"};
    test::TemporaryFolder folder_;
};

TEST_F(RootPixmapTest, StaysBehindUnderBothPropertiesAndReplacesTheLastOne) {
    const std::string file = WritePattern(folder_, 324, 244);
    ASSERT_TRUE(PaintRootWindow(file, WallpaperStyle::Stretched, oneMonitor_));
    const Looker looker;
    const std::uint32_t first = looker.Property("_XROOTPMAP_ID");
    EXPECT_NE(first, 0U);
    EXPECT_EQ(looker.Property("ESETROOT_PMAP_ID"), first);
    for (const auto& [x, y] : {std::pair{0, 0}, {319, 0}, {0, 239}, {319, 239}, {160, 120}}) {
        EXPECT_EQ(looker.Pixel(first, x, y), PatternAt(x + 2, y + 2)) << x << "," << y;
        EXPECT_EQ(looker.Pixel(looker.Root(), x, y), PatternAt(x + 2, y + 2)) << x << "," << y;
    }
    const auto latin = folder_.Path() / "caf\xE9.bmp"; // no UTF-8
    std::filesystem::rename(file, latin);
    ASSERT_TRUE(PaintRootWindow(latin, WallpaperStyle::Tiled, oneMonitor_));
    const std::uint32_t second = looker.Property("_XROOTPMAP_ID");
    EXPECT_NE(second, first);
    EXPECT_EQ(looker.Pixel(second, 0, 0), PatternAt(0, 0));
    EXPECT_EQ(looker.Pixel(first, 0, 0), std::nullopt) << "the last one is not left to pile up";
    EXPECT_EQ(looker.Property("ESETROOT_PMAP_ID"), second);
}

TEST_F(RootPixmapTest, EveryMonitorShowsTheWholePicture) {
    const std::string file = WritePattern(folder_, 160, 240);
    ASSERT_TRUE(PaintRootWindow(file, WallpaperStyle::Stretched, {{0, 0, 160, 240}, {160, 0, 160, 200}}));
    const Looker looker;
    EXPECT_EQ(looker.Pixel(looker.Root(), 3, 7), PatternAt(3, 7));
    EXPECT_EQ(looker.Pixel(looker.Root(), 300, 230), qRgb(0, 0, 0)) << "below the smaller monitor";
    EXPECT_NE(looker.Pixel(looker.Root(), 300, 190), qRgb(0, 0, 0));
}

TEST_F(RootPixmapTest, TheOutputsAreTheServersInItsOwnPixels) {
    const std::vector<Output> outputs = FindX11Outputs();
    ASSERT_EQ(outputs.size(), 1U);
    EXPECT_EQ(outputs[0].size, (PixelSize{320, 240}));
    EXPECT_FALSE(outputs[0].name.empty());
    setenv("DISPLAY", ":65000", 1);
    EXPECT_TRUE(FindX11Outputs().empty());
}

TEST_F(RootPixmapTest, RefusesWhatIsNoPictureAndAScreenThatIsNotThere) {
    EXPECT_FALSE(PaintRootWindow("/nowhere.bmp", WallpaperStyle::Stretched, oneMonitor_));
    std::ofstream(folder_.Path() / "bad.bmp") << "BM no bitmap at all";
    EXPECT_FALSE(
        PaintRootWindow((folder_.Path() / "bad.bmp").string(), WallpaperStyle::Stretched, oneMonitor_));
    const std::string file = WritePattern(folder_, 10, 10);
    setenv("DISPLAY", ":65000", 1);
    EXPECT_FALSE(PaintRootWindow(file, WallpaperStyle::Stretched, oneMonitor_));
}

TEST_F(RootPixmapTest, ABitmapOfAnotherKindOrOneThatBreaksOffIsNoTrap) {
    QImage indexed(320, 240, QImage::Format_Indexed8);
    indexed.setColorTable({qRgb(9, 8, 7)});
    indexed.fill(0);
    const std::string small = (folder_.Path() / "small.bmp").string();
    ASSERT_TRUE(indexed.save(QString::fromStdString(small)));
    ASSERT_TRUE(PaintRootWindow(small, WallpaperStyle::Stretched, oneMonitor_));
    const Looker looker;
    EXPECT_EQ(looker.Pixel(looker.Root(), 100, 100), qRgb(9, 8, 7));
    const std::string file = WritePattern(folder_, 324, 244);
    for (const std::size_t length : {0, 2, 53, 54, 60, 5000}) {
        std::filesystem::copy_file(file, file + ".cut", std::filesystem::copy_options::overwrite_existing);
        std::filesystem::resize_file(file + ".cut", length);
        EXPECT_EQ(BitmapRows::Open(file + ".cut"), nullptr) << length;
        PaintRootWindow(file + ".cut", WallpaperStyle::Stretched, oneMonitor_);
    }
}

TEST_F(RootPixmapTest, ScreensOfSixteenBitsGetTheirOwnPixels) {
    test::VirtualScreen poor("64x64x16");
    ASSERT_FALSE(poor.Display().empty());
    setenv("DISPLAY", poor.Display().c_str(), 1);
    ASSERT_TRUE(PaintRootWindow(WritePattern(folder_, 64, 64), WallpaperStyle::Stretched, {{0, 0, 64, 64}}));
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_get_image_reply_t* reply = xcb_get_image_reply(
        connection, xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root, 20, 30, 1, 1, ~0U), nullptr);
    ASSERT_NE(reply, nullptr);
    const std::uint8_t* bytes = xcb_get_image_data(reply);
    const int pixel = bytes[0] | bytes[1] << 8;
    // 140, 150, 150 of 255 in 5, 6 and 5 bits
    EXPECT_EQ(pixel, 17 << 11 | 37 << 5 | 18);
    std::free(reply);
    xcb_disconnect(connection);
}

TEST(MonitorPictureTest, CutsABorderOfUpToFourPixelsAndScalesAnythingElse) {
    QImage picture(324, 244, QImage::Format_RGB32);
    picture.fill(Qt::red);
    picture.setPixel(2, 2, qRgb(0, 0, 255));
    EXPECT_EQ(MonitorPicture(picture, WallpaperStyle::Stretched, {320, 240}).pixel(0, 0), qRgb(0, 0, 255));
    EXPECT_EQ(MonitorPicture(picture, WallpaperStyle::Stretched, {324, 244}).pixel(2, 2), qRgb(0, 0, 255));
    const QImage scaled = MonitorPicture(picture, WallpaperStyle::Stretched, {640, 480});
    EXPECT_EQ(scaled.size(), QSize(640, 480));
    const QImage centred = MonitorPicture(picture, WallpaperStyle::Centred, {400, 300});
    EXPECT_EQ(centred.pixel(0, 0), qRgb(0, 0, 0));
    EXPECT_EQ(centred.pixel(38 + 2, 28 + 2), qRgb(0, 0, 255));
    EXPECT_EQ(centred.pixel(38, 28), qRgb(255, 0, 0));
}

} // namespace
} // namespace quorvane
