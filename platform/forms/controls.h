#pragma once

#include "core/date_time.h"
#include "core/words.h"
#include "platform/forms/control.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvane {

// The text of a text control. Line ends are "\r\n"; positions are bytes of UTF-8.
class TextControl : public Control {
  public:
    using Control::Control;

    const std::string& Text() const { return text_; }
    // The caret goes to the end of the text.
    void SetText(std::string text);
    int SelectionStart() const { return selectionStart_; }
    int SelectionLength() const { return selectionLength_; }
    void SetSelection(int start, int length);
    bool ReadOnly() const { return readOnly_; }
    void SetReadOnly(bool readOnly);
    virtual bool MultiLine() const = 0;

    // The text became another one.
    std::function<void()> onChange;
    // Each letter (a code point) that a person types or pastes: the letter to put in its place, 0 to refuse
    // it.
    std::function<char32_t(char32_t)> keyFilter;
    // Letters that fit in, 0 for any number. Holds for the person, not for SetText.
    int maxLength = 0;
    // Preferred size, in average letters and lines.
    int columns = 14;
    int lines = 1;

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;

  private:
    std::string Admitted(const std::string& typed, int& caret) const;

    std::string text_;
    int selectionStart_ = 0;
    int selectionLength_ = 0;
    bool readOnly_ = false;
};

class TextBox : public TextControl {
  public:
    enum class Lines { One, Many };

    TextBox(Container& parent, std::string name, int index = NoIndex, Lines lines = Lines::One);

    ControlKind Kind() const override { return ControlKind::TextBox; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
    bool MultiLine() const override { return multiLine_; }

  private:
    bool multiLine_;
};

// Several lines, wrapped at the edge.
class RichTextBox : public TextControl {
  public:
    RichTextBox(Container& parent, std::string name, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::RichTextBox; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
    bool MultiLine() const override { return true; }
};

// A caption without a frame. A mnemonic in it leads to the control that follows it.
class Label : public Control {
  public:
    enum class Align { Left, Center, Right };

    Label(Container& parent, std::string name, Words caption = {}, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::Label; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
    bool TakesFocus() const override { return false; }

    Align Alignment() const { return alignment_; }
    void SetAlignment(Align alignment);
    // Longer texts are broken into lines of this width; 0 for one line however long.
    int WrapWidth() const { return wrapWidth_; }
    void SetWrapWidth(int twips);

    std::function<void()> onClick;

  protected:
    bool Take(const Act& done) override;

  private:
    Align alignment_ = Align::Left;
    int wrapWidth_ = 0;
};

class Button : public Control {
  public:
    Button(Container& parent, std::string name, Words caption = {}, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::Button; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    // As a person's click; nothing while the button is disabled or hidden.
    void Press();

    std::function<void()> onClick;

  protected:
    bool Take(const Act& done) override;
};

class CheckBox : public Control {
  public:
    CheckBox(Container& parent, std::string name, Words caption = {}, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::CheckBox; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    bool Value() const { return value_; }
    void SetValue(bool value);

    // The value became another one.
    std::function<void()> onClick;

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;

  private:
    bool value_ = false;
};

// One of a group: choosing it clears the others of the same group in the same container.
class OptionButton : public Control {
  public:
    OptionButton(Container& parent, std::string name, Words caption = {}, int index = NoIndex, int group = 0);

    ControlKind Kind() const override { return ControlKind::OptionButton; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    int Group() const { return group_; }
    bool Value() const { return value_; }
    void SetValue(bool value);

    // It became the chosen one.
    std::function<void()> onClick;

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;

  private:
    int group_;
    bool value_ = false;
};

class ComboBox : public Control {
  public:
    enum class Style { List, Editable };

    ComboBox(Container& parent, std::string name, int index = NoIndex, Style style = Style::List);

