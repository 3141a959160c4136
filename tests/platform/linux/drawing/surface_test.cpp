#include "platform/linux/drawing/drawing.h"

#include "tests/contracts/surface_contract.h"

namespace quorvane {
namespace {

std::unique_ptr<Drawing> MakeLinuxDrawing() {
    return std::make_unique<LinuxDrawing>();
}

INSTANTIATE_TEST_SUITE_P(Linux, SurfaceContract, testing::Values(&MakeLinuxDrawing));

} // namespace
} // namespace quorvane
