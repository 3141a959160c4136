// make_photo FILE WIDTH HEIGHT: a JPEG of the size and the detail that a camera gives: hills in layers under
// a sky, with fine structure down to the pixel, at quality 95 with halved colour.
#include "samples/noise.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

namespace {

using namespace quorvane;
using samples::Hash;
using samples::Layers;

struct Scene {
    float width, height;
    std::vector<std::array<float, 5>> ridges; // of each column, as a part of the height

    Scene(int w, int h)
        : width(static_cast<float>(w))
        , height(static_cast<float>(h))
        , ridges(static_cast<std::size_t>(w)) {
        for (std::size_t x = 0; x < ridges.size(); ++x)
            for (std::size_t layer = 0; layer < 5; ++layer) {
                const float depth = static_cast<float>(layer);
                ridges[x][layer] = 0.28F + 0.13F * depth +
                                   0.22F * (Layers(static_cast<float>(x) / width * (3 + depth), depth, 9,
                                                   static_cast<std::uint32_t>(100 + layer)) -
                                            0.5F);
            }
    }

    void Pixel(int column, int row, std::uint8_t* out) const {
        const float x = static_cast<float>(column), y = static_cast<float>(row) / height;
        int layer = -1;
        for (int i = 0; i < 5; ++i)
            if (y > ridges[static_cast<std::size_t>(column)][static_cast<std::size_t>(i)]) layer = i;
        const float grain =
            static_cast<float>(Hash(static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(row), 7) &
                               255) /
                255.0F -
            0.5F;
        float red, green, blue;
        if (layer < 0) {
            const float cloud = Layers(x / width * 6, y * 9, 6, 11) - 0.45F;
            red = 120 + 120 * y + 160 * cloud;
            green = 160 + 70 * y + 130 * cloud;
            blue = 225 - 20 * y + 60 * cloud;
        } else {
            const float near = static_cast<float>(layer) / 4;
            const float scale = 40 + 260 * near;
            const float detail = Layers(x / width * scale, y * scale, 7, 31) - 0.5F;
            red = 130 - 70 * near + (60 + 130 * near) * detail;
            green = 150 - 50 * near + (60 + 150 * near) * detail;
            blue = 165 - 120 * near + (40 + 70 * near) * detail;
        }
        const float noise = grain * (layer < 0 ? 12.0F : 26.0F);
        const std::array<float, 3> channels{red, green, blue};
        for (std::size_t i = 0; i < 3; ++i) {
            const float level = channels[i] + noise;
            out[i] = static_cast<std::uint8_t>(level < 0 ? 0 : level > 255 ? 255 : level);
        }
    }
};

} // namespace

int main(int argc, char** argv) {
    const int width = argc == 4 ? std::atoi(argv[2]) : 0, height = argc == 4 ? std::atoi(argv[3]) : 0;
    std::FILE* file = width > 0 && height > 0 ? std::fopen(argv[1], "wb") : nullptr;
    if (!file) {
        std::fprintf(stderr, "usage: make_photo FILE WIDTH HEIGHT\n");
        return 2;
    }
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    jpeg_stdio_dest(&info, file);
    info.image_width = static_cast<JDIMENSION>(width);
    info.image_height = static_cast<JDIMENSION>(height);
    info.input_components = 3;
    info.in_color_space = JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 95, TRUE);
    jpeg_start_compress(&info, TRUE);
    const Scene scene(width, height);
    std::vector<std::uint8_t> row(static_cast<std::size_t>(width) * 3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            scene.Pixel(x, y, &row[static_cast<std::size_t>(x) * 3]);
        std::uint8_t* line = row.data();
        jpeg_write_scanlines(&info, &line, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    return std::fclose(file) == 0 ? 0 : 1;
}
