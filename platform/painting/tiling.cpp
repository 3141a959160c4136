#include "platform/painting/tiling.h"

namespace quorvane {
namespace {

constexpr std::size_t MostKept = std::size_t{32} << 20;
constexpr std::size_t PixelBytes = 4;

std::size_t Bytes(PixelSize size) {
    return static_cast<std::size_t>(size.width) * PixelBytes * static_cast<std::size_t>(size.height);
}

} // namespace

bool Tiling::Keep(PixelSize size, Orientation orientation, const Render& render) {
    kept_.assign(Bytes(size), 0);
    keptSize_ = size;
    const Canvas whole{kept_.data(), static_cast<std::ptrdiff_t>(PixelBytes) * size.width, size};
    RowPainter painter(whole, {0, 0, size.width, size.height}, orientation, RowPainter::Mode::Keep);
    const bool rendered = render(painter);
    painter.Finish();
    if (!rendered) kept_.clear();
    return rendered;
}

bool Tiling::Paint(const Canvas& canvas, const PixelRect& target, Orientation orientation,
                   RowPainter::Mode mode, const Render& render) {
    const PixelSize size{target.width, target.height};
    const bool again = size == lastSize_ && Bytes(size) <= MostKept;
    lastSize_ = size;
    if (again && (kept_.empty() || keptSize_ != size) && !Keep(size, orientation, render)) return false;
    if (again) {
        LayDown(kept_.data(), canvas, target, mode);
        return true;
    }
    RowPainter painter(canvas, target, orientation, mode);
    const bool rendered = render(painter);
    painter.Finish();
    return rendered;
}

} // namespace quorvane
