#pragma once

#include "core/color.h"
#include "core/words.h"
#include "platform/forms/act.h"
#include "platform/forms/geometry.h"
#include "platform/forms/layout.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class Button;
class CheckBox;
class ComboBox;
class DatePicker;
class Form;
class Frame;
class Label;
class ListView;
class LocaleStrings;
class MonthView;
class OptionButton;
class PictureBox;
class ProgressBar;
class RichTextBox;
class ScrollBar;
class Slider;
class TabStrip;
class TextBox;

enum class ControlKind {
    Label,
    TextBox,
    RichTextBox,
    Button,
    CheckBox,
    OptionButton,
    ComboBox,
    ListView,
    TabStrip,
    Frame,
    Slider,
    ProgressBar,
    ScrollBar,
    DatePicker,
    MonthView,
    PictureBox,
};

const char* KindName(ControlKind kind);

// One function for each kind: what is done kind by kind is a visitor, and misses none.
class ControlVisitor {
  public:
    virtual ~ControlVisitor() = default;
    virtual void Visit(Label& control) = 0;
    virtual void Visit(TextBox& control) = 0;
    virtual void Visit(RichTextBox& control) = 0;
    virtual void Visit(Button& control) = 0;
    virtual void Visit(CheckBox& control) = 0;
    virtual void Visit(OptionButton& control) = 0;
    virtual void Visit(ComboBox& control) = 0;
    virtual void Visit(ListView& control) = 0;
    virtual void Visit(TabStrip& control) = 0;
    virtual void Visit(Frame& control) = 0;
    virtual void Visit(Slider& control) = 0;
    virtual void Visit(ProgressBar& control) = 0;
    virtual void Visit(ScrollBar& control) = 0;
    virtual void Visit(DatePicker& control) = 0;
    virtual void Visit(MonthView& control) = 0;
    virtual void Visit(PictureBox& control) = 0;
};

// Which part of a control changed; the host brings that part of its widget up to date.
enum class Aspect {
    Value,   // text, number, choice, check, date, selection, painted surface
    Caption, // also the captions of tabs
    Items,   // entries, columns, range
    State,   // visible, enabled, read-only
    Look,    // font, colours, tool tip
    Bounds,
};

// What holds controls: a form, a frame, or a tab strip.
class Container {
  public:
    Container() = default;
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    virtual ~Container() = default;

    virtual Form& OwnerForm() = 0;
    // The container as a control, null for a form.
    virtual Control* AsControl() = 0;

    // In the order of their declaration.
    const std::vector<Control*>& Children() const { return children_; }

    // How the children are arranged. Children that the layout does not name have no place and are not seen.
    void SetLayout(LayoutItem layout) { layout_ = std::move(layout); }
    const LayoutItem& Layout() const { return layout_; }

  private:
    friend class Control;
    std::vector<Control*> children_;
    LayoutItem layout_;
};

// A control of a form and a member of its class. It owns its value; a host mirrors it. One rule for events:
// setting a property from code and the same act of a person end in the same handler, and a property that is
// set to the value it has raises nothing.
class Control {
  public:
    static constexpr int NoIndex = -1;

    // `index` tells the members of a control array apart.
    Control(Container& parent, std::string name, int index = NoIndex);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    virtual ControlKind Kind() const = 0;
    virtual void Accept(ControlVisitor& visitor) = 0;
    // The kind can have the keyboard.
    virtual bool TakesFocus() const { return true; }

    const std::string& Name() const { return name_; }
    int Index() const { return index_; }
    std::string FullName() const; // "Text17(3)" in an array
    Form& OwnerForm() const;
    Container& Parent() const { return parent_; }

    // "&" marks the mnemonic, "&&" is one "&".
    const std::string& Caption() const { return caption_.Text(); }
    const Words& CaptionWords() const { return caption_; }
    void SetCaption(Words caption);
    bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);
    // With the containers around it, and with the page of a tab strip that it stands on.
    bool IsShown() const;
    bool IsReachable() const; // shown and enabled, with the containers around it
    const std::string& ToolTip() const { return toolTip_.Text(); }
    const Words& TipWords() const { return toolTip_; }
    void SetToolTip(Words text);
    // Empty: the host's own.
    const std::optional<FontSpec>& Font() const { return font_; }
    void SetFont(std::optional<FontSpec> font);
    const std::optional<Color>& ForeColor() const { return foreColor_; }
    void SetForeColor(std::optional<Color> color);
    const std::optional<Color>& BackColor() const { return backColor_; }
    virtual void SetBackColor(std::optional<Color> color);

    // From the upper left corner of the container's inner area; worked out by the layout.
    const TwipRect& Bounds() const { return bounds_; }
    // The layout gave it room, and the containers around it; what has none is not seen.
    bool HasPlace() const;
    // It is of a kind that has the keyboard, shown, enabled, and has a place.
    bool CanHaveFocus() const { return TakesFocus() && IsReachable() && HasPlace(); }
    // Before the form's first showing: at that showing. Nothing where the control cannot have the keyboard.
    void SetFocus();

    std::function<void()> onDoubleClick;
    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;
    // Answers whether the key was used up.
    std::function<bool(const act::Key&)> onKeyDown;
    std::function<void(const act::Mouse&)> onMouse;

    // The value as one line of a dump, empty for a kind without a value.
    virtual std::string ValueText() const { return {}; }

  protected:
    friend class Form;
    friend class LayoutRun;

    // The kind's part of Form::Report: changes the value and raises the events. True where the act was the
    // control's own.
    virtual bool Take(const Act& done) = 0;
    virtual void SetBounds(const TwipRect& bounds);
    // Puts all words of the control into those of the table.
    virtual void Localise(const LocaleStrings& words);
    // The words in the language of the form.
    Words Localised(Words words) const;
    // The measures of the screen are others.
    virtual void Rescaled() {}
    // Tells the host, if there is one.
    void Changed(Aspect aspect);
    // As Changed, and has the form arranged anew where the control no longer has room.
    void ChangedInSize(Aspect aspect);

    static void Raise(const std::function<void()>& handler) {
        if (!handler) return;
        const auto copy = handler; // the handler may put another one in its place
        copy();
    }

  private:
    Container& parent_;
    std::string name_;
    int index_;
    Words caption_;
    bool visible_ = true;
    bool enabled_ = true;
    Words toolTip_;
    std::optional<FontSpec> font_;
    std::optional<Color> foreColor_;
    std::optional<Color> backColor_;
    TwipRect bounds_;
};

// The caption as it is read: mnemonic marks taken out.
std::string PlainCaption(std::string_view caption);
// The caption that reads as `text`, which has no mnemonics: a message, a name.
std::string LiteralCaption(std::string_view text);

} // namespace quorvane
