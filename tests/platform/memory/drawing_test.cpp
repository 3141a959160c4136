#include "platform/memory/drawing.h"

#include "platform/painting/drawing_box.h"
#include "tests/contracts/surface_contract.h"

namespace quorvane {
namespace {

std::unique_ptr<Drawing> MakeMemoryDrawing() {
    return std::make_unique<MemoryDrawing>();
}

INSTANTIATE_TEST_SUITE_P(Memory, SurfaceContract, testing::Values(&MakeMemoryDrawing));

TEST(DrawingBox, MeasuresAndPrintsLineByLine) {
    MemoryDrawing drawing;
    const auto surface = drawing.CreateSurface({200, 100});
    DrawingBox box(*surface, 15, 15);
    box.Font = {"Tahoma", 8, false, false, false, false};
    EXPECT_EQ(box.TextWidth("a\r\nlonger\nab"), 6 * 8 * 15);
    EXPECT_EQ(box.TextHeight("a\r\nlonger\nab"), 3 * box.TextHeight());
    EXPECT_EQ(box.TextHeight(""), box.TextHeight());
    drawing.log.clear();
    box.CurrentX = 150;
    box.CurrentY = 300;
    box.Print("one\r\n\ntwo");
    EXPECT_EQ(drawing.log, (std::vector<std::string>{"text 10,20 \"Tahoma 8\" #000000 \"one\"",
                                                     "text 0,52 \"Tahoma 8\" #000000 \"two\""}));
    EXPECT_EQ(box.CurrentX, 3 * 8 * 15);
    box.PrintLine("!\n");
    EXPECT_EQ(box.CurrentX, 0);
    EXPECT_EQ(box.CurrentY, 300 + 4 * box.TextHeight());
}

} // namespace
} // namespace quorvane
