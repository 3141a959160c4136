#pragma once

#include "platform/drawing.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace quorvane {

class Files;
class FileWriter;

inline constexpr std::size_t BitmapHeaderBytes = 54; // of the file and of the information about the picture

// Of a row in the file.
std::size_t BitmapRowBytes(int width);

// Whether the format's numbers can tell a picture of this size.
bool FitsBitmap(PixelSize size);

// What stands in front of the pixels of a Windows bitmap: 24 bits, rows bottom up, each filled up to four
// bytes.
std::array<std::uint8_t, BitmapHeaderBytes> BitmapHeader(PixelSize size);

// The pixels as a Windows bitmap: 24 bits, rows bottom up, uncompressed. False where a write failed. Leaves
// the commit to the caller.
bool WriteBitmap(const PixelView& pixels, FileWriter& out);

// The surface as a bitmap in the new content of the file at `path`. False, with the reason in `why`, where
// that failed; the old file then stands as it was.
bool SaveBitmap(Surface& surface, Files& files, const std::string& path, std::string& why);

} // namespace quorvane
