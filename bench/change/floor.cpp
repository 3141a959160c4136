// floor IN.jpg OUT WIDTH HEIGHT: the least that any program must do for a wallpaper: the scaled decode that
// is just large enough, and a file of as many bytes as the bitmap has, in stripes of 128 KiB.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <jpeglib.h>

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    const auto width = static_cast<JDIMENSION>(std::atoi(argv[3]));
    const auto height = static_cast<JDIMENSION>(std::atoi(argv[4]));
    std::FILE* file = std::fopen(argv[1], "rb");
    if (!file) return 1;
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_stdio_src(&info, file);
    jpeg_read_header(&info, TRUE);
    // What the picture becomes when it is fitted into the screen.
    const double scale = std::min(static_cast<double>(width) / info.image_width,
                                  static_cast<double>(height) / info.image_height);
    for (info.scale_denom = 8; info.scale_denom > 1 && 1.0 / info.scale_denom < scale;)
        info.scale_denom /= 2;
    info.scale_num = 1;
    info.out_color_space = JCS_EXT_BGR;
    jpeg_start_decompress(&info);
    std::vector<std::uint8_t> row(std::size_t{3} * info.output_width);
    while (info.output_scanline < info.output_height) {
        std::uint8_t* line = row.data();
        jpeg_read_scanlines(&info, &line, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    std::fclose(file);

    const int out = open(argv[2], O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const std::vector<std::uint8_t> stripe(std::size_t{128} << 10, 0x55);
    for (std::size_t left = std::size_t{3} * (width + 4) * (height + 4) + 54; left > 0;) {
        const std::size_t count = std::min(left, stripe.size());
        if (write(out, stripe.data(), count) != static_cast<ssize_t>(count)) return 1;
        left -= count;
    }
    return close(out) == 0 ? 0 : 1;
}
