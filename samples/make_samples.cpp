// make_samples FOLDER: draws the pictures that lie beside this file.
#include "samples/noise.h"

#include <QFile>
#include <QImage>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

using namespace quorvane::samples;

struct Tone {
    float red = 0, green = 0, blue = 0; // 0 to 1
};

Tone Mix(Tone a, Tone b, float part) {
    part = std::clamp(part, 0.0F, 1.0F);
    return {a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part,
            a.blue + (b.blue - a.blue) * part};
}
Tone Lit(Tone tone, float light) {
    return {tone.red * light, tone.green * light, tone.blue * light};
}
Tone Add(Tone a, Tone b, float part) {
    return {a.red + b.red * part, a.green + b.green * part, a.blue + b.blue * part};
}
float Step(float from, float to, float value) {
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3 - 2 * t);
}
float Bell(float distance, float width) {
    return std::exp(-distance * distance / (2 * width * width));
}

// x runs from 0 to the picture's aspect, y from 0 at the top to 1. Four points of every pixel are asked.
template<typename Scene>
QImage Shade(int width, int height, Scene scene) {
    QImage image(width, height, QImage::Format_RGB32);
    const auto unit = 1.0F / static_cast<float>(height);
    const auto level = [](float sum) { return std::clamp(static_cast<int>(sum * 255 / 4 + 0.5F), 0, 255); };
    for (int row = 0; row < height; ++row) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < width; ++column) {
            Tone sum;
            for (int part = 0; part < 4; ++part) {
                const float x =
                    (static_cast<float>(column) + 0.25F + 0.5F * static_cast<float>(part % 2)) * unit;
                const float y =
                    (static_cast<float>(row) + 0.25F + 0.5F * static_cast<float>(part / 2)) * unit;
                Tone tone = scene(x, y);
                tone = {std::clamp(tone.red, 0.0F, 1.0F), std::clamp(tone.green, 0.0F, 1.0F),
                        std::clamp(tone.blue, 0.0F, 1.0F)};
                sum = Add(sum, tone, 1);
            }
            line[column] = qRgb(level(sum.red), level(sum.green), level(sum.blue));
        }
    }
    return image;
}

// Rows of sand with the low sun on one side of each crest.
Tone Dunes(float x, float y) {
    const Tone high{0.18F, 0.28F, 0.52F}, low{0.98F, 0.72F, 0.50F};
    const float sunX = 1.28F, sunY = 0.36F;
    const float away = std::hypot(x - sunX, y - sunY);
    Tone tone = Mix(high, low, Step(-0.05F, 0.50F, y));
    tone = Add(tone, {1.0F, 0.75F, 0.45F}, 0.55F * Bell(away, 0.16F));
    tone = Mix(tone, {1.0F, 0.96F, 0.86F}, Step(0.052F, 0.048F, away));
    for (int i = 0; i < 6; ++i) {
        const float near = static_cast<float>(i) / 5;
        const float base = 0.46F + 0.10F * static_cast<float>(i);
        const float bend = 0.16F + 0.10F * near;
        const auto seed = static_cast<std::uint32_t>(40 + i);
        const float at = x * (2.6F - 1.5F * near) + static_cast<float>(i) * 3.7F;
        const float crest =
            base + bend * (Noise(at, 0.5F, seed) - 0.5F) + 0.02F * (Noise(at * 4, 0.5F, seed) - 0.5F);
        if (y < crest) continue;
        const float slope = Noise(at + 0.02F, 0.5F, seed) - Noise(at - 0.02F, 0.5F, seed);
        const float shade = Step(-0.05F, 0.05F, slope + 0.20F * (y - crest) - 0.01F);
        const float ripple =
            std::sin((y - crest * 0.6F) * (420 - 260 * near) + 5 * Noise(x * 9, y * 9, seed)) * 0.018F * near;
        const Tone bright = Mix({0.96F, 0.70F, 0.48F}, {0.90F, 0.52F, 0.26F}, near);
        const Tone dark = Mix({0.66F, 0.48F, 0.52F}, {0.30F, 0.16F, 0.22F}, near);
        tone = Lit(Mix(dark, bright, shade), 1 + ripple - 0.5F * near * (y - crest));
    }
    return tone;
}

