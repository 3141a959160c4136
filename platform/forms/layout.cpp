#include "platform/forms/layout.h"

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/form_host.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace quorvane {

namespace {

// Twips, at the usual 96 dots per inch 15 a pixel.
constexpr int Spacing = 90;       // between neighbours
constexpr int FramePadding = 105; // between a frame and what it holds
constexpr TwipSize LeastButton{1125, 345};
constexpr int Thickness = 255; // of a scroll bar or a progress bar
constexpr int SliderThickness = 375;
constexpr int TabPadding = 360; // around the caption of a tab
constexpr int TabRoom = 9000;   // what a strip takes for its tabs before it begins another row

TwipSize operator+(const TwipSize& size, const Insets& around) {
    return {size.width + around.left + around.right, size.height + around.top + around.bottom};
}

TwipSize Larger(const TwipSize& a, const TwipSize& b) {
    return {std::max(a.width, b.width), std::max(a.height, b.height)};
}

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

// As few rows as `room` allows, the widest of them as narrow as it can be.
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
    void Visit(TabStrip& control) override {
        const std::vector<int> widths = TabWidths(control, host_);
        size.width = WidestOf(EvenRows(widths, TabRoom), widths);
    }
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

// Whether a control takes height that is left over.
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

bool GrowsDown(const LayoutItem& item) {
    if (item.kind == LayoutItem::Kind::Control) return GrowsDown(*item.control);
    return item.kind != LayoutItem::Kind::Nothing;
}

} // namespace

// One working out of a form's places. Sizes are asked of the host once for each control.
class LayoutRun {
  public:
    // `width` is that of the form's inner area; of no matter where nothing is arranged.
    LayoutRun(const Form& form, FormMetrics& host, int width = 0)
        : host_(host)
        , mirrored_(form.RightToLeft())
        , width_(width) {}

    TwipSize Measure(const LayoutItem& item) {
        switch (item.kind) {
        case LayoutItem::Kind::Nothing:
            return item.least;
        case LayoutItem::Kind::Control:
            return Larger(MeasureControl(*item.control), item.least);
        case LayoutItem::Kind::Row:
            return Larger(MeasureLine(item, true), item.least);
        case LayoutItem::Kind::Column:
            return Larger(MeasureLine(item, false), item.least);
        case LayoutItem::Kind::Grid:
            return Larger(MeasureGrid(item), item.least);
        case LayoutItem::Kind::Stack:
            return Larger(MeasureStack(item), item.least);
        case LayoutItem::Kind::Free:
            return Larger(MeasureFree(item), item.least);
        }
        return {};
    }

    void Arrange(const LayoutItem& item, const TwipRect& area) {
        switch (item.kind) {
        case LayoutItem::Kind::Nothing:
            break;
        case LayoutItem::Kind::Control:
            ArrangeControl(*item.control, area);
            break;
        case LayoutItem::Kind::Row:
            ArrangeLine(item, area, true);
            break;
        case LayoutItem::Kind::Column:
            ArrangeLine(item, area, false);
            break;
        case LayoutItem::Kind::Grid:
            ArrangeGrid(item, area);
            break;
        case LayoutItem::Kind::Free:
            ArrangeFree(item, area);
            break;
        case LayoutItem::Kind::Stack: {
            const Counting counting(*this);
            for (const LayoutItem& piece : item.items)
                Arrange(piece, area);
            break;
        }
        }
    }

  private:
    // Inside a stack hidden controls count.
    struct Counting {
        explicit Counting(LayoutRun& owner)
            : run(owner) {
            ++run.stacks_;
        }
        ~Counting() { --run.stacks_; }
        LayoutRun& run;
    };

    bool HasRoom(const LayoutItem& item) const {
        switch (item.kind) {
        case LayoutItem::Kind::Nothing:
            return true;
        case LayoutItem::Kind::Control:
            return stacks_ > 0 || item.control->Visible();
        case LayoutItem::Kind::Stack:
            return true;
        default:
            break;
        }
        return std::any_of(item.items.begin(), item.items.end(), [this](const LayoutItem& piece) {
            return piece.kind != LayoutItem::Kind::Nothing && HasRoom(piece);
        });
    }

    // The pieces that have room, and the gaps between them: none beside a gap of the layout's own.
    struct Line {
        std::vector<const LayoutItem*> pieces;
        std::vector<int> gaps; // in front of each piece
        int gapSum = 0;
    };
    Line LineOf(const LayoutItem& box) const {
        Line line;
        for (const LayoutItem& piece : box.items) {
            if (!HasRoom(piece)) continue;
            const bool apart = !line.pieces.empty() && piece.kind != LayoutItem::Kind::Nothing &&
                               line.pieces.back()->kind != LayoutItem::Kind::Nothing;
            line.pieces.push_back(&piece);
            line.gaps.push_back(apart ? Spacing : 0);
            line.gapSum += line.gaps.back();
        }
        return line;
    }

    static int Along(const TwipSize& size, bool across) { return across ? size.width : size.height; }

    // The pieces' sizes along the line.
    std::vector<int> LengthsOf(const Line& line, bool across, bool equal) {
        std::vector<int> lengths;
        int longest = 0;
        for (const LayoutItem* piece : line.pieces) {
            lengths.push_back(Along(Measure(*piece), across));
            if (piece->kind != LayoutItem::Kind::Nothing) longest = std::max(longest, lengths.back());
        }
        if (!equal) return lengths;
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            if (line.pieces[i]->kind != LayoutItem::Kind::Nothing) lengths[i] = longest;
        }
        return lengths;
    }

    TwipSize MeasureLine(const LayoutItem& box, bool across) {
        const Line line = LineOf(box);
        int along = line.gapSum;
        for (const int length : LengthsOf(line, across, box.equal))
            along += length;
        int beside = 0;
        for (const LayoutItem* piece : line.pieces)
            beside = std::max(beside, Along(Measure(*piece), !across));
        return across ? TwipSize{along, beside} : TwipSize{beside, along};
    }

    // Deals `room` out to the pieces with a share.
    static void Deal(std::vector<int>& lengths, const std::vector<int>& shares, int room) {
        int shareSum = 0;
        for (const int share : shares)
            shareSum += share;
        for (std::size_t i = 0; i < lengths.size() && room > 0 && shareSum > 0; ++i) {
            const int part = static_cast<int>(static_cast<long long>(room) * shares[i] / shareSum);
            lengths[i] += part;
            room -= part;
            shareSum -= shares[i];
        }
    }

    void ArrangeLine(const LayoutItem& box, const TwipRect& area, bool across) {
        const Line line = LineOf(box);
        std::vector<int> lengths = LengthsOf(line, across, box.equal);
        std::vector<int> shares;
        int used = line.gapSum;
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            shares.push_back(line.pieces[i]->stretch);
            used += lengths[i];
        }
        Deal(lengths, shares, (across ? area.width : area.height) - used);
        int at = across ? area.x : area.y;
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            at += line.gaps[i];
            Arrange(*line.pieces[i], across ? TwipRect{at, area.y, lengths[i], area.height}
                                            : TwipRect{area.x, at, area.width, lengths[i]});
            at += lengths[i];
        }
    }

    struct GridSizes {
        std::vector<int> widths, heights;
        std::vector<int> columnShares, rowShares;
    };
    GridSizes SizesOf(const LayoutItem& grid) {
        const auto columns = static_cast<std::size_t>(std::max(grid.columns, 1));
        const std::size_t rows = (grid.items.size() + columns - 1) / columns;
        GridSizes sizes{std::vector<int>(columns), std::vector<int>(rows), std::vector<int>(columns),
                        std::vector<int>(rows)};
        for (std::size_t i = 0; i < grid.items.size(); ++i) {
            const LayoutItem& piece = grid.items[i];
            if (i < columns) sizes.columnShares[i] = piece.stretch;
            if (!HasRoom(piece)) continue;
            const TwipSize size = Measure(piece);
            sizes.widths[i % columns] = std::max(sizes.widths[i % columns], size.width);
            sizes.heights[i / columns] = std::max(sizes.heights[i / columns], size.height);
            if (piece.stretch > 0 && GrowsDown(piece)) sizes.rowShares[i / columns] = piece.stretch;
        }
        return sizes;
    }

    // The lengths with the gaps between those that are not empty.
    static int SumOf(const std::vector<int>& lengths) {
        int sum = 0;
        int full = 0;
        for (const int length : lengths) {
            sum += length;
            full += length > 0;
        }
        return sum + std::max(full - 1, 0) * Spacing;
    }

    TwipSize MeasureGrid(const LayoutItem& grid) {
        const GridSizes sizes = SizesOf(grid);
        return {SumOf(sizes.widths), SumOf(sizes.heights)};
    }

    void ArrangeGrid(const LayoutItem& grid, const TwipRect& area) {
        GridSizes sizes = SizesOf(grid);
        Deal(sizes.widths, sizes.columnShares, area.width - SumOf(sizes.widths));
        Deal(sizes.heights, sizes.rowShares, area.height - SumOf(sizes.heights));
        const std::size_t columns = sizes.widths.size();
        int x = area.x;
        int y = area.y;
        for (std::size_t i = 0; i < grid.items.size(); ++i) {
            const std::size_t column = i % columns;
            const std::size_t row = i / columns;
            if (column == 0) x = area.x;
            if (HasRoom(grid.items[i])) {
                Arrange(grid.items[i], {x, y, sizes.widths[column], sizes.heights[row]});
            }
            if (sizes.widths[column] > 0) x += sizes.widths[column] + Spacing;
            if (column + 1 == columns && sizes.heights[row] > 0) y += sizes.heights[row] + Spacing;
        }
    }

    TwipSize MeasureStack(const LayoutItem& stack) {
        const Counting counting(*this);
        TwipSize size;
        for (const LayoutItem& piece : stack.items)
            size = Larger(size, Measure(piece));
        return size;
    }

    TwipSize SizeInFree(const LayoutItem& piece) {
        const TwipSize size = Measure(piece);
        return {piece.at.width > 0 ? piece.at.width : size.width,
                piece.at.height > 0 ? piece.at.height : size.height};
    }

    TwipSize MeasureFree(const LayoutItem& box) {
        TwipSize size;
        for (const LayoutItem& piece : box.items) {
            if (!HasRoom(piece)) continue;
            const TwipSize own = SizeInFree(piece);
            size = Larger(size, {piece.at.x + own.width, piece.at.y + own.height});
        }
        return size;
    }

    // Hidden pieces too: one that is shown later stands where it belongs.
    void ArrangeFree(const LayoutItem& box, const TwipRect& area) {
        for (const LayoutItem& piece : box.items) {
            const TwipSize size = SizeInFree(piece);
            const TwipRect place{area.x + piece.at.x, area.y + piece.at.y, size.width, size.height};
            if (piece.kind == LayoutItem::Kind::Control) {
                PlaceControl(*piece.control, place);
            } else {
                Arrange(piece, place);
            }
        }
    }

    // What a container draws around its children, and the padding inside that.
    Insets Frame(const Control& container, const std::vector<int>& tabRows) {
        Insets around = host_.Chrome(container.Kind());
        if (tabRows.size() > 1) around.top += static_cast<int>(tabRows.size() - 1) * TabRowHeight(host_);
        around.left += FramePadding;
        around.top += FramePadding;
        around.right += FramePadding;
        around.bottom += FramePadding;
        return around;
    }

    TwipSize MeasureControl(Control& control) {
        if (const auto known = sizes_.find(&control); known != sizes_.end()) return known->second;
        Sizer sizer(host_);
        control.Accept(sizer);
        TwipSize size = sizer.size;
        if (const auto* container = dynamic_cast<Container*>(&control)) {
            const TwipSize inner = Measure(container->Layout());
            std::vector<int> rows;
            if (const auto* tabs = dynamic_cast<const TabStrip*>(&control)) {
                const std::vector<int> widths = TabWidths(*tabs, host_);
                rows = EvenRows(widths, std::max((inner + Frame(control, {})).width, TabRoom));
                size.width = WidestOf(rows, widths);
            }
            size = Larger(size, inner + Frame(control, rows));
        }
        sizes_[&control] = size;
        return size;
    }

    void ArrangeControl(Control& control, TwipRect area) {
        if (!GrowsDown(control)) {
            const int height = std::min(MeasureControl(control).height, area.height);
            area.y += (area.height - height) / 2;
            area.height = height;
        }
        PlaceControl(control, area);
    }

    void PlaceControl(Control& control, const TwipRect& area) {
        std::vector<int> rows;
        if (auto* tabs = dynamic_cast<TabStrip*>(&control)) {
            rows = EvenRows(TabWidths(*tabs, host_), area.width);
            tabs->SetTabRows(rows);
        }
        control.SetBounds(
            {mirrored_ ? width_ - area.x - area.width : area.x, area.y, area.width, area.height});
        const auto* container = dynamic_cast<Container*>(&control);
        if (!container) return;
        const TwipSize taken = TwipSize{} + Frame(control, rows);
        const TwipRect inner{FramePadding, FramePadding, area.width - taken.width,
                             area.height - taken.height};
        const int outside = std::exchange(width_, inner.width + 2 * FramePadding);
        Arrange(container->Layout(), inner);
        width_ = outside;
    }

    FormMetrics& host_;
    bool mirrored_;
    int width_; // of the inner area that is being arranged
    int stacks_ = 0;
    std::unordered_map<const Control*, TwipSize> sizes_;
};

