#pragma once

#include "platform/drawing.h"

#include <map>
#include <string>
#include <vector>

namespace quorvane {

// Surfaces with real pixels, pictures that a test lays down by path, and one log of what was drawn on all
// surfaces, a line a call:
//   surface 1924x1084
//   fill 0,0 1924x1084 #000000
//   gradient top-to-bottom 0,0 #0000FF 1924,1084 #FF0000
//   triangle 0,0 #0000FF 1924,0 #FF0000 0,1084 #00FF00
//   line 10,10 40.5,10 2 #FFFFFF
//   stretch /pictures/sea.jpg 0,0 1924x1084
//   text 12,0 "Tahoma 8 bold" #FFFFFF "November"
//   png 1924x1084
// Its one font has a fixed width: a character takes `size` pixels across, a line 2 * `size`
// down, whatever the name. Print paints a block for each character that is no blank, one pixel inside its
// cell, so that a test can find it among the pixels.
class MemoryDrawing final : public Drawing {
  public:
    // A picture of one colour, or of the given pixels, row by row from the top.
    void AddPicture(const std::string& path, PixelSize size, Color color);
    void AddPicture(const std::string& path, PixelSize size, std::vector<Color> pixels);
    // A file that is no picture: LoadPicture answers null.
    void AddUnreadable(const std::string& path, const std::string& why);
    // A picture laid down before whose header can be read and whose pixels cannot.
    void SpoilPixels(const std::string& path, const std::string& why);

    std::unique_ptr<Surface> CreateSurface(PixelSize size) override;
    std::unique_ptr<Picture> LoadPicture(const std::string& path, std::string& why) override;
    bool WritePng(const PixelView& pixels, FileWriter& out) override; // writes the words of its log line
    double TwipsPerPixelX() const override { return twipsPerPixel; }
    double TwipsPerPixelY() const override { return twipsPerPixel; }

    std::vector<std::string> log;
    double twipsPerPixel = 15;
    bool refuseSurfaces = false; // as if there were no memory for one
    bool refusePng = false;

  private:
    struct Entry {
        PixelSize size;
        std::vector<Color> pixels; // one alone: the whole picture has its colour
        bool unreadable = false;
        std::string why; // not empty: what fails, fails with it
    };
    friend class MemoryPicture;
    std::map<std::string, Entry> pictures_;
};

} // namespace quorvane
