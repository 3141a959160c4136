#pragma once

#include "platform/drawing.h"

#include <string>

namespace quorvane {

class Files;
class FileWriter;

// The pixels as a Windows bitmap: 24 bits, rows bottom up, uncompressed. False where a write failed. Leaves
// the commit to the caller.
bool WriteBitmap(const PixelView& pixels, FileWriter& out);

// The same as the new content of the file at `path`. False, with the reason in `why`, where that failed; the
// old file then stands as it was.
bool SaveBitmap(const PixelView& pixels, Files& files, const std::string& path, std::string& why);

} // namespace quorvane