// A moon over hills, its light on a lake.
Tone Night(float x, float y) {
    const float shore = 0.78F;
    const bool water = y > shore;
    const float ripple = water ? 0.012F * (Noise(x * 14, y * 160, 5) - 0.5F) * (1 + 6 * (y - shore)) : 0;
    const float px = x + ripple * 2, py = water ? 2 * shore - y + ripple * 3 : y;
    Tone tone = Mix({0.02F, 0.04F, 0.13F}, {0.16F, 0.25F, 0.43F}, Step(0.0F, 0.85F, py));
    if (!water) {
        const auto cellX = static_cast<std::uint32_t>(px * 90), cellY = static_cast<std::uint32_t>(py * 90);
        const float sx = (static_cast<float>(cellX) + 0.2F + 0.6F * Chance(cellX, cellY, 1)) / 90;
        const float sy = (static_cast<float>(cellY) + 0.2F + 0.6F * Chance(cellX, cellY, 2)) / 90;
        const float size = 0.0005F + 0.0011F * std::pow(Chance(cellX, cellY, 3), 6.0F);
        if (Chance(cellX, cellY, 4) > 0.62F)
            tone = Add(tone, {1, 1, 0.95F}, Bell(std::hypot(px - sx, py - sy), size) * Step(0.72F, 0.3F, py));
    }
    const float moonX = 1.15F, moonY = 0.27F, away = std::hypot(px - moonX, py - moonY);
    tone = Add(tone, {0.75F, 0.80F, 0.95F}, 0.30F * Bell(away, 0.16F) + 0.30F * Bell(away, 0.07F));
    const float face = 0.92F - 0.22F * Step(0.45F, 0.65F, Layers(px * 22, py * 22, 4, 9));
    tone = Mix(tone, Lit({1.0F, 0.98F, 0.90F}, face), Step(0.0725F, 0.071F, away));
    for (int i = 0; i < 3; ++i) {
        const float depth = static_cast<float>(i);
        const float hill = 0.60F + 0.055F * depth -
                           0.15F * Layers(px * (1.4F + 0.8F * depth) + depth * 5, 0.3F, 6,
                                          static_cast<std::uint32_t>(60 + i)) +
                           0.05F;
        tone =
            Mix(tone, Lit({0.12F, 0.19F, 0.31F}, 1 - 0.34F * depth), Step(hill - 0.001F, hill + 0.001F, py));
    }
    if (water) {
        tone = Lit(tone, 0.72F);
        const float glitter =
            Step(0.55F, 0.78F, Noise(x * 30, y * 240, 8)) * Bell(x - moonX, 0.03F + 0.35F * (y - shore));
        tone = Add(tone, {0.85F, 0.88F, 0.92F}, 0.75F * glitter);
    }
    return tone;
}

// Waves under a summer sky, with a boat.
Tone Sea(float x, float y) {
    const float horizon = 0.42F;
    if (y < horizon) {
        Tone tone = Mix({0.20F, 0.50F, 0.82F}, {0.80F, 0.91F, 0.96F}, Step(0, horizon, y));
        const float depth = 0.25F / (horizon + 0.06F - y);
        const float cloud = Layers(x * depth * 1.2F + 3, depth * 3.2F, 6, 21);
        tone = Mix(tone, {1, 0.99F, 0.97F}, 0.9F * Step(0.50F, 0.74F, cloud) * Step(horizon, 0.24F, y));
        const float sailX = (x - 1.22F) / 0.05F, sailY = (horizon + 0.004F - y) / 0.13F;
        if (sailY > 0.12F && sailY < 1 && sailX > -0.02F && sailX < 0.75F * (1 - sailY))
            return {0.98F, 0.97F, 0.93F};
        if (sailY > 0.16F && sailY < 0.85F && sailX < -0.06F && sailX > -0.5F * (0.9F - sailY))
            return {0.88F, 0.34F, 0.26F};
        if (sailY > 0 && sailY < 0.09F && std::abs(sailX - 0.05F) < 0.55F + 2.5F * sailY)
            return {0.28F, 0.16F, 0.13F};
        return tone;
    }
    const float depth = y - horizon, far = 1 / (depth * 6 + 0.06F);
    const float swell = Layers(x * far * 3.0F + 2 * Noise(x * 2, y * 4, 3), far * 10, 5, 33);
    const float light = Step(0.35F, 0.72F, swell);
    Tone tone = Mix({0.02F, 0.24F, 0.40F}, {0.18F, 0.62F, 0.68F}, light);
    tone = Mix({0.55F, 0.78F, 0.86F}, tone, Step(0, 0.16F, depth));
    const float foam = Step(0.72F, 0.80F, swell) * Step(0.08F, 0.3F, depth);
    tone = Mix(tone, {0.94F, 0.98F, 0.98F}, 0.85F * foam);
    return Add(tone, {1, 0.95F, 0.8F},
               0.35F * Step(0.60F, 0.78F, swell) * Bell(x - 0.5F, 0.16F + 0.3F * depth));
}

