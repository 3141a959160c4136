#pragma once

#include "core/color.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace quorvane {

class FileWriter;

// All measures of this header are pixels, with y growing downwards.

struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect&) const = default;
};

// `size` is in points; the surface turns points into pixels by the screen's resolution.
struct FontSpec {
    std::string name;
    float size = 8;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    bool operator==(const FontSpec&) const = default;
};

// A corner of a gradient. A channel holds its value in the high byte, as a signed 16-bit number: 255 is -256.
struct GradientVertex {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int16_t red = 0;
    std::int16_t green = 0;
    std::int16_t blue = 0;
    std::int16_t alpha = 255;
};

enum class GradientDirection { LeftToRight, TopToBottom };

// The pixels of a surface: rows of 24-bit pixels, blue first, each row `stride` bytes after the one above it
// (negative where the rows lie bottom up). Valid until the surface is next drawn on.
struct PixelView {
    const std::uint8_t* top = nullptr;
    std::ptrdiff_t stride = 0;
    PixelSize size;

    const std::uint8_t* Row(int y) const { return top + y * stride; }
};

// A picture in a file. Its size comes from the header; it is decoded only when it is drawn, at the scale
// needed.
class Picture {
  public:
    virtual ~Picture() = default;
    // With the orientation applied that a photograph carries.
    virtual PixelSize Size() const = 0;
};

class Surface {
  public:
    virtual ~Surface() = default;

    virtual PixelSize Size() const = 0;
    virtual void Fill(const PixelRect& area, Color color) = 0;
    // Blends from one corner's colour to the other's along `direction`.
    virtual void GradientRectangle(const GradientVertex& upperLeft, const GradientVertex& lowerRight,
                                   GradientDirection direction) = 0;
    virtual void GradientTriangle(const GradientVertex& a, const GradientVertex& b,
                                  const GradientVertex& c) = 0;
    // A straight line with smooth edges and round ends, which stand out by half of `width`. The place (x, y)
    // is the upper left corner of pixel (x, y), its middle (x + 0.5, y + 0.5). A width under 1 is a paler
    // line.
    virtual void Line(double x1, double y1, double x2, double y2, double width, Color color) = 0;
    // The whole picture onto `target`, in halftone quality; what lies outside the surface is cut, and what
    // was painted before shows where the picture is transparent. False, with the reason in `why`, where the
    // picture cannot be decoded; the surface may then hold a part of it. Where the painting is put off,
    // LateFailure tells instead.
    virtual bool StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) = 0;

    // Advance width and line height of one line of text.
    virtual double TextWidth(const FontSpec& font, std::string_view text) = 0;
    virtual double TextHeight(const FontSpec& font) = 0;
    // (x, y) is the upper left corner of the line.
    virtual void PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) = 0;

    virtual PixelView Pixels() = 0;
    // The pixels as a Windows bitmap of 24 bits. False where a write failed. The commit is the caller's.
    virtual bool WriteBitmap(FileWriter& out) = 0;
    // Why a picture could not be decoded whose painting had been put off; empty where none failed so far.
    virtual std::string LateFailure() const { return {}; }
};

class Drawing {
  public:
    virtual ~Drawing() = default;

    // Black all over. Null where there is no memory for it.
    virtual std::unique_ptr<Surface> CreateSurface(PixelSize size) = 0;
    // The same for what is painted once and then saved. The painting may be put off until it is, so that only
    // a few rows need exist at a time: pictures painted on it must outlive it.
    virtual std::unique_ptr<Surface> CreateCanvas(PixelSize size) { return CreateSurface(size); }
    // Reads the header alone. Null, with the reason in `why`, for a file that is no picture of a known
    // format.
    virtual std::unique_ptr<Picture> LoadPicture(const std::string& path, std::string& why) = 0;

    // The pixels as a PNG file. False where they could not be encoded or written; the commit is the caller's.
    virtual bool WritePng(const PixelView& pixels, FileWriter& out) = 0;

    // 1440 divided by the dots per inch of the screen.
    virtual double TwipsPerPixelX() const = 0;
    virtual double TwipsPerPixelY() const = 0;
};

} // namespace quorvane
