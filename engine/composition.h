#pragma once

#include "config/global_record.h"
#include "engine/complaints.h"
#include "engine/file_list.h"
#include "engine/selection.h"
#include "platform/clock.h"
#include "platform/drawing.h"
#include "platform/random.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace quorvane {

// A canvas may put off the painting until it is saved, and with it the picture's decoding and its complaint.
struct ComposedWallpaper {
    std::unique_ptr<Picture> picture;     // on the canvas; null where there is none
    std::unique_ptr<Surface> canvas;      // null where there was no memory for it
    PixelRect calendar;                   // the block on the canvas; empty where none was painted
    std::int64_t loadMilliseconds = 0;    // reading the picture, and decoding it where that is not put off
    std::int64_t composeMilliseconds = 0; // everything else
};

// The chain from the empty canvas to the finished one. No step stops it: each failure passes over to the
// next one, so a picture that cannot be read gives a wallpaper without a picture.
class Composition {
  public:
    // Draws the calendar on the canvas and answers the block's place.
    using CalendarPainter = std::function<PixelRect(Surface& canvas)>;

    struct Parts {
        GlobalRecord& record;
        FileList& fileList;
        Selection& selection;
        Complaints& complaints;
        Clock& clock;
        EventLoop& events; // run while a picture is laid down in very many tiles
        Drawing& drawing;
        Random& random;
    };

    Composition(const Parts& parts, CalendarPainter paintCalendar)
        : parts_(parts)
        , paintCalendar_(std::move(paintCalendar)) {}

    // Chooses a picture, or takes `file` where it is not empty, and keeps its path in LastSelectedWallpaper.
    // Where nothing can be chosen the last one is drawn again, if there is one.
    ComposedWallpaper Compose(const std::string& file, PixelSize screen);

  private:
    void ChoosePicture(const std::string& file);
    void DrawPicture(ComposedWallpaper& composed, PixelSize target);

    Parts parts_;
    CalendarPainter paintCalendar_;
};

// Tells what was wrong with the picture when the canvas was saved.
void TellLateFailure(const Surface& canvas, const GlobalRecord& record, Complaints& complaints);

// The size that a WallpaperResolution from 0 to 4 stands for; the screen's for any other.
PixelSize TargetSize(int wallpaperResolution, PixelSize screen);

} // namespace quorvane
