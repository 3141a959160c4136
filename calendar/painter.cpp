#include "calendar/painter.h"

#include "calendar/calendar_text.h"
#include "config/font_spec.h"
#include "platform/painting/drawing_box.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace quorvane {
namespace {

// All measures are twips.

constexpr double RightMargin = 100;     // of the lines below the caption
constexpr double HeightAllowance = 1.2; // for what the measuring cannot foresee

enum class Column { Left, Centre, Right };
enum class Row { Top, Middle, Bottom };

// Points. Measures of larger letters leave the numbers of the drawing layers.
constexpr float LargestFont = 2160;

FontSpec PrintedFont(const FontRecord& font) {
    FontSpec spec = ToFontSpec(font);
    spec.size = std::clamp(spec.size, 0.0F, LargestFont);
    return spec;
}

struct BlockSize {
    double CalW = 0;
    double CalH = 0;
};

// The width of the widest line and the height of all. The lines are those of the painting, except that months
// and weekdays have the system's names, days are padded to two digits, the weekday names close up and the
// Moon has an empty line above it.
class Measuring {
  public:
    Measuring(DrawingBox& box, const GlobalRecord& record)
        : box_(box)
        , record_(record) {}

    BlockSize MeasureCalendar(const CalendarText& text) {
        box_.Font = PrintedFont(record_.CaptionFont);
        Line(text.shortCaption);
        Line(text.countedWeekLine);
        Line(Header(text));
        box_.Font = PrintedFont(record_.CalendarFont);
        for (const MonthText& month : text.months) {
            if (!month.heading.text.empty()) Line(month.heading.text);
            for (const WeekRow& week : month.weeks)
                Line(Days(week));
        }
        if (text.sky) {
            box_.Font = PrintedFont(record_.EphemeredesFont);
            for (const TextLine& line : text.sky->sun)
                Line(line.text);
            if (text.sky->moon) {
                Line({});
                for (const TextLine& line : *text.sky->moon)
                    Line(line.text);
            }
        }
        return size_;
    }

  private:
    static std::string Header(const CalendarText& text) {
        std::string header;
        for (const std::string& name : text.systemDayNames)
            header += name + "  ";
        header.pop_back();
        return header;
    }

    static std::string Days(const WeekRow& week) {
        std::string days = week.weekMark.text;
        for (const DayText& day : week.days)
            days += (day.day < 10 ? "0" : "") + std::to_string(day.day) + "  ";
        return days;
    }

    void Line(std::string_view text) {
        size_.CalW = std::max(size_.CalW, box_.TextWidth(text));
        size_.CalH += box_.TextHeight();
    }

    DrawingBox& box_;
    const GlobalRecord& record_;
    BlockSize size_;
};

class Painting {
  public:
    Painting(DrawingBox& box, const GlobalRecord& record, const CalendarText& text, BlockSize size)
        : box_(box)
        , record_(record)
        , text_(text)
        , size_(size) {
        // Three by three from the upper left; a number outside stands at the nearer end.
        const int place = std::clamp(record.Calendar_Position, 1, 9) - 1;
        column_ = static_cast<Column>(place % 3);
        row_ = static_cast<Row>(place / 3);
    }

    PixelRect Paint() {
        box_.Font = PrintedFont(record_.CaptionFont);
        weekMarkWidth_ = box_.TextWidth(text_.weekMark);
        box_.CurrentY = Top();
        const PixelRect block = Background();
        Caption();
        WeekLine();
        DayNames();
        box_.Font = PrintedFont(record_.CalendarFont);
        for (std::size_t month = 0; month < text_.months.size(); ++month) {
            if (month > 0) box_.PrintLine();
            Month(text_.months[month]);
        }
        if (text_.sky) {
            box_.PrintLine();
            Sky(*text_.sky);
        }
        return block;
    }

  private:
    bool AllWeekNumbers() const { return record_.ShowAllWeekNumbers > 0; }
    // What the week marks push a line to the right by where the block stands at the left edge.
    double LeftShift() const { return AllWeekNumbers() ? box_.TextWidth(text_.weekMark) : 0; }

    double Top() const {
        const double free = box_.Height() - size_.CalH * HeightAllowance;
        return row_ == Row::Top ? 0 : row_ == Row::Middle ? free / 2 : free;
    }

    // Where a line of the given width begins so that it stands in the middle of the block.
    double CentredX(double width) const {
        switch (column_) {
        case Column::Left:
            return (size_.CalW - width) / 2 + LeftShift();
        case Column::Centre:
            return (box_.Width() - width) / 2;
        case Column::Right:
            break;
        }
        return box_.Width() - RightMargin - (size_.CalW + width) / 2;
    }

    // The caption looks at another setting than the lines below it, and has the margin at the bottom alone.
    double CaptionX(double width) const {
        switch (column_) {
        case Column::Left:
            return (size_.CalW - width) / 2 + (record_.ShowWeekNumbers ? weekMarkWidth_ : 0);
        case Column::Centre:
            return (box_.Width() - width) / 2;
        case Column::Right:
            break;
        }
        const double margin = row_ == Row::Bottom ? RightMargin : 0;
        return box_.Width() - margin - (size_.CalW + width) / 2;
    }

