#pragma once

#include <cstddef>
#include <cstdio>
#include <vector>

#include <jpeglib.h>

namespace quorvane {

// Feeds libjpeg from a file in pieces so large that nearly every block lies whole in one, for which the
// library has a quicker way. Its own source gives 4 KiB at a time, less than two blocks of a good photograph
// may take.
class JpegSource final : public jpeg_source_mgr {
  public:
    // The file must outlive it.
    explicit JpegSource(std::FILE* file);
    JpegSource(const JpegSource&) = delete;
    JpegSource& operator=(const JpegSource&) = delete;

  private:
    static boolean Fill(j_decompress_ptr info);
    static void Skip(j_decompress_ptr info, long count);

    std::FILE* file_;
    std::vector<JOCTET> piece_;
    bool begun_ = false;
};

} // namespace quorvane