    ControlKind Kind() const override { return ControlKind::ComboBox; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    bool Editable() const { return style_ == Style::Editable; }
    const std::vector<Words>& Items() const { return items_; }
    // Nothing is chosen afterwards; the text of an editable box stays.
    void SetItems(std::vector<Words> items);
    void AddItem(Words item);
    int ListIndex() const { return listIndex_; }
    // -1 for none; anything else outside the list throws InvalidCall.
    void SetListIndex(int index);
    // The chosen entry, or what stands in the edit line.
    const std::string& Text() const { return text_; }
    // In a box that is a list: chooses the entry with this text; one that there is not throws InvalidCall.
    void SetText(const std::string& text);

    std::function<void()> onClick;  // another entry is chosen
    std::function<void()> onChange; // the text of an editable box became another one without a choice
    int columns = 14;

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;
    void Localise(const LocaleStrings& words) override;

  private:
    Style style_;
    std::vector<Words> items_;
    int listIndex_ = -1;
    std::string text_;
};

// A table of texts in rows, one row chosen or none, with a check box in front of each where wished.
class ListView : public Control {
  public:
    struct Column {
        Words caption;
        int width = 1440; // twips
        bool operator==(const Column&) const = default;
    };
    struct RowData {
        std::vector<std::string> cells; // missing ones are empty
        bool checked = false;
        std::string key; // the program's own name of the row
    };

    ListView(Container& parent, std::string name, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::ListView; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    const std::vector<Column>& Columns() const { return columns_; }
    void SetColumns(std::vector<Column> columns);
    bool CheckBoxes() const { return checkBoxes_; }
    void SetCheckBoxes(bool shown);

    const std::vector<RowData>& Rows() const { return rows_; }
    int RowCount() const { return static_cast<int>(rows_.size()); }
    // Row numbers outside the list throw SubscriptOutOfRange. Replacing the rows, or removing the chosen one,
    // chooses none and raises nothing. The host is told of the rows that changed and of no others.
    void SetRows(std::vector<RowData> rows);
    int AddRow(RowData row);
    void InsertRow(int row, RowData data); // in front of that row, or behind the last
    void RemoveRow(int row);
    void SetCell(int row, int column, std::string text);
    void SetChecked(int row, bool checked);
    int SelectedRow() const { return selected_; } // -1 for none
    void SelectRow(int row);

    std::function<void()> onItemClick;        // another row is chosen; the keyboard alone chooses none
    std::function<void(int row)> onItemCheck; // a row's box changed
    int lines = 8;                            // preferred height in rows

    // A row's part of ValueText: its box and its cells.
    std::string RowText(int row) const;
    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;
    void Localise(const LocaleStrings& words) override;

  private:
    RowData& At(int row);
    void RowsChanged(int first, int removed, int inserted);

    std::vector<Column> columns_;
    bool checkBoxes_ = false;
    std::vector<RowData> rows_;
    int selected_ = -1;
};

// A frame with a caption around controls.
class Frame : public Control, public Container {
  public:
    Frame(Container& parent, std::string name, Words caption = {}, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::Frame; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
    bool TakesFocus() const override { return false; }
    Form& OwnerForm() override { return Control::OwnerForm(); }
    Control* AsControl() override { return this; }

    std::function<void()> onClick;

  protected:
    bool Take(const Act& done) override;
};

// Tabs above a pane that holds controls, in more rows than one where they find no room in one. Which controls
// belong to which tab is for onClick to say, by showing and hiding them; a Stack in the layout keeps the pane
// as large as its largest page.
class TabStrip : public Control, public Container {
  public:
    TabStrip(Container& parent, std::string name, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::TabStrip; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
    Form& OwnerForm() override { return Control::OwnerForm(); }
    Control* AsControl() override { return this; }

    const std::vector<Words>& Tabs() const { return tabs_; }
    // The first tab is the selected one afterwards; onClick is not raised.
    void SetTabs(std::vector<Words> captions);
    void SetTabCaption(int tab, Words caption);
    int SelectedTab() const { return selected_; } // from 0; -1 without tabs
    void SelectTab(int tab);
    // How many tabs stand in each row, in their order; worked out by the layout, one row before. The row of
    // the selected tab is shown next to the pane.
    const std::vector<int>& TabRows() const { return rows_; }

    std::function<void()> onClick; // another tab is selected

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;
    void Localise(const LocaleStrings& words) override;

  private:
    friend class LayoutRun;
    void SetTabRows(std::vector<int> rows);
    void ChangedInRows(Aspect aspect);

    std::vector<Words> tabs_;
    std::vector<int> rows_;
    int selected_ = -1;
};

// A number between two limits. Values outside are moved to the nearer limit.
class RangeControl : public Control {
  public:
    using Control::Control;

