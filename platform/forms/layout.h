#pragma once

#include "platform/forms/geometry.h"

#include <utility>
#include <vector>

namespace quorvane {

class Container;
class Control;
class Form;
class FormMetrics;

// A piece of a layout: a control, a gap, or a box of pieces. Sizes come from the texts that the host
// measures; room that is left over goes to the pieces that stretch. A hidden control takes no room, except in
// a stack. In a form that reads from right to left everything is mirrored.
//
//   SetLayout(Column({Label1, Text1, Row({Stretch(), Command1, Command2})}));
struct LayoutItem {
    enum class Kind { Nothing, Control, Row, Column, Grid, Stack, Free };

    Kind kind = Kind::Nothing;
    Control* control = nullptr;
    std::vector<LayoutItem> items;
    int columns = 1;    // of a grid
    int stretch = 0;    // share of the room left over along the box's direction
    TwipSize least;     // smallest size; of a gap, its size
    TwipRect at;        // place in a free layout; without a width or height, as large as it asks for
    bool equal = false; // a row whose pieces are all as wide as the widest: the buttons of a dialogue

    LayoutItem() = default;
    LayoutItem(Control& child) // a control stands for itself in a box
        : kind(Kind::Control)
        , control(&child) {}

    LayoutItem Stretched(int share = 1) && {
        stretch = share;
        return std::move(*this);
    }
    LayoutItem Least(TwipSize size) && {
        least = size;
        return std::move(*this);
    }
    LayoutItem At(TwipRect place) && {
        at = place;
        return std::move(*this);
    }
    LayoutItem Equal() && {
        equal = true;
        return std::move(*this);
    }
};

LayoutItem Place(Control& control);
LayoutItem Row(std::vector<LayoutItem> items);
LayoutItem Column(std::vector<LayoutItem> items);
// Filled row by row; a column is as wide as its widest piece. A column stretches where a piece of its first
// row does.
LayoutItem Grid(int columns, std::vector<LayoutItem> items);
// All pieces in the same place, as large as the largest: the pages of a tab strip. Controls that are hidden
// keep their room.
LayoutItem Stack(std::vector<LayoutItem> items);
// Each piece where it says, from the upper left corner: Place(Text1).At({0, 0, 3000, 600}). As large as what
// is visible reaches; of pieces that overlap the later declared control lies on top.
LayoutItem Free(std::vector<LayoutItem> items);
LayoutItem Gap(int twips);
LayoutItem Stretch();

// The smallest size of the form's inner area.
TwipSize MeasureForm(Form& form, FormMetrics& host);
// Gives every control of the form its place in an inner area of `size`.
void ArrangeForm(Form& form, FormMetrics& host, TwipSize size);

} // namespace quorvane
