#include "calendar/painter.h"
#include "calendar/sky_text.h"
#include "platform/memory/drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <set>

namespace quorvane {
namespace {

struct Printed {
    int x = 0;
    int y = 0;
    std::string text;
    std::string style; // font and colour
};

// November 2026 begins on a Sunday. In the surface's font a character is as wide as its size and a line twice
// as high: the caption's cells measure 10 by 20 pixels, the calendar's 8 by 16, the block's 6 by 12.
class PainterTest : public testing::Test {
  protected:
    PainterTest() {
        record.CaptionFont = {true, false, 10, false, false, "Caption"};
        record.CalendarFont = {false, false, 8, false, false, "Days"};
        record.EphemeredesFont = {false, false, 6, false, false, "Sky"};
        record.Caption_Color = Rgb(1, 1, 1);
        record.Workday_Color = Rgb(2, 2, 2);
        record.Holiday_Color_Minor = Rgb(3, 3, 3);
        record.Holiday_Color = Rgb(4, 4, 4);
        record.CurrentDay_Color = Rgb(5, 5, 5);
        record.WeekNumberColor = Rgb(6, 6, 6);
        record.Week_Caption_Color = Rgb(7, 7, 7);
        record.Calendar_BackGround_Color = Rgb(8, 8, 8);
        record.Sun_Ephemeredes_Color = Rgb(9, 9, 9);
        record.Moon_Ephemeredes_Color = Rgb(10, 10, 10);
        record.Week_Str_Name = "Week #";
        record.Calendar_Position = 1;
        inputs.regional.systemNames.days = {"Mo", "Tu", "Wd", "Th", "Fr", "Sa", "Su"};
        record.Latitude = 54.2;
        record.Longitude = 37.6;
    }

    PixelRect Paint() {
        drawing.log.clear();
        const auto canvas = drawing.CreateSurface({1000, 800});
        const PixelRect block = PaintCalendar(record, drawing, *canvas, inputs);
        printed.clear();
        fills.clear();
        for (const std::string& line : drawing.log) {
            Printed entry;
            if (line.starts_with("fill ")) fills.push_back(line);
            if (std::sscanf(line.c_str(), "text %d,%d", &entry.x, &entry.y) != 2) continue;
            const std::size_t style = line.find('"');
            const std::size_t text = line.find('"', line.find('#', style));
            entry.style = line.substr(style, text - style - 1);
            entry.text = line.substr(text + 1, line.size() - text - 2);
            printed.push_back(entry);
        }
        return block;
    }

    // The first print of the text; fails where there is none.
    Printed Find(const std::string& text) const {
        for (const Printed& print : printed)
            if (print.text == text) return print;
        ADD_FAILURE() << "not printed: " << text;
        return {};
    }
    std::string ColorOf(const std::string& text) const {
        const std::string style = Find(text).style;
        return style.substr(style.find('#'));
    }
    bool WasPrinted(const std::string& text) const {
        return std::any_of(printed.begin(), printed.end(), [&](const Printed& p) { return p.text == text; });
    }

