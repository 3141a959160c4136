#include "platform/files.h"
#include "platform/windows/base/files.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/drawing/picture.h"

#include <cmath>
#include <cstring>

namespace quorvane {
namespace {

class Metafile final : public WindowsPicture {
  public:
    Metafile(HENHMETAFILE file, PixelSize size)
        : file_(file)
        , size_(size) {}
    ~Metafile() override { DeleteEnhMetaFile(file_); }

    PixelSize Size() const override { return size_; }

    bool Paint(const Canvas&, HDC dc, const PixelRect& target, std::string& why) const override {
        const RECT area{target.x, target.y, target.x + target.width, target.y + target.height};
        const int saved = SaveDC(dc);
        const bool played = PlayEnhMetaFile(dc, file_, &area);
        RestoreDC(dc, saved);
        if (!played) why = "Can't play the metafile";
        return played;
    }

  private:
    HENHMETAFILE file_;
    PixelSize size_;
};

int PixelsOf(double inches, int dotsPerInch) {
    return static_cast<int>(std::lround(inches * dotsPerInch));
}

constexpr double HundredthMillimetresPerInch = 2540;

// The header in front of a placeable metafile: a rectangle and its units an inch. It lies packed in the file.
struct Placement {
    static constexpr std::size_t Bytes = 22;
    static constexpr std::uint32_t Key = 0x9AC6CDD7;

    std::int16_t left = 0, top = 0, right = 0, bottom = 0;
    std::uint16_t unitsPerInch = 0;

    static bool Read(const std::string& content, Placement& out) {
        std::uint32_t first = 0;
        if (content.size() <= Bytes) return false;
        std::memcpy(&first, content.data(), sizeof first);
        if (first != Key) return false;
        const char* box = content.data() + 6;
        std::memcpy(&out.left, box, 2);
        std::memcpy(&out.top, box + 2, 2);
        std::memcpy(&out.right, box + 4, 2);
        std::memcpy(&out.bottom, box + 6, 2);
        std::memcpy(&out.unitsPerInch, box + 8, 2);
        return out.unitsPerInch > 0 && out.right != out.left && out.bottom != out.top;
    }
    double InchesWide() const { return std::abs(static_cast<double>(right) - left) / unitsPerInch; }
    double InchesHigh() const { return std::abs(static_cast<double>(bottom) - top) / unitsPerInch; }
};

PixelSize SizeOf(const ENHMETAHEADER& header, int dotsPerInch) {
    return {
        PixelsOf((header.rclFrame.right - header.rclFrame.left) / HundredthMillimetresPerInch, dotsPerInch),
        PixelsOf((header.rclFrame.bottom - header.rclFrame.top) / HundredthMillimetresPerInch, dotsPerInch)};
}

// Owns `file`, which may be null.
std::unique_ptr<Picture> MakePicture(HENHMETAFILE file, PixelSize size) {
    if (!file) return nullptr;
    auto picture = std::make_unique<Metafile>(file, size);
    return size.width > 0 && size.height > 0 ? std::move(picture) : nullptr;
}

std::unique_ptr<Picture> LoadEnhanced(HENHMETAFILE file, int dotsPerInch) {
    ENHMETAHEADER header{};
    if (!file || GetEnhMetaFileHeader(file, sizeof header, &header) == 0) return nullptr;
    return MakePicture(file, SizeOf(header, dotsPerInch));
}

HENHMETAFILE Converted(std::string_view records, const METAFILEPICT* extents) {
    const HDC screen = GetDC(nullptr);
    const HENHMETAFILE file = SetWinMetaFileBits(
        static_cast<UINT>(records.size()), reinterpret_cast<const BYTE*>(records.data()), screen, extents);
    ReleaseDC(nullptr, screen);
    return file;
}

// A metafile of the old kind, with the header that places it or without one.
std::unique_ptr<Picture> LoadOld(const std::string& content, int dotsPerInch) {
    Placement placement;
    if (!Placement::Read(content, placement)) return LoadEnhanced(Converted(content, nullptr), dotsPerInch);
    const METAFILEPICT extents{
        MM_ANISOTROPIC, static_cast<LONG>(placement.InchesWide() * HundredthMillimetresPerInch),
        static_cast<LONG>(placement.InchesHigh() * HundredthMillimetresPerInch), nullptr};
    return MakePicture(
        Converted(std::string_view(content).substr(Placement::Bytes), &extents),
        {PixelsOf(placement.InchesWide(), dotsPerInch), PixelsOf(placement.InchesHigh(), dotsPerInch)});
}

bool LooksEnhanced(std::string_view head) {
    using namespace std::string_view_literals;
    return head.starts_with("\1\0\0\0"sv) && head.size() > 44 && head.substr(40, 4) == " EMF";
}

bool LooksOld(std::string_view head) {
    using namespace std::string_view_literals;
    return head.starts_with("\xD7\xCD\xC6\x9A") || head.starts_with("\1\0\x9\0\0"sv) ||
           head.starts_with("\2\0\x9\0\0"sv);
}

} // namespace

bool LooksLikeMetafile(std::string_view head) {
    return LooksEnhanced(head) || LooksOld(head);
}

std::unique_ptr<Picture> LoadMetafile(const std::string& path, int dotsPerInch, std::string& why) {
    const std::string content = WindowsFiles().Read(path).value_or(std::string());
    auto picture = LooksEnhanced(content)
                       ? LoadEnhanced(SetEnhMetaFileBits(static_cast<UINT>(content.size()),
                                                         reinterpret_cast<const BYTE*>(content.data())),
                                      dotsPerInch)
                       : LoadOld(content, dotsPerInch);
    if (!picture) why = "the metafile is damaged";
    return picture;
}

} // namespace quorvane
