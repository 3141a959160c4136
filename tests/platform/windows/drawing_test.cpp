#include "platform/windows/drawing/drawing.h"
#include "tests/contracts/picture_contract.h"
#include "tests/contracts/surface_contract.h"
#include "tests/platform/windows/temporary_folder.h"

namespace quorvane {
namespace {

std::unique_ptr<Drawing> MakeWindowsDrawing() {
    return std::make_unique<WindowsDrawing>();
}

INSTANTIATE_TEST_SUITE_P(Windows, SurfaceContract, testing::Values(&MakeWindowsDrawing));
INSTANTIATE_TEST_SUITE_P(Windows, PictureContract, testing::Values(&MakeWindowsDrawing));

TEST(WindowsDrawing, NamesAreOfAnyLetters) {
    const TemporaryFolder folder;
    const std::string path = folder.path + "\\Четыре.png";
    std::ofstream(std::filesystem::u8path(path), std::ios::binary) << pictures::Content("quarters.png");
    std::string why;
    EXPECT_TRUE(WindowsDrawing().LoadPicture(path, why)) << why;
}

} // namespace
} // namespace quorvane
