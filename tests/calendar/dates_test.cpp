#include "calendar/dates.h"
#include "config/registry.h"
#include "platform/memory/system.h"
#include "platform/shared/memory_store.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(Dates, FirstMondayAgreesWithTheCalendarAndEarlierYearsFollowTheRulesArithmetic) {
    EXPECT_EQ(GetFirstMondayOfYear(2026), 5);
    // Worked by hand: 1899 has b = 0, c = 0 + 0, w = 6, so k + 3 + 3 + 6 = 14.
    EXPECT_EQ(GetFirstMondayOfYear(1899), 2);
    // 1800: b = -99, c = 24 + 0, w = 6 - (1 + 24) mod 7 = 2, so 3 + k + 5 = 14.
    EXPECT_EQ(GetFirstMondayOfYear(1800), 6);
    for (int year = -3000; year <= 2400; ++year) {
        const int monday = GetFirstMondayOfYear(year);
        EXPECT_TRUE(monday >= 1 && monday <= 7) << year;
        EXPECT_TRUE(year < 1900 || WeekdayMondayFirst(year, 1, monday) == 1) << year;
    }
}

TEST(Dates, WeekNumbersNeverFallWithinAYear) {
    for (int year = 1850; year <= 2100; ++year) {
        const int firstMonday = GetFirstMondayOfYear(year);
        int previous = 0;
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= DaysInMonth(month, year); ++day) {
                const std::string text = GetWeekNumber(day, month, year);
                ASSERT_EQ(text.size(), 2u);
                const bool ofYearBefore = month == 1 && day < firstMonday && firstMonday > 4;
                if (ofYearBefore) {
                    EXPECT_EQ(std::stoi(text), GetLastWeekNumberOfYear(year - 1));
                    continue;
                }
                const int week = std::stoi(text);
                EXPECT_TRUE(week == previous || week == previous + 1) << year << "-" << month << "-" << day;
                previous = week;
            }
        }
        EXPECT_EQ(previous, GetLastWeekNumberOfYear(year));
        EXPECT_TRUE(previous >= 52 && previous <= 54) << year;
    }
}

TEST(Dates, DaysBeforeTheFirstMonday) {
    EXPECT_EQ(GetWeekNumber(1, 1, 2026), std::to_string(GetLastWeekNumberOfYear(2025)));
    EXPECT_EQ(GetWeekNumber(4, 1, 2026), "52");
    EXPECT_EQ(GetWeekNumber(5, 1, 2026), "01");
    ASSERT_EQ(GetFirstMondayOfYear(2018), 1);
    EXPECT_EQ(GetWeekNumber(1, 1, 2018), "01");
    ASSERT_EQ(GetFirstMondayOfYear(2023), 2);
    EXPECT_EQ(GetWeekNumber(1, 1, 2023), "01") << "a short week in front counts from a Monday on the 2nd";
    EXPECT_EQ(GetWeekNumber(2, 1, 2023), "02");
    EXPECT_EQ(GetWeekNumber(31, 12, 2024), "53") << "December never rolls over";
    EXPECT_EQ(GetWeekNumber(31, 12, 2012), "54") << "366 days from a Sunday on";
}

TEST(Dates, NamesComeFromTheLocaleAndFallBackOnTheBuiltInWords) {
    LocaleStrings locale;
    RegionalValues regional;
    EXPECT_EQ(MonthName(5, false, locale), "May");
    EXPECT_EQ(MonthName(9, true, locale), "Sep");
    EXPECT_EQ(MonthName(0, true, locale), "");
    EXPECT_EQ(MonthName(13, false, locale), "");

    locale.Set(92, "janv.");
    locale.Set(73, "janvier");
    locale.Set(85 + 2, "me");
    locale.Set(104 + 6, "  ");
    EXPECT_EQ(MonthName(1, true, locale), "Jan") << "not before the locale counts as loaded";
    locale.SetLoaded(true);
    EXPECT_EQ(MonthName(1, true, locale), "janv.");
    EXPECT_EQ(MonthName(1, false, locale), "janvier");
    EXPECT_EQ(MonthName(2, false, locale), "February");
    EXPECT_EQ(DayName(3, true, 0, locale, regional), "me");
    EXPECT_EQ(DayName(7, false, 0, locale, regional), "Sunday") << "blanks are no name";
}

