#include "platform/linux/drawing/picture_file.h"

#include <QByteArray>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {

PictureFile OpenPictureFile(const std::string& path, std::string& why) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0) {
        // A socket cannot be opened at all.
        why = errno == ENXIO ? "not a regular file" : std::strerror(errno);
    } else if (!S_ISREG(status.st_mode)) {
        why = "not a regular file";
    } else if (std::FILE* file = fdopen(descriptor, "rb")) {
        return PictureFile(file);
    }
    if (descriptor >= 0) close(descriptor);
    return nullptr;
}

std::int64_t FileBytes(const PictureFile& file) {
    struct stat status {};
    return fstat(fileno(file.get()), &status) == 0 ? status.st_size : 0;
}

bool ReadWhole(const std::string& path, QByteArray& content, std::string& why) {
    constexpr std::int64_t Largest = 64 << 20;
    const PictureFile file = OpenPictureFile(path, why);
    if (!file) return false;
    const std::int64_t bytes = FileBytes(file);
    if (bytes > Largest) {
        why = "the drawing is too large";
        return false;
    }
    content.resize(static_cast<qsizetype>(bytes));
    content.resize(static_cast<qsizetype>(
        std::fread(content.data(), 1, static_cast<std::size_t>(content.size()), file.get())));
    return true;
}

} // namespace quorvane
