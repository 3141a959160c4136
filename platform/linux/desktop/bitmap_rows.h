#pragma once

#include "platform/drawing.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class FileWriter;

// The rows of a bitmap file of 24 bits, read one at a time: a wallpaper is passed on to the screen without
// ever being whole in memory.
class BitmapRows {
  public:
    // Null for a file that is no such bitmap, or not whole.
    static std::unique_ptr<BitmapRows> Open(const std::string& path);
    ~BitmapRows();
    BitmapRows(const BitmapRows&) = delete;
    BitmapRows& operator=(const BitmapRows&) = delete;

    PixelSize Size() const { return size_; }
    // `count` pixels of row `y`, counted from above, from `x` on, as 0xFFRRGGBB. False where the file cannot
    // be read any more.
    bool Read(int x, int y, int count, std::uint32_t* to);
    // The same in the file's own form: three bytes a pixel, blue first.
    bool ReadBytes(int x, int y, int count, std::uint8_t* to);

  private:
    BitmapRows() = default;

    int file_ = -1;
    PixelSize size_;
    bool bottomUp_ = true;
    std::int64_t start_ = 0; // of the pixels in the file
    std::int64_t rowBytes_ = 0;
    std::vector<std::uint8_t> buffer_;
};

// What a screen of `screen` shows of a picture that exceeds it by no more than a composed wallpaper's border:
// its middle. Nothing for any other picture.
std::optional<PixelRect> WithoutBorder(PixelSize picture, PixelSize screen);

// A part of the bitmap as a bitmap file of its own. False where it cannot be read or written; the commit is
// the caller's.
bool CutBitmap(BitmapRows& rows, const PixelRect& part, FileWriter& out);

} // namespace quorvane
