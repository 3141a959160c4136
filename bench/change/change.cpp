// change IN OUT.bmp WIDTH HEIGHT [TIMES]: the drawing of one change without the engine round it: canvas,
// gradient, picture fitted, bitmap file. With TIMES it changes that often and tells the memory in use, in
// KiB: at rest before, at the highest, and at rest afterwards.
#include "platform/files.h"
#include "platform/linux/drawing/drawing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace quorvane;

class PlainWriter final : public FileWriter {
  public:
    explicit PlainWriter(const char* path)
        : file_(std::fopen(path, "wb")) {
        std::setvbuf(file_, nullptr, _IONBF, 0);
    }
    ~PlainWriter() override { std::fclose(file_); }
    bool WriteAt(std::uint64_t place, const void* bytes, std::size_t count) override {
        return std::fseek(file_, static_cast<long>(place), SEEK_SET) == 0 &&
               std::fwrite(bytes, 1, count, file_) == count;
    }
    bool Commit() override { return true; }
    std::string Why() const override { return {}; }

  private:
    std::FILE* file_;
};

long InUse() {
    long pages = 0, resident = 0;
    if (std::FILE* memory = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(memory, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(memory);
    }
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

long Highest() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

bool Change(Drawing& drawing, const char* in, const char* out, PixelSize screen) {
    const PixelSize size{screen.width + 4, screen.height + 4};
    std::string why;
    const auto picture = drawing.LoadPicture(in, why);
    const auto surface = drawing.CreateCanvas(size);
    if (!surface || !picture) return false;
    const GradientVertex upper{0, 0, 0, 0, -256, 255};
    const GradientVertex lower{size.width, size.height, -256, 0, 0, 255};
    surface->GradientRectangle(upper, lower, GradientDirection::TopToBottom);
    const PixelSize own = picture->Size();
    const double scale =
        std::min(static_cast<double>(size.width) / own.width, static_cast<double>(size.height) / own.height);
    const int width = static_cast<int>(own.width * scale + 0.5),
              height = static_cast<int>(own.height * scale + 0.5);
    surface->StretchPicture(*picture, {(size.width - width) / 2, (size.height - height) / 2, width, height},
                            why);
    PlainWriter writer(out);
    return surface->WriteBitmap(writer);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 5) return 2;
    LinuxDrawing drawing;
    const long before = InUse();
    const int times = argc > 5 ? std::atoi(argv[5]) : 1;
    for (int i = 0; i < times; ++i)
        if (!Change(drawing, argv[1], argv[2], {std::atoi(argv[3]), std::atoi(argv[4])})) return 1;
    if (argc > 5) std::printf("%ld %ld %ld\n", before, Highest(), InUse());
    return 0;
}