// Curtains of light above snow.
Tone Aurora(float x, float y) {
    Tone tone = Mix({0.01F, 0.02F, 0.08F}, {0.05F, 0.12F, 0.22F}, y / 0.75F);
    const auto cellX = static_cast<std::uint32_t>(x * 70), cellY = static_cast<std::uint32_t>(y * 70);
    const float sx = (static_cast<float>(cellX) + 0.2F + 0.6F * Chance(cellX, cellY, 1)) / 70;
    const float sy = (static_cast<float>(cellY) + 0.2F + 0.6F * Chance(cellX, cellY, 2)) / 70;
    if (Chance(cellX, cellY, 3) > 0.7F)
        tone = Add(tone, {0.9F, 0.95F, 1}, Bell(std::hypot(x - sx, y - sy), 0.0009F) * Step(0.7F, 0.4F, y));
    for (int i = 0; i < 3; ++i) {
        const float shift = static_cast<float>(i);
        const auto seed = static_cast<std::uint32_t>(70 + i);
        const float foot = 0.50F - 0.07F * shift + 0.20F * (Noise(x * 1.3F + shift * 4, 0.5F, seed) - 0.5F) +
                           0.07F * (Noise(x * 4, 0.5F, seed + 9) - 0.5F);
        const float above = foot - y;
        const float ray = 0.45F + 0.55F * Noise(x * 38 + 2 * Noise(x * 6, y, seed), y * 1.1F, seed + 3);
        const float shine = ray * Step(-0.018F, 0.012F, above) * std::exp(-std::max(above, 0.0F) * 5.5F) *
                            (0.35F + 0.65F * Noise(x * 2.2F, shift, seed + 6));
        const Tone color = Mix({0.20F, 1.0F, 0.55F}, {0.55F, 0.25F, 0.85F}, Step(0.05F, 0.42F, above));
        tone = Add(tone, color, 0.95F * shine);
    }
    const float ridge = 0.78F - 0.20F * Layers(x * 1.7F, 0.2F, 7, 91) + 0.06F;
    if (y > ridge) {
        const float snow = Layers(x * 9, y * 18, 6, 95);
        tone = Mix({0.05F, 0.10F, 0.17F}, {0.34F, 0.50F, 0.56F},
                   Step(0.36F, 0.62F, snow + 0.25F * (ridge + 0.1F - y)));
    }
    const float field = 0.86F + 0.02F * Noise(x * 3, 0.4F, 96);
    if (y > field) tone = Mix({0.16F, 0.34F, 0.38F}, {0.46F, 0.68F, 0.68F}, Layers(x * 5, y * 30, 4, 97));
    return tone;
}

// Trunks in the morning mist, upright.
Tone Forest(float x, float y) {
    Tone tone = Mix({0.97F, 0.95F, 0.82F}, {0.66F, 0.76F, 0.68F}, Step(0.1F, 0.95F, y));
    tone = Add(tone, {0.3F, 0.22F, 0.05F}, Bell(std::hypot(x - 0.42F, y - 0.26F), 0.2F));
    for (int layer = 0; layer < 6; ++layer) {
        const float near = static_cast<float>(layer) / 5;
        const Tone bark = Mix({0.68F, 0.76F, 0.68F}, {0.10F, 0.13F, 0.11F}, near);
        const float count = 22 - 17 * near;
        const auto seed = static_cast<std::uint32_t>(200 + layer);
        const float lean = 0.05F * (Noise(y * 1.5F, static_cast<float>(layer), seed) - 0.5F);
        for (int i = -1; i <= 1; ++i) {
            const float cell = std::floor(x * count) + static_cast<float>(i);
            const auto tree = static_cast<std::uint32_t>(static_cast<std::int32_t>(cell) + 100);
            const float middle =
                (cell + 0.15F + 0.7F * Chance(tree, 0, seed)) / count + lean * (Chance(tree, 2, seed) - 0.3F);
            const float girth = (0.05F + 0.10F * Chance(tree, 1, seed)) / count * (0.75F + 0.35F * y);
            const float edge = girth * (1 + 0.25F * (Noise(y * 40, cell, seed) - 0.5F));
            const float part = Step(edge + 0.0012F, edge, std::abs(x - middle));
            const float round =
                1 + 0.35F * near * (x - middle < 0 ? 1.0F : -0.6F) * std::abs(x - middle) / girth;
            const float grain = 1 + 0.5F * near * (Noise(x * 260, y * 26, seed) - 0.5F);
            tone = Mix(tone, Lit(bark, round * grain), part);
        }
        const float floor = 0.80F + 0.045F * static_cast<float>(layer) +
                            0.05F * (Layers(x * (8 - 4 * near), near, 5, seed + 7) - 0.5F);
        const Tone moss = Mix({0.68F, 0.76F, 0.62F}, {0.16F, 0.24F, 0.10F}, near);
        if (y > floor) tone = Lit(moss, 0.7F + 0.6F * Layers(x * 40, y * 60, 3, seed + 8));
        tone = Mix(tone, {0.93F, 0.93F, 0.82F}, 0.16F * (1 - near) * Step(0.3F, 0.9F, y));
    }
    const float leaves =
        Layers(x * 16, y * 16, 6, 300) - 0.55F * Step(0.0F, 0.34F, y + 0.06F * Noise(x * 5, 1, 301));
    const Tone leaf = Mix({0.16F, 0.30F, 0.10F}, {0.62F, 0.74F, 0.28F}, Noise(x * 60, y * 60, 302));
    return Mix(tone, leaf, 0.92F * Step(0.30F, 0.36F, leaves));
}