    int Minimum() const { return minimum_; }
    int Maximum() const { return maximum_; }
    void SetRange(int minimum, int maximum);
    int Value() const { return value_; }
    void SetValue(int value);

    std::function<void()> onChange; // the value became another one and is at rest
    int length = 2400;              // preferred, along its direction, in twips

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;
    virtual void Dragged() {}

  private:
    int minimum_ = 0;
    int maximum_ = 100;
    int value_ = 0;
    int atRest_ = 0; // the value that onChange told last
};

class Slider : public RangeControl {
  public:
    Slider(Container& parent, std::string name, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::Slider; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    std::function<void()>
        onScroll; // the value follows the thumb that a person holds; onChange comes at its end

  protected:
    void Dragged() override { Raise(onScroll); }
};

class ScrollBar : public RangeControl {
  public:
    enum class Direction { Horizontal, Vertical };

    ScrollBar(Container& parent, std::string name, int index = NoIndex,
              Direction direction = Direction::Horizontal);

    ControlKind Kind() const override { return ControlKind::ScrollBar; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    bool Vertical() const { return direction_ == Direction::Vertical; }

    std::function<void()> onScroll; // as a slider's

  protected:
    void Dragged() override { Raise(onScroll); }

  private:
    Direction direction_;
};

// Shows a number; no person changes it.
class ProgressBar : public RangeControl {
  public:
    ProgressBar(Container& parent, std::string name, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::ProgressBar; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
    bool TakesFocus() const override { return false; }

  protected:
    bool Take(const Act& done) override;
};

// A date and a time of day, to the second, edited in one line.
class DatePicker : public Control {
  public:
    DatePicker(Container& parent, std::string name, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::DatePicker; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    const DateTime& Value() const { return value_; }
    // Milliseconds are dropped. Years 1753 to 9999; a moment outside, or none at all, throws InvalidCall.
    void SetValue(DateTime value);

    std::function<void()> onChange;

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;

  private:
    DateTime value_{2000, 1, 1};
};

// A month's sheet with one chosen day.
class MonthView : public Control {
  public:
    MonthView(Container& parent, std::string name, int index = NoIndex);

    ControlKind Kind() const override { return ControlKind::MonthView; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

    const DateTime& Value() const { return value_; } // at midnight
    // As DatePicker; the time of day is dropped.
    void SetValue(DateTime value);

    std::function<void()> onChange;

    std::string ValueText() const override;

  protected:
    bool Take(const Act& done) override;

  private:
    DateTime value_{2000, 1, 1};
};

// A surface of the control's size, in pixels of the screen, that the form paints on.
class PictureBox : public Control {
  public:
    PictureBox(Container& parent, std::string name, int index = NoIndex);
    ~PictureBox() override;

    ControlKind Kind() const override { return ControlKind::PictureBox; }
    void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
    bool TakesFocus() const override { return false; }

    // Size that the layout asks for.
    TwipSize Preferred() const { return preferred_; }
    void SetPreferred(TwipSize size);
    bool HasBorder() const { return border_; }
    void SetBorder(bool shown) { border_ = shown; } // before the first showing

    // Paints the whole box. Called when the box gets its first size or another one, and by Refresh. The
    // surface is black, or in the back colour, at the start.
    std::function<void(Surface&)> onPaint;
    std::function<void()> onClick;
    // Paints anew and has it shown: at once, or with the new arrangement where the form is about to be
    // arranged, so that what changes size and content is painted once. Nothing while the box has no size.
    void Refresh();
    void SetBackColor(std::optional<Color> color) override; // and paints anew
    // What was painted last; null before.
    Surface* Painted() const { return surface_.get(); }

  protected:
    bool Take(const Act& done) override;
    void SetBounds(const TwipRect& bounds) override;
    void Rescaled() override { Refresh(); }

  private:
    void Paint();

    TwipSize preferred_{1440, 1440};
    bool border_ = false;
    bool stale_ = false; // until the coming arrangement
    std::unique_ptr<Surface> surface_;
};

} // namespace quorvane
