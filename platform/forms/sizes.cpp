#include "platform/forms/sizes.h"

#include "platform/forms/controls.h"
#include "platform/forms/form_host.h"

#include <algorithm>

namespace quorvane {

namespace {

// Twips, at the usual 96 dots per inch 15 a pixel.
constexpr TwipSize LeastButton{1125, 345};
constexpr int Thickness = 255; // of a scroll bar or a progress bar
constexpr int SliderThickness = 375;
constexpr int TabPadding = 360; // around the caption of a tab

FontSpec FontOf(const Control& control, FormMetrics& host) {
    return control.Font() ? *control.Font() : host.DefaultFont();
}

// Deals tabs out to rows of at most `room`, in their order: the number in each row.
std::vector<int> FilledRows(const std::vector<int>& widths, int room) {
    std::vector<int> rows;
    int used = 0;
    for (const int width : widths) {
        if (rows.empty() || used + width > room) {
            rows.push_back(0);
            used = 0;
        }
        ++rows.back();
        used += width;
    }
    return rows;
}

int WidestOf(const std::vector<int>& rows, const std::vector<int>& widths) {
    int widest = 0;
    std::size_t tab = 0;
    for (const int count : rows) {
        int width = 0;
        for (int i = 0; i < count; ++i)
            width += widths[tab++];
        widest = std::max(widest, width);
    }
    return widest;
}

std::vector<int> EvenRows(const std::vector<int>& widths, int room) {
    std::vector<int> rows = FilledRows(widths, room);
    int least = widths.empty() ? 0 : *std::max_element(widths.begin(), widths.end());
    int most = WidestOf(rows, widths);
    while (least < most) {
        const int middle = least + (most - least) / 2;
        std::vector<int> tried = FilledRows(widths, middle);
        if (tried.size() > rows.size()) {
            least = middle + 1;
        } else {
            most = WidestOf(tried, widths);
            rows = std::move(tried);
        }
    }
    return rows;
}

std::vector<int> TabWidths(const TabStrip& tabs, FormMetrics& host) {
    std::vector<int> widths;
    const FontSpec font = FontOf(tabs, host);
    for (const Words& caption : tabs.Tabs())
        widths.push_back(host.TextSize(font, PlainCaption(caption.Text()), 0).width + TabPadding);
    return widths;
}

// The room of one row of tabs: what lies above the pane's border.
int TabRowHeight(FormMetrics& host) {
    const Insets chrome = host.Chrome(ControlKind::TabStrip);
    return chrome.top - chrome.bottom;
}

// The size of a control without children.
class Sizer final : public ControlVisitor {
  public:
    explicit Sizer(FormMetrics& host)
        : host_(host) {}

    TwipSize size;

    void Visit(Label& control) override { size = Text(control, control.WrapWidth()) + Around(control); }
    void Visit(TextBox& control) override { VisitText(control); }
    void Visit(RichTextBox& control) override { VisitText(control); }
    void Visit(Button& control) override { size = Larger(Text(control, 0) + Around(control), LeastButton); }
    void Visit(CheckBox& control) override { size = Text(control, 0) + Around(control); }
    void Visit(OptionButton& control) override { size = Text(control, 0) + Around(control); }
    void Visit(ComboBox& control) override {
        size = Letters(control, control.columns, 1);
        const FontSpec font = FontOf(control, host_);
        for (const Words& item : control.Items()) {
            size.width = std::max(size.width, host_.TextSize(font, item.Text(), 0).width);
        }
        size = size + Around(control);
    }
    void Visit(ListView& control) override {
        size = Letters(control, 0, control.lines + 1);
        size.height += size.height / 5; // rows stand further apart than lines of text
        for (const ListView::Column& column : control.Columns())
            size.width += column.width;
        size = size + Around(control);
    }
    void Visit(TabStrip& control) override { size.width = DealTabs(control, host_, TabRoom).width; }
    void Visit(Frame& control) override { size = {Text(control, 0).width + 4 * FramePadding, 0}; }
    void Visit(Slider& control) override { size = {control.length, SliderThickness}; }
    void Visit(ProgressBar& control) override { size = {control.length, Thickness}; }
    void Visit(ScrollBar& control) override {
        size = control.Vertical() ? TwipSize{Thickness, control.length} : TwipSize{control.length, Thickness};
    }
    void Visit(DatePicker& control) override {
        size = host_.TextSize(FontOf(control, host_), "00.00.0000 00:00:00", 0) + Around(control);
    }
    void Visit(MonthView& control) override {
        // Seven days and a column for the week, a title, a line of day names and six weeks.
        const TwipSize cell = Letters(control, 4, 1);
        size = TwipSize{8 * cell.width, 8 * (cell.height + cell.height / 3)} + Around(control);
    }
    void Visit(PictureBox& control) override {
        size = control.Preferred();
        if (control.HasBorder()) size = size + Around(control);
    }

  private:
    Insets Around(const Control& control) { return host_.Chrome(control.Kind()); }
    TwipSize Text(const Control& control, int wrapWidth) {
        return host_.TextSize(FontOf(control, host_), PlainCaption(control.Caption()), wrapWidth);
    }
    TwipSize Letters(const Control& control, int columns, int lines) {
        const TwipSize letter = host_.TextSize(FontOf(control, host_), "0", 0);
        return {letter.width * columns, letter.height * lines};
    }
    void VisitText(const TextControl& control) {
        // Several lines have a page's margins whatever the kind.
        const ControlKind kind = control.MultiLine() ? ControlKind::RichTextBox : ControlKind::TextBox;
        size = Letters(control, control.columns, control.lines) + host_.Chrome(kind);
    }

    FormMetrics& host_;
};

} // namespace

TwipSize PreferredSize(Control& control, FormMetrics& host) {
    Sizer sizer(host);
    control.Accept(sizer);
    return sizer.size;
}

bool GrowsDown(const Control& control) {
    switch (control.Kind()) {
    case ControlKind::TextBox:
        return static_cast<const TextBox&>(control).MultiLine();
    case ControlKind::ScrollBar:
        return static_cast<const ScrollBar&>(control).Vertical();
    case ControlKind::RichTextBox:
    case ControlKind::ListView:
    case ControlKind::TabStrip:
    case ControlKind::Frame:
    case ControlKind::MonthView:
    case ControlKind::PictureBox:
        return true;
    case ControlKind::Label:
    case ControlKind::Button:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::ComboBox:
    case ControlKind::Slider:
    case ControlKind::ProgressBar:
    case ControlKind::DatePicker:
        return false;
    }
    return false;
}

TabRows DealTabs(const TabStrip& tabs, FormMetrics& host, int room) {
    const std::vector<int> widths = TabWidths(tabs, host);
    std::vector<int> counts = EvenRows(widths, room);
    const int width = WidestOf(counts, widths);
    return {std::move(counts), width};
}

Insets ChromeOf(const Control& container, FormMetrics& host, std::size_t tabRows) {
    Insets chrome = host.Chrome(container.Kind());
    if (tabRows > 1) chrome.top += static_cast<int>(tabRows - 1) * TabRowHeight(host);
    return chrome;
}

Insets ChromeOf(const Control& container, FormMetrics& host) {
    const auto* tabs = dynamic_cast<const TabStrip*>(&container);
    return ChromeOf(container, host, tabs ? tabs->TabRows().size() : 0);
}

} // namespace quorvane