// One leaf from its stalk at the origin upwards, as a path and its vein.
QByteArray Leaves() {
    QByteArray svg =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1600\" height=\"1200\" "
        "viewBox=\"0 0 1600 1200\">\n<defs><linearGradient id=\"g\" x1=\"0\" y1=\"0\" x2=\"1\" y2=\"1\">"
        "<stop offset=\"0\" stop-color=\"#fbf3df\"/><stop offset=\"1\" stop-color=\"#e9c79a\"/>"
        "</linearGradient></defs>\n<rect width=\"1600\" height=\"1200\" fill=\"url(#g)\"/>\n";
    static const char* const kColors[] = {"#b5402b", "#d9772f", "#e6a83c", "#8c9a4b",
                                          "#5f7a4a", "#a3352f", "#c98f3e"};
    for (std::uint32_t i = 0; i < 46; ++i) {
        // One leaf to a cell of a shaken grid, or they would crowd together.
        const float x = (static_cast<float>(i * 5 % 8) + 0.1F + 0.9F * Chance(i, 1, 7)) * 200 - 40;
        const float y = (static_cast<float>(i / 8) + 0.1F + 0.9F * Chance(i, 2, 7)) * 205 - 30;
        const float size = 0.55F + 1.1F * Chance(i, 3, 7), angle = 360 * Chance(i, 4, 7);
        const char* color = kColors[Hash(i, 5, 7) % std::size(kColors)];
        svg += QString("<g transform=\"translate(%1 %2) rotate(%3) scale(%4)\" opacity=\"%5\">"
                       "<path d=\"M0 60 C-70 20 -62 -60 0 -120 C62 -60 70 20 0 60Z\" fill=\"%6\"/>"
                       "<path d=\"M0 95 L0 -95 M0 30 L-30 2 M0 30 L30 2 M0 -5 L-30 -36 M0 -5 L30 -36 M0 -40 "
                       "L-21 -64 "
                       "M0 -40 L21 -64\" stroke=\"#fff4dc\" stroke-width=\"3\" stroke-opacity=\"0.55\" "
                       "fill=\"none\"/></g>\n")
                   .arg(static_cast<double>(x), 0, 'f', 0)
                   .arg(static_cast<double>(y), 0, 'f', 0)
                   .arg(static_cast<double>(angle), 0, 'f', 0)
                   .arg(static_cast<double>(size), 0, 'f', 2)
                   .arg(static_cast<double>(0.72F + 0.26F * Chance(i, 6, 7)), 0, 'f', 2)
                   .arg(color)
                   .toUtf8();
    }
    return svg + "</svg>\n";
}

bool Save(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_samples FOLDER\n");
        return 2;
    }
    const QString folder = QString(argv[1]) + '/';
    const bool saved = Shade(1920, 1080, Dunes).save(folder + "dunes.jpg", "jpg", 86) &&
                       Shade(1280, 800, Night).save(folder + "moonrise.png", "png", 0) &&
                       Shade(2400, 1350, Sea).save(folder + "sea.jpg", "jpg", 78) &&
                       Shade(2048, 1280, Aurora).save(folder + "aurora.webp", "webp", 82) &&
                       Shade(1080, 1440, Forest).save(folder + "forest.jpg", "jpg", 76) &&
                       Save(folder + "leaves.svg", Leaves());
    if (!saved) std::fprintf(stderr, "make_samples: cannot write to %s\n", argv[1]);
    return saved ? 0 : 1;
}
