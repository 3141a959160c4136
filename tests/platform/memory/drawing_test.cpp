#include "platform/memory/drawing.h"

#include "tests/contracts/surface_contract.h"

namespace quorvane {
namespace {

std::unique_ptr<Drawing> MakeMemoryDrawing() {
    return std::make_unique<MemoryDrawing>();
}

INSTANTIATE_TEST_SUITE_P(Memory, SurfaceContract, testing::Values(&MakeMemoryDrawing));

TEST(MemoryDrawing, StretchesAndLogs) {
    MemoryDrawing drawing;
    drawing.AddPicture("/two.bmp", {2, 1}, std::vector<Color>{Rgb(255, 0, 0), Rgb(0, 0, 255)});
    std::string why;
    const auto picture = drawing.LoadPicture("/two.bmp", why);
    ASSERT_NE(picture, nullptr);
    const auto surface = drawing.CreateSurface({10, 10});
    EXPECT_TRUE(surface->StretchPicture(*picture, {-2, 4, 8, 3}, why));
    const PixelView pixels = surface->Pixels();
    EXPECT_EQ(pixels.Row(4)[2], 255);     // the red half ends at column 1
    EXPECT_EQ(pixels.Row(6)[3 * 2], 255); // the blue one at column 5
    EXPECT_EQ(pixels.Row(6)[3 * 6], 0);
    EXPECT_EQ(pixels.Row(3)[2], 0);
    surface->PrintText(1, 0.5, {"Tahoma", 8, true, false, false, false}, Rgb(1, 2, 255), "Mo");
    EXPECT_EQ(drawing.log, (std::vector<std::string>{"surface 10x10", "stretch /two.bmp -2,4 8x3",
                                                     "text 1,0.5 \"Tahoma 8 bold\" #0102FF \"Mo\""}));
}

} // namespace
} // namespace quorvane
