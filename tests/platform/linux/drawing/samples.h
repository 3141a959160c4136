#pragma once

#include "core/color.h"
#include "platform/drawing.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quorvane::samples {

// The colour of a pixel of the picture to be encoded, from the top left.
using Painter = std::function<Color(int x, int y)>;

// Red, green / blue, white: whichever way a picture is turned shows in its quarters.
Color Quarters(int x, int y, PixelSize size);

struct JpegKind {
    int exif = 0; // orientation in the metadata; 0: no metadata
    bool grey = false;
    bool inks = false; // four inks, inverted as is the custom
    bool progressive = false;
};
std::string Jpeg(PixelSize size, const Painter& painter, JpegKind kind = {});

// By Qt: "png", "bmp", "tiff", "webp".
std::string ByQt(PixelSize size, const Painter& painter, const char* format);
// A PNG whose left half is clear and whose right half is red at half strength.
std::string TransparentPng(PixelSize size);

// Quarters in a PNG whose rows come in passes, and in a TIFF whose rows are one compressed strip.
std::string InterlacedPng(PixelSize size);
std::string OneStripTiff(PixelSize size);
// White all over.
std::string PlainPng(PixelSize size);
// The same bitmap with its rows from the top.
std::string TopDown(std::string bitmap);

// Quarters of 16 by 12 pixels in the formats that Qt does not write.
std::string Gif(bool interlaced = false);
std::string RunLengthBitmap();
std::string Svg();
// 2 by 1 inch, the left half red, the right half blue.
std::string WindowsMetafile();
std::string EnhancedMetafile();

} // namespace quorvane::samples
