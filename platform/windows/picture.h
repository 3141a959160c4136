#pragma once

#include "platform/drawing.h"
#include "platform/windows/win32.h"

#include <wincodec.h>

namespace quorvane {

// A picture that can paint itself on a device context of GDI.
class WindowsPicture : public Picture {
  public:
    // The whole picture onto `target`. False, with the reason in `why`, where it cannot be decoded.
    virtual bool Paint(HDC dc, const PixelRect& target, std::string& why) const = 0;
};

// Null, with the reason in `why`, for a file that is no picture of the kind. `imaging` outlives the picture.
std::unique_ptr<Picture> LoadBitmapPicture(IWICImagingFactory& imaging, const std::string& path,
                                           std::string& why);
std::unique_ptr<Picture> LoadMetafile(const std::string& path, int dotsPerInch, std::string& why);

} // namespace quorvane