LayoutItem Place(Control& control) {
    return LayoutItem(control);
}

static LayoutItem Box(LayoutItem::Kind kind, std::vector<LayoutItem> items) {
    LayoutItem box;
    box.kind = kind;
    box.items = std::move(items);
    return box;
}

LayoutItem Row(std::vector<LayoutItem> items) {
    return Box(LayoutItem::Kind::Row, std::move(items));
}

LayoutItem Column(std::vector<LayoutItem> items) {
    return Box(LayoutItem::Kind::Column, std::move(items));
}

LayoutItem Grid(int columns, std::vector<LayoutItem> items) {
    LayoutItem grid = Box(LayoutItem::Kind::Grid, std::move(items));
    grid.columns = columns;
    return grid;
}

LayoutItem Stack(std::vector<LayoutItem> items) {
    return Box(LayoutItem::Kind::Stack, std::move(items));
}

LayoutItem Free(std::vector<LayoutItem> items) {
    return Box(LayoutItem::Kind::Free, std::move(items));
}

LayoutItem Gap(int twips) {
    LayoutItem gap;
    gap.least = {twips, twips};
    return gap;
}

LayoutItem Stretch() {
    return Gap(0).Stretched();
}

TwipSize MeasureForm(Form& form, FormMetrics& host) {
    const LayoutItem& layout = form.Layout();
    if (layout.kind == LayoutItem::Kind::Nothing) return {};
    const TwipSize inner = LayoutRun(form, host).Measure(layout);
    return {inner.width + 2 * form.Margin(), inner.height + 2 * form.Margin()};
}

void ArrangeForm(Form& form, FormMetrics& host, TwipSize size) {
    const int margin = form.Margin();
    LayoutRun(form, host, size.width)
        .Arrange(form.Layout(), {margin, margin, size.width - 2 * margin, size.height - 2 * margin});
}

Insets ChromeOf(const Control& container, FormMetrics& host) {
    Insets chrome = host.Chrome(container.Kind());
    const auto* tabs = dynamic_cast<const TabStrip*>(&container);
    if (tabs && tabs->TabRows().size() > 1)
        chrome.top += static_cast<int>(tabs->TabRows().size() - 1) * TabRowHeight(host);
    return chrome;
}

TwipSize PreferredSize(Control& control, FormMetrics& host) {
    Sizer sizer(host);
    control.Accept(sizer);
    return sizer.size;
}

} // namespace quorvane
