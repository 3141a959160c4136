#include "platform/forms/layout.h"

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/form_host.h"
#include "platform/forms/sizes.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace quorvane {

namespace {

// Twips, at the usual 96 dots per inch 15 a pixel.
constexpr int Spacing = 90; // between neighbours

// Whether a piece takes height that is left over.
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
    Insets Frame(const Control& container, std::size_t tabRows) {
        Insets around = ChromeOf(container, host_, tabRows);
        around.left += FramePadding;
        around.top += FramePadding;
        around.right += FramePadding;
        around.bottom += FramePadding;
        return around;
    }

    TwipSize MeasureControl(Control& control) {
        if (const auto known = sizes_.find(&control); known != sizes_.end()) return known->second;
        TwipSize size = PreferredSize(control, host_);
        if (const auto* container = dynamic_cast<Container*>(&control)) {
            const TwipSize inner = Measure(container->Layout());
            std::size_t tabRows = 0;
            if (const auto* tabs = dynamic_cast<const TabStrip*>(&control)) {
                const int room = std::max((inner + Frame(control, 1)).width, TabRoom);
                const TabRows rows = DealTabs(*tabs, host_, room);
                tabRows = rows.counts.size();
                size.width = rows.width;
            }
            size = Larger(size, inner + Frame(control, tabRows));
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
        std::size_t tabRows = 0;
        if (auto* tabs = dynamic_cast<TabStrip*>(&control)) {
            tabs->SetTabRows(DealTabs(*tabs, host_, area.width).counts);
            tabRows = tabs->TabRows().size();
        }
        control.SetBounds(
            {mirrored_ ? width_ - area.x - area.width : area.x, area.y, area.width, area.height});
        const auto* container = dynamic_cast<Container*>(&control);
        if (!container) return;
        const TwipSize taken = TwipSize{} + Frame(control, tabRows);
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

} // namespace quorvane
