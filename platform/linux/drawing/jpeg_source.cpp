#include "platform/linux/drawing/jpeg_source.h"

#include <algorithm>

#include <jerror.h>

namespace quorvane {
namespace {

constexpr std::size_t PieceBytes = 64 * 1024;

} // namespace

JpegSource::JpegSource(std::FILE* file)
    : jpeg_source_mgr{}
    , file_(file)
    , piece_(PieceBytes) {
    if (file) std::setvbuf(file, nullptr, _IONBF, 0);
    init_source = [](j_decompress_ptr) {};
    fill_input_buffer = Fill;
    skip_input_data = Skip;
    resync_to_restart = jpeg_resync_to_restart;
    term_source = [](j_decompress_ptr) {};
}

// A file that ends too early ends as a whole one does, with a warning.
boolean JpegSource::Fill(j_decompress_ptr info) {
    auto& source = static_cast<JpegSource&>(*info->src);
    std::size_t count = std::fread(source.piece_.data(), 1, source.piece_.size(), source.file_);
    if (count == 0) {
        if (!source.begun_) ERREXIT(info, JERR_INPUT_EMPTY);
        WARNMS(info, JWRN_JPEG_EOF);
        source.piece_[0] = 0xFF;
        source.piece_[1] = JPEG_EOI;
        count = 2;
    }
    source.begun_ = true;
    source.next_input_byte = source.piece_.data();
    source.bytes_in_buffer = count;
    return TRUE;
}

void JpegSource::Skip(j_decompress_ptr info, long count) {
    jpeg_source_mgr& source = *info->src;
    for (std::size_t left = count > 0 ? static_cast<std::size_t>(count) : 0; left > 0;) {
        if (source.bytes_in_buffer == 0) Fill(info);
        const std::size_t step = std::min(left, source.bytes_in_buffer);
        source.next_input_byte += step;
        source.bytes_in_buffer -= step;
        left -= step;
    }
}

} // namespace quorvane
