#pragma once

#include "platform/painting/tiling.h"

#include <memory>
#include <string>

namespace quorvane {

class GuiSession;

// What every kind of picture does alike: orientation, cutting, and a copy kept when one is wanted at the same
// size again.
class LinuxPicture : public Picture {
  public:
    PixelSize Size() const override { return orientation_.Upright(storedSize_); }

    bool Draw(const Canvas& canvas, const PixelRect& target, std::string& why) const;

    // Whether DrawRows asks for the rows of the canvas from the top down.
    bool RowsDescend() const { return !orientation_.transposed && !orientation_.mirrorY; }
    // The same onto a canvas that is had row by row, with nothing kept for a second time.
    bool DrawRows(PixelSize canvas, RowPainter::Rows rows, const PixelRect& target, std::string& why) const;

  protected:
    LinuxPicture(PixelSize storedSize, Orientation orientation, RowPainter::Mode mode)
        : storedSize_(storedSize)
        , orientation_(orientation)
        , mode_(mode) {}

    // Decodes once more and puts the rows that painter.StoredPart() asks for. False, with the reason in
    // `why`, where the picture is not whole; the rows that could be had are put.
    virtual bool Render(RowPainter& painter, std::string& why) const = 0;

    PixelSize StoredSize() const { return storedSize_; }

  private:
    PixelSize storedSize_;
    Orientation orientation_;
    RowPainter::Mode mode_;
    mutable Tiling tiling_;
};

// Each reads the header of a file whose kind is known. Null, with the reason in `why`, where it is damaged.
// Drawings need fonts and therefore `gui`, which must outlive the picture.
std::unique_ptr<LinuxPicture> OpenBitmap(const std::string& path, std::string& why);
std::unique_ptr<LinuxPicture> OpenGif(const std::string& path, std::string& why);
std::unique_ptr<LinuxPicture> OpenJpeg(const std::string& path, std::string& why);
std::unique_ptr<LinuxPicture> OpenPng(const std::string& path, std::string& why);
std::unique_ptr<LinuxPicture> OpenTiff(const std::string& path, std::string& why);
std::unique_ptr<LinuxPicture> OpenWebp(const std::string& path, std::string& why);
std::unique_ptr<LinuxPicture> OpenSvg(const std::string& path, GuiSession& gui, std::string& why);
enum class Metafile { Windows, Enhanced };
std::unique_ptr<LinuxPicture> OpenMetafile(const std::string& path, Metafile kind, GuiSession& gui,
                                           std::string& why);

// Tells the kind by the first bytes, whatever the file's name is, and opens it.
std::unique_ptr<LinuxPicture> OpenPicture(const std::string& path, GuiSession& gui, std::string& why);

// A picture of more pixels than any camera makes is refused; the words for the person.
bool SensibleSize(PixelSize size, std::string& why);

// What the metadata near the beginning of the file says.
Orientation NotedOrientation(const std::string& path);

} // namespace quorvane
