#pragma once

#include "platform/forms/control.h"
#include "platform/forms/menu.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace quorvane {

// Which part of a form itself changed.
enum class FormAspect {
    Caption,
    Place,  // left, top, size of the inner area
    Look,   // opacity, transparent colour, background
    Order,  // on top of other windows or not
    Window, // border style, menu bar, minimised
};

// Rows of a list view that became other ones: where `removed` rows began at `first` there are `inserted` ones
// now. As many of each are rows that stayed and changed.
struct RowChange {
    int first = 0;
    int removed = 0;
    int inserted = 0;
};

// A host's half of one form: the window and its widgets. It knows kinds and never a particular form, mirrors
// what the model says, and reports what a person does by Form::Report; while it applies a change of the model
// it reports nothing. Destroyed when the form is unloaded, possibly inside one of its own reports.
class FormView {
  public:
    virtual ~FormView() = default;

    // A modal form takes the person's input from every other window until it is hidden.
    virtual void Show(bool modal) = 0;
    virtual void Hide() = 0;
    virtual void BringToFront() = 0;
    virtual void Update(Control& control, Aspect aspect) = 0;
    // The rows of a list view, and with them where the chosen one stands. Aspect::Items of a list view are
    // its columns and check boxes, Aspect::Value is the chosen row.
    virtual void UpdateRows(ListView& list, const RowChange& change) = 0;
    virtual void UpdateForm(FormAspect aspect) = 0;
    virtual void Focus(Control& control) = 0;
    // Opens the menu at the pointer and waits until it is closed.
    virtual void Popup(Menu& menu) = 0;
    // The system's own handle of a widget, for programs that draw into it; 0 where there is none.
    virtual std::uintptr_t NativeHandle(Control& control) = 0;
};

// Brings forms to life on one toolkit.
class FormHost {
  public:
    virtual ~FormHost() = default;

    // The window of a form, with widgets for all its controls, not yet shown. The view reads captions, values
    // and bounds from the model.
    virtual std::unique_ptr<FormView> Create(Form& form) = 0;

    virtual FontSpec DefaultFont() = 0;
    // Size of a text of one or more lines ("\n" or "\r\n" parts them), without mnemonics. A `wrapWidth` above
    // 0 breaks lines between words.
    virtual TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) = 0;
    // What the widget of a kind draws around its text or its children: borders, the box of a check box, the
    // caption of a frame, the tabs of a strip.
    virtual Insets Chrome(ControlKind kind) = 0;
    virtual TwipScale Scale() = 0;
    // The part of the screen that windows may cover, in twips.
    virtual TwipRect WorkArea() = 0;
};

} // namespace quorvane