    double BackgroundX() const {
        switch (column_) {
        case Column::Left:
            return 0;
        case Column::Centre:
            return (box_.Width() - size_.CalW) / 2 - (AllWeekNumbers() ? weekMarkWidth_ : 0);
        case Column::Right:
            break;
        }
        return box_.Width() - size_.CalW - (AllWeekNumbers() ? box_.TextWidth(text_.weekMark + " ") : 0);
    }

    PixelRect Background() {
        const double left = BackgroundX();
        const double right = left + size_.CalW + (AllWeekNumbers() ? weekMarkWidth_ : 0);
        const double bottom = box_.CurrentY + size_.CalH * HeightAllowance;
        if (record_.Use_Calendar_Bkgrnd >= 1)
            box_.FillBox(left, box_.CurrentY, right, bottom, record_.Calendar_BackGround_Color);
        return box_.Pixels(left, box_.CurrentY, right, bottom);
    }

    void LineAt(double x, const TextLine& line) {
        box_.CurrentX = x;
        box_.ForeColor = line.color;
        box_.PrintLine(line.text);
    }

    void Caption() { LineAt(CaptionX(box_.TextWidth(text_.caption.text)), text_.caption); }

    void WeekLine() { LineAt(CentredX(box_.TextWidth(text_.weekLine.text)), text_.weekLine); }

    // The columns are measured with another separator than the one printed, which leaves room for the days.
    void DayNames() {
        std::string measured;
        for (std::size_t day = 0; day < text_.dayNames.size(); ++day) {
            ColX_[day] = box_.TextWidth(measured);
            measured += text_.dayNames[day].text;
            if (day + 1 < text_.dayNames.size()) measured += "; ";
        }
        const double HeaderW = box_.TextWidth(measured);
        base_ = CentredX(HeaderW);
        box_.CurrentX = base_;
        for (std::size_t day = 0; day < text_.dayNames.size(); ++day) {
            if (day > 0) box_.Print("  ");
            box_.ForeColor = text_.dayNames[day].color;
            box_.Print(text_.dayNames[day].text);
        }
        box_.PrintLine();
    }

    void Month(const MonthText& month) {
        if (!month.heading.text.empty()) LineAt(CentredX(box_.TextWidth(month.heading.text)), month.heading);
        for (std::size_t week = 0; week < month.weeks.size(); ++week) {
            if (week > 0) box_.PrintLine();
            Week(month.weeks[week]);
        }
    }

    void Week(const WeekRow& week) {
        auto column = static_cast<std::size_t>(week.firstColumn - 1);
        if (!week.weekMark.text.empty()) {
            box_.CurrentX = ColX_[column] + base_ - box_.TextWidth(week.weekMark.text);
            box_.ForeColor = week.weekMark.color;
            box_.Print(week.weekMark.text);
        }
        for (const DayText& day : week.days) {
            box_.CurrentX = ColX_[column++] + base_;
            box_.ForeColor = day.color;
            box_.Print(std::to_string(day.day));
        }
    }

    void Sky(const SkyText& sky) {
        box_.Font = PrintedFont(record_.EphemeredesFont);
        const double left = column_ == Column::Left     ? LeftShift()
                            : column_ == Column::Centre ? (box_.Width() - size_.CalW) / 2
                                                        : box_.Width() - size_.CalW;
        const auto print = [&](const TextLine& line) {
            const double room = size_.CalW - box_.TextWidth(line.text);
            const double indent = record_.EphemeredesTextAlign == 1   ? room / 2
                                  : record_.EphemeredesTextAlign == 2 ? room
                                                                      : 0;
            LineAt(left + indent, line);
        };
        for (const TextLine& line : sky.sun)
            print(line);
        if (!sky.moon) return;
        for (const TextLine& line : *sky.moon)
            print(line);
    }

    DrawingBox& box_;
    const GlobalRecord& record_;
    const CalendarText& text_;
    BlockSize size_;
    Column column_ = Column::Left;
    Row row_ = Row::Top;
    double weekMarkWidth_ = 0;        // in the caption's font
    double base_ = 0;                 // x of the first column
    std::array<double, 7> ColX_ = {}; // from the base
};

} // namespace

PixelRect PaintCalendar(const GlobalRecord& record, const Drawing& drawing, Surface& canvas,
                        const CalendarInputs& inputs) {
    const CalendarText text = DescribeCalendar(record, inputs);
    const PixelSize whole = canvas.Size();
    DrawingBox box(canvas, inputs.area.value_or(PixelRect{0, 0, whole.width, whole.height}),
                   drawing.TwipsPerPixelX(), drawing.TwipsPerPixelY());
    const BlockSize size = Measuring(box, record).MeasureCalendar(text);
    return Painting(box, record, text, size).Paint();
}

} // namespace quorvane
