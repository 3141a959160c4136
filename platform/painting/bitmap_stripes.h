#pragma once

#include "platform/painting/raster.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace quorvane {

class FileWriter;

// A bitmap file made from the top down, of whose canvas only one stripe exists at a time. Each is black when
// it begins and goes to its place in the file when it is done.
class BitmapStripes {
  public:
    struct Plan {
        // The row after the last one of the stripe that begins at row `from`.
        std::function<int(int from)> end;
        // What lies below and above that which is painted row by row.
        std::function<void(const Canvas& stripe)> paintUnder;
        std::function<void(const Canvas& stripe)> paintOver;
    };

    // The size is one that FitsBitmap.
    BitmapStripes(PixelSize size, FileWriter& out, Plan plan);

    // Row `y` on which paintUnder has painted; none above it is asked for any more.
    std::uint8_t* Row(int y);
    // Completes the stripe under way and all below it. False where something could not be written.
    bool Finish();

  private:
    void Begin(int from);
    void Complete();

    PixelSize size_;
    FileWriter& out_;
    Plan plan_;
    std::vector<std::uint8_t> bytes_;
    Canvas stripe_;
    bool whole_ = true; // as far as it has been written
};

// The same rows in the opposite order of memory.
Canvas TurnOver(const Canvas& canvas);

} // namespace quorvane