TEST(Dates, DayNamesRollWithTheFirstDay) {
    const LocaleStrings locale;
    RegionalValues sundayFirst;
    sundayFirst.iFirstDayOfWeek = 6;
    EXPECT_EQ(DayName(1, true, SystemFirstDay, locale, sundayFirst), "Su");
    EXPECT_EQ(DayName(1, true, 0, locale, sundayFirst), "Mo");
    EXPECT_EQ(DayName(3, true, 0, locale, sundayFirst), "Wd");
    EXPECT_EQ(DayName(0, true, 0, locale, sundayFirst), "Tu") << "the index folds by its distance from 1";
    EXPECT_EQ(DayName(-6, true, -1, locale, sundayFirst), "Tu");
    const DateTime sunday{2026, 11, 15};
    EXPECT_EQ(SystemWeekday(sunday, sundayFirst), 1);
    for (int first = 0; first < 7; ++first) {
        RegionalValues regional;
        regional.iFirstDayOfWeek = first;
        EXPECT_EQ(DayName(SystemWeekday(sunday, regional), true, SystemFirstDay, locale, regional), "Su");
    }
}

TEST(Dates, DateStringsFollowTheShortDate) {
    RegionalValues regional;
    EXPECT_EQ(BuildDateStr(1, 2, 2007, regional), "1.2.2007");
    regional.sShortDate = "dd.MM.yyyy";
    EXPECT_EQ(BuildDateStr(1, 2, 2007, regional), "1.2.2007");
    regional.sShortDate = "M/d/yy";
    EXPECT_EQ(BuildDateStr(11, 12, 2007, regional), "12/11/2007");
    regional.sShortDate = "yyyy-MM-dd";
    EXPECT_EQ(BuildDateStr(3, 4, 476, regional), "476-4-3");
}

TEST(Dates, RegionalValuesComeFromTheStoreAndTheSystem) {
    MemoryStore store;
    CallLog calls;
    MemorySystem system(calls);
    system.dateNames.days[6] = "Вс";
    const RegionalValues none = ReadRegionalValues(store, system);
    EXPECT_EQ(none.systemNames.days[6], "Вс");
    EXPECT_TRUE(none.iFirstDayOfWeek == 0 && !none.sShortDate && none.sDecimal == ".");

    const auto write = [&](const char* name, const char* text) {
        RegWriteValue(store, "", Hive::CurrentUser, "Control Panel\\International", key_access::All, name,
                      text);
    };
    write("iFirstDayOfWeek", "6");
    write("sShortDate", "d/M/yy");
    write("sDecimal", ",");
    const RegionalValues values = ReadRegionalValues(store, system);
    EXPECT_TRUE(values.iFirstDayOfWeek == 6 && values.sShortDate == "d/M/yy" && values.sDecimal == ",");
    for (const char* nonsense : {"", "Sunday", "1E999", "1E300"}) {
        write("iFirstDayOfWeek", nonsense);
        EXPECT_LT(ReadRegionalValues(store, system).iFirstDayOfWeek, 7) << nonsense;
    }
}

TEST(Dates, WeeksSinceNewYearCountTheMondays) {
    EXPECT_EQ(WeeksSinceNewYear({2026, 1, 4}), 0);
    EXPECT_EQ(WeeksSinceNewYear({2026, 1, 5}), 1);
    EXPECT_EQ(WeeksSinceNewYear({2018, 1, 1}), 0) << "New Year's own Monday does not count";
    EXPECT_EQ(WeeksSinceNewYear({2018, 1, 8}), 1);
    EXPECT_EQ(WeeksSinceNewYear({2024, 12, 31}), 52);
}

} // namespace
} // namespace quorvane
