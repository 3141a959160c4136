#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

class QByteArray;

namespace quorvane {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using PictureFile = std::unique_ptr<std::FILE, FileCloser>;

// Opens by the bytes of the name, whatever its encoding. Null, with the reason in `why`, also for a pipe,
// which would be waited for until somebody writes to it, and for all else that is not a regular file.
PictureFile OpenPictureFile(const std::string& path, std::string& why);

std::int64_t FileBytes(const PictureFile& file);

// All of it; false, with the reason in `why`, where it cannot be read or is no drawing of a sensible size.
bool ReadWhole(const std::string& path, QByteArray& content, std::string& why);

} // namespace quorvane
