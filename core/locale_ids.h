#pragma once

// Numbers in the locale's table of words that are no caption: names, parts of painted texts, messages. A
// caption bears its number where it is declared. Numbers below LocaleStrings::FirstLateId are fixed by the
// locale files that people have; the others follow each other without gaps, captions among them.
namespace quorvane::locale_id {

inline constexpr int SunRise = 38;
inline constexpr int SunSet = 39;
inline constexpr int Azimuth = 40;
inline constexpr int MoonRise = 41;
inline constexpr int MoonSet = 42;
inline constexpr int Age = 43;
inline constexpr int Distance = 44;
inline constexpr int UnknownZone = 45;
inline constexpr int PolarNight = 47;
inline constexpr int PolarDay = 48;
inline constexpr int NoSunRise = 49;
inline constexpr int NoSunSet = 50;
inline constexpr int NoMoonRise = 51;
inline constexpr int NoMoonSet = 52;
inline constexpr int MoonDown = 53;
inline constexpr int MoonUp = 54;
inline constexpr int ThousandKilometres = 55;
inline constexpr int VisibleHours = 56;

inline constexpr int FullMonth = 72;  // and the month, 1 to 12
inline constexpr int ShortDay = 85;   // and the day of the week, Monday 0
inline constexpr int ShortMonth = 91; // and the month
inline constexpr int FullDay = 104;   // and the day of the week

inline constexpr int Last = 135; // of all captions and of the numbers here

} // namespace quorvane::locale_id
