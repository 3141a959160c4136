#pragma once

#include "platform/forms/control.h"
#include "platform/forms/menu.h"
#include "platform/forms/modality.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace quorvane {

// Which part of a form itself changed.
enum class FormAspect {
    Caption,
    Place,   // left, top, size of the inner area
    Look,    // opacity, transparent colour, background
    Order,   // on top of other windows or not
    Window,  // border style, menu bar, minimised
    Blocked, // by a modal window, or which one that is
};

// Rows of a list view that became other ones: where `removed` rows began at `first` there are `inserted` ones
// now. As many of each are rows that stayed and changed.
struct RowChange {
    int first = 0;
    int removed = 0;
    int inserted = 0;
};

// Where a popup menu opens.
enum class MenuPlace {
    Pointer,
    Form, // at the corner of the inner area, for a menu that a key asked for
};

// How large things are on one screen: texts are measured in its pixels and told in twips.
class FormMetrics {
  public:
    virtual ~FormMetrics() = default;

    virtual FontSpec DefaultFont() = 0;
    // Size of a text of one or more lines ("\n" or "\r\n" parts them), without mnemonics. A `wrapWidth` above
    // 0 breaks lines between words.
    virtual TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) = 0;
    // What the widget of a kind draws around its text or its children: borders, the box of a check box, the
    // caption of a frame, the tabs of a strip: one row of them.
    virtual Insets Chrome(ControlKind kind) = 0;
    // Of the pixels that windows count in.
    virtual TwipScale Scale() = 0;
    // Pixels of the screen for one of those.
    virtual double PixelRatio() { return 1; }
};

// A host's half of one form: the window and its widgets. It knows kinds and never a particular form, mirrors
// what the model says, and reports what a person does by Form::Report; while it applies a change of the model
// it reports nothing. Destroyed when the form is unloaded, possibly inside one of its own reports.
class FormView {
  public:
    virtual ~FormView() = default;

    // Form::IsModal says whether it is to be shown as a modal one.
    virtual void Show() = 0;
    virtual void Hide() = 0;
    virtual void BringToFront() = 0;
    virtual void Update(Control& control, Aspect aspect) = 0;
    // The rows of a list view, and with them where the chosen one stands. Aspect::Items of a list view are
    // its columns and check boxes, Aspect::Value is the chosen row.
    virtual void UpdateRows(ListView& list, const RowChange& change) = 0;
    virtual void UpdateForm(FormAspect aspect) = 0;
    virtual void Focus(Control& control) = 0;
    // Opens a menu, waits until it is closed, and answers the entry of `menu` that was picked, null for none.
    // The view may be gone by then.
    virtual const MenuItem* Popup(const ShownMenu& menu, MenuPlace place) = 0;
    // The system's own handle of a widget, for programs that draw into it; 0 where there is none.
    virtual std::uintptr_t NativeHandle(Control& control) = 0;
    // Of the screen that the window stands on. The host says act::Rescale when they have become others.
    virtual FormMetrics& Metrics() = 0;
};

// Brings forms to life on one toolkit. Its own measures are those of the first screen, and windows are placed
// in its twips.
class FormHost : public FormMetrics {
  public:
    // The window of a form, with widgets for all its controls, not yet shown. The view reads captions, values
    // and bounds from the model.
    virtual std::unique_ptr<FormView> Create(Form& form) = 0;

    // The part of the screen that windows may cover, in twips.
    virtual TwipRect WorkArea() = 0;

    // The order of the windows that are shown, of all collections of forms and of the questions.
    Modality& Order() { return order_; }

  private:
    Modality order_;
};

} // namespace quorvane
