#include "platform/memory/drawing.h"

#include "core/numbers.h"
#include "core/utf8.h"
#include "platform/files.h"
#include "platform/painting/bitmap_file.h"
#include "platform/painting/raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quorvane {
namespace {

std::string PointText(double x, double y) {
    return NumberText(x) + "," + NumberText(y);
}

std::string SizeText(PixelSize size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

std::string ColorText(Color color) {
    constexpr std::string_view KDigits = "0123456789ABCDEF";
    std::string text = "#";
    for (const int channel : {Red(color), Green(color), Blue(color)}) {
        text += KDigits[static_cast<std::size_t>(channel / 16)];
        text += KDigits[static_cast<std::size_t>(channel % 16)];
    }
    return text;
}

std::string VertexText(const GradientVertex& vertex) {
    const auto high = [](std::int16_t channel) { return static_cast<int>(ChannelLevel(channel) / 256); };
    return PointText(vertex.x, vertex.y) + " " +
           ColorText(Rgb(high(vertex.red), high(vertex.green), high(vertex.blue)));
}

std::string FontText(const FontSpec& font) {
    std::string text = "\"" + font.name + " " + NumberText(font.size);
    if (font.bold) text += " bold";
    if (font.italic) text += " italic";
    if (font.underline) text += " underline";
    if (font.strikethrough) text += " strikethrough";
    return text + "\"";
}

class MemorySurface final : public Surface {
  public:
    MemorySurface(PixelSize size, std::vector<std::string>& log)
        : bytes_(static_cast<std::size_t>(size.width) * 3 * static_cast<std::size_t>(size.height))
        , canvas_{bytes_.data(), std::ptrdiff_t{3} * size.width, size}
        , log_(log) {}

    PixelSize Size() const override { return canvas_.size; }

    void Fill(const PixelRect& area, Color color) override {
        log_.push_back("fill " + PointText(area.x, area.y) + " " + SizeText({area.width, area.height}) + " " +
                       ColorText(color));
        FillArea(canvas_, area, color);
    }

    void GradientRectangle(const GradientVertex& upperLeft, const GradientVertex& lowerRight,
                           GradientDirection direction) override {
        const bool across = direction == GradientDirection::LeftToRight;
        log_.push_back(std::string("gradient ") + (across ? "left-to-right " : "top-to-bottom ") +
                       VertexText(upperLeft) + " " + VertexText(lowerRight));
        FillGradientRectangle(canvas_, upperLeft, lowerRight, direction);
    }

    void GradientTriangle(const GradientVertex& a, const GradientVertex& b,
                          const GradientVertex& c) override {
        log_.push_back("triangle " + VertexText(a) + " " + VertexText(b) + " " + VertexText(c));
        FillGradientTriangle(canvas_, a, b, c);
    }

    void Line(double x1, double y1, double x2, double y2, double width, Color color) override {
        log_.push_back("line " + PointText(x1, y1) + " " + PointText(x2, y2) + " " + NumberText(width) + " " +
                       ColorText(color));
        FillLine(canvas_, x1, y1, x2, y2, width, color);
    }

    bool StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) override;

    double TextWidth(const FontSpec& font, std::string_view text) override {
        return static_cast<double>(font.size) * static_cast<double>(CountLetters(text));
    }
    double TextHeight(const FontSpec& font) override { return 2 * static_cast<double>(font.size); }
    void PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) override;

    PixelView Pixels() override { return canvas_.View(); }
    bool WriteBitmap(FileWriter& out) override { return quorvane::WriteBitmap(Pixels(), out); }

  private:
    std::vector<std::uint8_t> bytes_;
    Canvas canvas_;
    std::vector<std::string>& log_;
};

} // namespace

class MemoryPicture final : public Picture {
  public:
    MemoryPicture(std::string picturePath, const MemoryDrawing::Entry& pictureEntry)
        : path(std::move(picturePath))
        , why(pictureEntry.why)
        , size_(pictureEntry.size)
        , pixels_(pictureEntry.pixels) {}

    PixelSize Size() const override { return size_; }

    Color At(std::int64_t x, std::int64_t y) const {
        return pixels_[pixels_.size() == 1 ? 0 : static_cast<std::size_t>(y * size_.width + x)];
    }

    const std::string path;
    const std::string why; // not empty: it cannot be drawn

  private:
    PixelSize size_;
    std::vector<Color> pixels_;
};

bool MemorySurface::StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) {
    const auto& source = dynamic_cast<const MemoryPicture&>(picture);
    log_.push_back("stretch " + source.path + " " + PointText(target.x, target.y) + " " +
                   SizeText({target.width, target.height}));
    if (!source.why.empty()) {
        why = source.why;
        return false;
    }
    const PixelSize size = source.Size();
    const PixelRect part = Clip(target, canvas_.size);
    for (int y = part.y; y < part.y + part.height; ++y) {
        const std::int64_t fromY = (std::int64_t{y} - target.y) * size.height / target.height;
        for (int x = part.x; x < part.x + part.width; ++x) {
            const std::int64_t fromX = (std::int64_t{x} - target.x) * size.width / target.width;
            FillArea(canvas_, {x, y, 1, 1}, source.At(fromX, fromY));
        }
    }
    return true;
}

void MemorySurface::PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) {
    log_.push_back("text " + PointText(x, y) + " " + FontText(font) + " " + ColorText(color) + " \"" +
                   std::string(text) + "\"");
    const int advance = static_cast<int>(std::lround(font.size));
    const int top = static_cast<int>(std::lround(y));
    int left = static_cast<int>(std::lround(x));
    for (const char byte : text) {
        if (IsContinuation(byte)) continue;
        if (byte != ' ') FillArea(canvas_, {left + 1, top + 1, advance - 2, 2 * advance - 2}, color);
        left += advance;
    }
}

void MemoryDrawing::AddPicture(const std::string& path, PixelSize size, Color color) {
    pictures_[path] = {size, {color}, false, {}};
}

void MemoryDrawing::AddPicture(const std::string& path, PixelSize size, std::vector<Color> pixels) {
    pixels.resize(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height));
    pictures_[path] = {size, std::move(pixels), false, {}};
}

void MemoryDrawing::AddUnreadable(const std::string& path, const std::string& why) {
    pictures_[path] = {{}, {}, true, why};
}

void MemoryDrawing::SpoilPixels(const std::string& path, const std::string& why) {
    pictures_[path].why = why;
}

std::unique_ptr<Surface> MemoryDrawing::CreateSurface(PixelSize size) {
    log.push_back("surface " + SizeText(size));
    if (refuseSurfaces || size.width <= 0 || size.height <= 0) return nullptr;
    return std::make_unique<MemorySurface>(size, log);
}

std::unique_ptr<Picture> MemoryDrawing::LoadPicture(const std::string& path, std::string& why) {
    const auto found = pictures_.find(path);
    if (found == pictures_.end()) {
        why = "the file is not there";
        return nullptr;
    }
    if (found->second.unreadable) {
        why = found->second.why;
        return nullptr;
    }
    return std::make_unique<MemoryPicture>(path, found->second);
}

bool MemoryDrawing::WritePng(const PixelView& pixels, FileWriter& out) {
    log.push_back("png " + SizeText(pixels.size));
    return !refusePng && out.Write(log.back().data(), log.back().size());
}

} // namespace quorvane
