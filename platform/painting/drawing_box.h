#pragma once

#include "core/color.h"
#include "platform/drawing.h"

#include <string_view>

namespace quorvane {

// The drawing side of a picture box: an area of a surface seen in twips (1/1440 inch), with a font, a colour
// and a text cursor in force. Nothing is cut at the area's edges. Positions are rounded to whole pixels when
// something is drawn; the cursor keeps its fractions.
class DrawingBox {
  public:
    // The surface must outlive the box. The cursor starts at the upper left corner.
    DrawingBox(Surface& surface, const PixelRect& area, double twipsPerPixelX, double twipsPerPixelY);
    DrawingBox(Surface& surface, double twipsPerPixelX, double twipsPerPixelY); // all of it

    double Width() const;
    double Height() const;

    // In the font in force: the advance of the longest of a text's lines, which "\n" or "\r\n" parts; the
    // height of a line, and of all lines of a text.
    double TextWidth(std::string_view text) const;
    double TextHeight() const;
    double TextHeight(std::string_view text) const;

    // Prints at the cursor, which then stands behind the text. At a line's end in the text the cursor goes to
    // the left edge, one line further down.
    void Print(std::string_view text);
    // The same with a line end: the cursor goes to the left edge, one line further down.
    void PrintLine(std::string_view text = {});

    // A filled rectangle from one corner up to the other. The cursor stays.
    void FillBox(double left, double top, double right, double bottom, Color color);

    // The pixels of the surface that such a rectangle takes.
    PixelRect Pixels(double left, double top, double right, double bottom) const;

    double CurrentX = 0;
    double CurrentY = 0;
    FontSpec Font;
    Color ForeColor = 0;

  private:
    void PrintPiece(std::string_view text);

    Surface& surface_;
    PixelRect area_;
    double twipsPerPixelX_;
    double twipsPerPixelY_;
};

} // namespace quorvane
