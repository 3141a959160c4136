#include "engine/background.h"

#include "config/color_channel.h"
#include "core/run_time_error.h"
#include "engine/placing.h"

#include <cmath>

namespace quorvane {
namespace {

constexpr int VerticalBicolor = 1;
constexpr int HorizontalBicolor = 2;
constexpr int Tetracolor = 3;

GradientVertex Vertex(int x, int y, Color color) {
    return {x, y, ColorChannel16(color, "red"), ColorChannel16(color, "green"),
            ColorChannel16(color, "blue")};
}

// A whole number below `count`.
double RandomBelow(Random& random, double count) {
    return std::floor(static_cast<double>(random.Next()) * count);
}

// A limit that gives no channel at all leaves the channel as it is.
void DrawChannel(std::int16_t& channel, std::int32_t limit, std::int32_t minimum, Random& random) {
    const double level = RandomBelow(random, static_cast<double>(limit) - minimum + 1) + minimum;
    PassOver([&] { channel = ChannelValue16(static_cast<std::int64_t>(level)); });
}

void DrawColor(GradientVertex& vertex, const GlobalRecord& record, Random& random) {
    DrawChannel(vertex.red, record.RandomColorLimitR, record.RandomColorLimitMinR, random);
    DrawChannel(vertex.green, record.RandomColorLimitG, record.RandomColorLimitMinG, random);
    DrawChannel(vertex.blue, record.RandomColorLimitB, record.RandomColorLimitMinB, random);
}

void CopyColor(GradientVertex& to, const GradientVertex& from) {
    to.red = from.red;
    to.green = from.green;
    to.blue = from.blue;
}

// The limits of the settings do not hold here: they are for gradients.
Color RandomBackColor(Random& random) {
    const int red = static_cast<int>(RandomBelow(random, 256));
    const int green = static_cast<int>(RandomBelow(random, 256));
    const int blue = static_cast<int>(RandomBelow(random, 256));
    return Rgb(red, green, blue);
}

} // namespace

GradientVertices SettingsVertices(const GlobalRecord& record, PixelSize canvas) {
    const int w = canvas.width;
    const int h = canvas.height;
    return {Vertex(0, 0, record.Left_Upper_Color), Vertex(w, h, record.Right_Upper_Color),
            Vertex(0, 0, record.Left_Upper_Color), Vertex(w, h, record.Right_Upper_Color),
            Vertex(0, 0, record.Left_Upper_Color), Vertex(w, 0, record.Right_Upper_Color),
            Vertex(0, h, record.Left_Lower_Color), Vertex(w, 0, record.Right_Upper_Color),
            Vertex(0, h, record.Left_Lower_Color), Vertex(w, h, record.Right_Lower_Color)};
}

void DrawRandomColors(GradientVertices& vertices, const GlobalRecord& record, Random& random) {
    for (std::size_t number = 0; number <= 6; ++number) {
        DrawColor(vertices[number], record, random);
    }
    CopyColor(vertices[7], vertices[5]);
    CopyColor(vertices[8], vertices[6]);
    DrawColor(vertices[9], record, random);
}

void PaintBackground(Surface& canvas, const GradientVertices& vertices, const GlobalRecord& record,
                     Random& random) {
    if (record.WallpaperPosition <= wallpaper_position::Stretch) return;
    const PixelSize size = canvas.Size();
    const Color color = record.UseRandomColors ? RandomBackColor(random) : record.Left_Upper_Color;
    canvas.Fill({0, 0, size.width, size.height}, color);
    if (!record.UseGradientFill) return;
    if (record.GradientStyle == VerticalBicolor) {
        canvas.GradientRectangle(vertices[0], vertices[1], GradientDirection::TopToBottom);
    } else if (record.GradientStyle == HorizontalBicolor) {
        canvas.GradientRectangle(vertices[2], vertices[3], GradientDirection::LeftToRight);
    } else if (record.GradientStyle == Tetracolor) {
        canvas.GradientTriangle(vertices[4], vertices[5], vertices[6]);
        canvas.GradientTriangle(vertices[7], vertices[8], vertices[9]);
    }
}

} // namespace quorvane
