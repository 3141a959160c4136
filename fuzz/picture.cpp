// Any bytes as a picture file: told apart, measured, drawn small and turned.
#include "platform/linux/drawing/drawing.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

// Drawings of this many pixels and more only show that painting takes time.
constexpr int KWidest = 20000;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    static LinuxDrawing& drawing = *new LinuxDrawing; // never torn down: Qt is gone before statics are
    const int file = memfd_create("picture", MFD_CLOEXEC);
    if (write(file, data, size) != static_cast<ssize_t>(size)) return -1;
    std::string why;
    const auto picture = drawing.LoadPicture("/proc/self/fd/" + std::to_string(file), why);
    if (picture && picture->Size().width < KWidest && picture->Size().height < KWidest) {
        const auto surface = drawing.CreateSurface({60, 40});
        surface->StretchPicture(*picture, {-3, 2, 50, 50}, why);
        surface->StretchPicture(*picture, {10, -60, 90, 110}, why);
    }
    close(file);
    return 0;
}
