#pragma once

#include "platform/linux/drawing/mapped_buffer.h"
#include "platform/painting/row_painter.h"

#include <memory>
#include <string>

namespace quorvane {

class GuiSession;

// What every kind of picture does alike: orientation, cutting, and a copy kept when one is wanted at the same
// size again, since a tiled wallpaper draws a small picture hundreds of times.
class LinuxPicture : public Picture {
  public:
    PixelSize Size() const override { return orientation_.Upright(storedSize_); }

    bool Draw(const Canvas& canvas, const PixelRect& target, std::string& why) const;

  protected:
    LinuxPicture(PixelSize storedSize, Orientation orientation, RowPainter::Mode mode)
        : storedSize_(storedSize)
        , orientation_(orientation)
        , mode_(mode) {}

    // Decodes once more and puts the rows that painter.StoredPart() asks for. False, with the reason in
    // `why`, where no row could be had.
    virtual bool Render(RowPainter& painter, std::string& why) const = 0;

    PixelSize StoredSize() const { return storedSize_; }

  private:
    bool DrawAnew(const Canvas& canvas, const PixelRect& target, std::string& why) const;
    bool Keep(PixelSize size) const;

    PixelSize storedSize_;
    Orientation orientation_;
    RowPainter::Mode mode_;
    mutable PixelSize lastSize_;
    mutable PixelSize keptSize_;
    mutable MappedBuffer kept_; // opaque pictures alone, three bytes a pixel
};

// Each reads the header of a file whose kind is known. Null, with the reason in `why`, where it is damaged.
std::unique_ptr<LinuxPicture> OpenJpeg(const std::string& path, std::string& why);
// `format` is Qt's name for one: "bmp", "gif", "png", "webp", "tiff" or "svg". The last needs fonts and
// therefore `gui`, which must outlive the picture.
std::unique_ptr<LinuxPicture> OpenQtPicture(const std::string& path, const char* format, GuiSession& gui,
                                            std::string& why);
enum class Metafile { Windows, Enhanced };
std::unique_ptr<LinuxPicture> OpenMetafile(const std::string& path, Metafile kind, GuiSession& gui,
                                           std::string& why);

// Tells the kind by the first bytes, whatever the file's name is, and opens it.
std::unique_ptr<LinuxPicture> OpenPicture(const std::string& path, GuiSession& gui, std::string& why);

// A picture of more pixels than any camera makes is refused; the words for the person.
bool SensibleSize(PixelSize size, std::string& why);

} // namespace quorvane