    MemoryDrawing drawing;
    GlobalRecord record;
    LocaleStrings locale;
    CalendarInputs inputs{{2026, 11, 15, 12, 0, 0}, {}, locale, {}};
    std::vector<Printed> printed;
    std::vector<std::string> fills;
};

constexpr const char* Caption = "November, Su 15, 2026"; // 21 characters, 210 pixels

// Without neighbours, marks and block: the header "Mo  Tu  Wd  Th  Fr  Sa  Su " is the widest line with 270
// pixels, and three lines of 20 and six of 16 pixels make 156; 187.2 with the allowance.
TEST_F(PainterTest, NinePositions) {
    struct Case {
        int position, captionX, headerX, y;
    };
    // Header: "Mo; Tu; Wd; Th; Fr; Sa; Su" measures 260 pixels; 100 twips are 6.67 pixels.
    const Case cases[] = {
        {1, 30, 5, 0},      {2, 395, 370, 0}, {3, 760, 728, 0},   {4, 30, 5, 306},    {5, 395, 370, 306},
        {6, 760, 728, 306}, {7, 30, 5, 613},  {8, 395, 370, 613}, {9, 753, 728, 613},
    };
    for (const Case& expected : cases) {
        record.Calendar_Position = expected.position;
        Paint();
        SCOPED_TRACE(expected.position);
        EXPECT_EQ(Find(Caption).x, expected.captionX);
        EXPECT_EQ(Find(Caption).y, expected.y);
        EXPECT_EQ(Find("Mo").x, expected.headerX);
        // The caption's line and an empty one stand above the header; the first is a Sunday.
        EXPECT_NEAR(Find("Mo").y, expected.y + 40, 1);
        EXPECT_EQ(Find("1").x, expected.headerX + 240);
        EXPECT_EQ(Find("2").x, expected.headerX) << "the day after a Sunday begins a line";
        EXPECT_NEAR(Find("2").y - Find("1").y, 16, 1);
        EXPECT_EQ(Find("17").x, expected.headerX + 40);
    }
}

TEST_F(PainterTest, AnAreaIsACanvasOfItsOwn) {
    record.Calendar_Position = 9;
    record.Use_Calendar_Bkgrnd = 1;
    const PixelRect whole = Paint();
    const Printed caption = Find(Caption);
    inputs.area = PixelRect{-50, -40, 1000, 800};
    const PixelRect moved = Paint();
    EXPECT_EQ(moved, (PixelRect{whole.x - 50, whole.y - 40, whole.width, whole.height}));
    EXPECT_EQ(Find(Caption).x, caption.x - 50);
    inputs.area = PixelRect{0, 0, 900, 770};
    EXPECT_EQ(Paint().x, whole.x - 100) << "at the area's right edge";
}

TEST_F(PainterTest, EveryDayIsPaintedOnceInItsColumn) {
    for (int month = 1; month <= 12; ++month) {
        inputs.now = {2024, month, 1};
        Paint();
        SCOPED_TRACE(month);
        std::multiset<int> days;
        for (const Printed& entry : printed) {
            if (entry.style.find("Days") == std::string::npos) continue;
            const int day = std::stoi(entry.text);
            days.insert(day);
            EXPECT_EQ(entry.x, 5 + 40 * (WeekdayMondayFirst(2024, month, day) - 1)) << day;
        }
        EXPECT_EQ(days.size(), static_cast<std::size_t>(DaysInMonth(month, 2024)));
        EXPECT_EQ(std::set<int>(days.begin(), days.end()).size(), days.size());
    }
}

TEST_F(PainterTest, WeekNumbersAndTheirTwoSwitches) {
    record.ShowWeekNumbers = true;
    Paint();
    EXPECT_EQ(Find("Week #45").x, (270 - 80) / 2);
    EXPECT_EQ(ColorOf("Week #45"), "#070707");
    EXPECT_EQ(Find(Caption).x, 30 + 50) << "the caption moves by the mark's width with this switch";
    EXPECT_EQ(Find("Mo").x, 5);
    EXPECT_FALSE(WasPrinted("[45] "));

    record.ShowWeekNumbers = false;
    record.ShowAllWeekNumbers = 1;
    Paint();
    EXPECT_EQ(Find(Caption).x, 30);
    EXPECT_EQ(Find("Mo").x, 5 + 50) << "and the lines below with the other";
    EXPECT_EQ(ColorOf("[46] "), "#060606");
    EXPECT_EQ(ColorOf("[45] "), "#070707") << "the present week";
    // Five characters of the calendar's font in front of the first day of the line.
    EXPECT_EQ(Find("[45] ").x, 55 - 40);
    EXPECT_EQ(Find("[43] ").x, Find("1").x - 40) << "the first line's mark stands at its first day";
    EXPECT_EQ(ColorOf("16"), "#020202") << "the mark's colour does not stay";
    EXPECT_EQ(Find("16").x, 55);
}

TEST_F(PainterTest, BackgroundBox) {
    record.Calendar_Position = 5;
    EXPECT_EQ(Paint(), (PixelRect{365, 306, 270, 188})) << "306.4 to 493.6";
    EXPECT_TRUE(fills.empty());
    record.Use_Calendar_Bkgrnd = 1;
    EXPECT_EQ(Paint(), (PixelRect{365, 306, 270, 188}));
    EXPECT_EQ(fills, std::vector<std::string>{"fill 365,306 270x188 #080808"});
    EXPECT_EQ(Find(Caption).x, 395) << "the cursor goes back";
    record.ShowAllWeekNumbers = 1;
    Paint();
    EXPECT_EQ(fills, std::vector<std::string>{"fill 315,306 320x188 #080808"});
    record.Calendar_Position = 9;
    Paint();
    EXPECT_EQ(fills, std::vector<std::string>{"fill 670,613 320x187 #080808"}) << "a mark and two blanks";
}

TEST_F(PainterTest, TheBlockIsMeasuredWithTheSystemsNames) {
    record.Calendar_Position = 1;
    inputs.regional.systemNames.days = {"lu", "ma", "me", "je", "ve", "sa", "di"};
    EXPECT_EQ(Paint().width, 270);
    EXPECT_TRUE(WasPrinted("Wd") && WasPrinted(Caption)) << "and printed with the program's";
    inputs.regional.systemNames.days[2] = "mercr"; // 3 letters of 10 pixels more
    EXPECT_EQ(Paint().width, 300);
    inputs.regional.systemNames.months[10] = "a month of many letters"; // ", Di 15, 2026" behind it
    EXPECT_EQ(Paint().width, 360);
}

TEST_F(PainterTest, NeighbourMonths) {
    Paint();
    EXPECT_FALSE(WasPrinted("[November, 2026]"));

    record.ShowPreviousMonth = 1;
    record.ShowNextMonth = 1;
    inputs.now = {2026, 12, 31};
    Paint();
    EXPECT_EQ(ColorOf("[November, 2026]"), "#010101");
    EXPECT_EQ(ColorOf("[December, 2026]"), "#070707");
    EXPECT_EQ(ColorOf("[January, 2027]"), "#010101");
    EXPECT_EQ(Find("[November, 2026]").x, (270 - 16 * 8) / 2);
    // Two lines above the header, the header, a heading and six lines of November.
    EXPECT_EQ(Find("[December, 2026]").y, 60 + 7 * 16);

    inputs.now = {2027, 1, 1};
    record.ShowNextMonth = 0;
    Paint();
    EXPECT_TRUE(WasPrinted("[December, 2026]"));
    EXPECT_FALSE(WasPrinted("[February, 2027]"));
}

TEST_F(PainterTest, ColoursOfDays) {
    record.Custom_Days.Add({20, 11, Rgb(0x20, 0, 0)});
    record.Custom_Days.Add({20, 11, Rgb(0x30, 0, 0)});
    record.Custom_Days.Add({18, 12, Rgb(0x40, 0, 0)});
    record.Custom_Days.Add({19, 13, Rgb(0x40, 0, 0)});
    Paint();
    EXPECT_EQ(ColorOf("13"), "#020202");
    EXPECT_EQ(ColorOf("14"), "#030303");
    EXPECT_EQ(ColorOf("22"), "#040404");
    EXPECT_EQ(ColorOf("15"), "#050505");
    EXPECT_EQ(ColorOf("20"), "#300000") << "the last of two custom days stands";
    EXPECT_EQ(ColorOf("18"), "#020202");
    EXPECT_EQ(ColorOf("19"), "#020202");

    record.Custom_Days.Add({15, 11, Rgb(0x60, 0, 2)});
    Paint();
    EXPECT_EQ(ColorOf("15"), "#650507") << "today's colour or the day's own, bit by bit";
}

TEST_F(PainterTest, HeadingsOfTheWeekend) {
    Paint();
    EXPECT_EQ(ColorOf("Fr"), "#010101");
    EXPECT_EQ(ColorOf("Sa"), "#030303");
    EXPECT_EQ(ColorOf("Su"), "#040404");
    record.Holiday_Color = record.Workday_Color;
    Paint();
    EXPECT_EQ(ColorOf("Su"), "#010101");
    EXPECT_EQ(ColorOf("22"), "#020202");

    inputs.regional.iFirstDayOfWeek = 6;
    Paint();
    EXPECT_EQ(Find("Su").x, 5) << "the names roll";
    EXPECT_EQ(Find("2").x, 5) << "and the Mondays stay";
}

TEST_F(PainterTest, SkyBlockStandsBelowTheCalendarInTheMeasuredWidth) {
    record.Calculate_Ephemeredes = 1;
    record.CalculateSunEphemeredes = 1;
    record.CalculateMoonEphemeredes = 1;
    record.Use_Calendar_Bkgrnd = 1;
    inputs.zone = {true, -180, 0, -60, false, "MSK"};
    inputs.now = {2026, 6, 21, 12, 0, 0};
    Paint();
    // June 2026 begins on a Monday: five lines below the header.
    EXPECT_EQ(Find("MSK").y, 60 + 5 * 16);
    EXPECT_EQ(Find("MSK").x, 0);
    EXPECT_EQ(ColorOf("MSK"), "#090909");
    EXPECT_EQ(Find("Sun rise: 3:56, Az: 225.58").y, Find("MSK").y + 12);
    EXPECT_EQ(Find("Visible hours: 17:11").y, Find("MSK").y + 36);
    const Printed& last = printed.back();
    EXPECT_EQ(last.text.substr(0, 5), "Age: ");
    EXPECT_EQ(last.y, Find("MSK").y + 6 * 12) << "no empty line above the Moon";
    // 60 + 80 + seven lines and an empty one of 12: 236 pixels, 283.2 with the allowance.
    EXPECT_EQ(fills, std::vector<std::string>{"fill 0,0 270x283 #080808"});

    record.Calendar_Position = 3;
    record.EphemeredesTextAlign = 2;
    Paint();
    EXPECT_EQ(Find("MSK").x, 1000 - 3 * 6);
    record.EphemeredesTextAlign = 1;
    Paint();
    EXPECT_EQ(Find("MSK").x, 730 + (270 - 18) / 2);

    record.CalculateSunEphemeredes = 0;
    Paint();
    EXPECT_FALSE(WasPrinted("MSK"));
    EXPECT_EQ(ColorOf(printed.back().text), "#0A0A0A");
    inputs.preview = true;
    Paint();
    EXPECT_NE(printed.back().text.substr(0, 5), "Age: ") << "the preview has no block";

    inputs.preview = false;
    record.CalculateSunEphemeredes = 1;
    record.Calendar_Position = 2;
    inputs.zone.name = std::string(60, 'Z');
    EXPECT_EQ(Paint().width, 360) << "the widest line widens the calendar";
    EXPECT_EQ(Find(inputs.zone.name).x, 320);
}

TEST_F(PainterTest, SpecialTextsStandAloneAndEmptyFieldsKeepTheirLabel) {
    record.CalculateSunEphemeredes = 1;
    record.CalculateMoonEphemeredes = 1;
    Ephemerides sky;
    sky.SunRise = "Polar night";
    sky.MoonRise = "7:09";
    sky.MoonRiseAz = "12.5";
    sky.MoonSet = "Today there is no moonset";
    sky.MoonAge = "3";
    const SkyText text = DescribeSky(record, locale, sky);
    ASSERT_EQ(text.sun.size(), 3u) << "no visible hours";
    EXPECT_EQ(text.sun[1].text, "Polar night");
    EXPECT_EQ(text.sun[2].text, "Sun set: , Az: ");
    ASSERT_TRUE(text.moon && text.moon->size() == 3);
    EXPECT_EQ((*text.moon)[0].text, "Moon rise: 7:09, Az: 12.5");
    EXPECT_EQ((*text.moon)[1].text, "Today there is no moonset");

    sky.SunRise = "23:10";
    sky.SunSet = "4:05";
    EXPECT_EQ(DescribeSky(record, locale, sky).sun[3].text, "Visible hours: -20:55");
    sky.SunSet = "24:00";
    EXPECT_EQ(DescribeSky(record, locale, sky).sun.size(), 3u) << "no time of a day";

    locale.SetLoaded(true);
    locale.Set(38, "Восход:");
    locale.Set(40, "азимут");
    locale.Set(47, "Полярная ночь");
    sky.SunRiseAz = "225,58";
    EXPECT_EQ(DescribeSky(record, locale, sky).sun[1].text, "Восход: 23:10, азимут 225,58");
    sky.SunRise = "Полярная ночь";
    EXPECT_EQ(DescribeSky(record, locale, sky).sun[1].text, "Полярная ночь");
}

TEST_F(PainterTest, NothingOfTheSettingsBreaksThePainting) {
    record.Calculate_Ephemeredes = 7;
    record.CalculateSunEphemeredes = record.CalculateMoonEphemeredes = 1;
    record.Latitude = 1e300;
    record.Longitude = -1e300;
    record.Week_Str_Name = std::string(5000, 'W');
    record.ShowWeekNumbers = true;
    for (const int position : {-5, 0, 10, 2147483647}) {
        record.Calendar_Position = position;
        EXPECT_GE(Paint().width, 50000);
    }
    record.CalendarFont.Size = 1e30F;
    record.CaptionFont.Size = -5;
    Paint();
    EXPECT_EQ(Find("15").style.find("\"Days 2160\""), 0u);
    EXPECT_EQ(Find(Caption).style.find("\"Caption 0 bold\""), 0u);
}

} // namespace
} // namespace quorvane
