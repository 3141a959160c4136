#pragma once

#include "platform/drawing.h"
#include "platform/painting/raster.h"
#include "platform/windows/base/win32.h"

#include <wincodec.h>

namespace quorvane {

// A picture that can paint itself on a bitmap that is both: pixels and a device context of GDI.
class WindowsPicture : public Picture {
  public:
    // The whole picture onto `target`, which reaches into the canvas. False, with the reason in `why`, where
    // it cannot be decoded.
    virtual bool Paint(const Canvas& canvas, HDC dc, const PixelRect& target, std::string& why) const = 0;
};

// Whether a file that begins so is a metafile.
bool LooksLikeMetafile(std::string_view head);

// Null, with the reason in `why`, for a file that is no picture of the kind. `head` is its beginning;
// `imaging` outlives the picture.
std::unique_ptr<Picture> LoadMetafile(const std::string& path, int dotsPerInch, std::string& why);
std::unique_ptr<Picture> LoadBitmapPicture(IWICImagingFactory& imaging, const std::string& path,
                                           std::string_view head, std::string& why);

} // namespace quorvane
