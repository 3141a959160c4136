#pragma once

#include <array>

namespace quorvane {

// Where Sun and Moon stand, by the low-precision series of T. C. Van Flandern and K. F. Pulkkinen,
// "Low-precision formulae for planetary positions", Astrophysical Journal Supplement 41 (1979), 391:
// about one minute of arc. The constants are those of the method as the program has always had it.

inline constexpr double Pi = 3.14159265358979;
inline constexpr double TwoPi = 2 * Pi;
inline constexpr double RadiansPerDegree = Pi / 180;

inline constexpr double JulianDayOf2000 = 2451545; // 2000 January 1, noon
inline constexpr double DaysPerCentury = 36525;

// A date as whole Julian days and the fraction of a day behind them, from 0 up to 1.
struct SplitJulianDay {
    double whole = 0;
    double fraction = 0;

    double SinceEpoch() const { return (whole - JulianDayOf2000) + fraction; }
};

// `day` may carry the time as its fraction. The two differ in how they cut numbers, towards zero or
// downwards, which shows in years before the common era alone. `gregorian` chooses the calendar of the date.
SplitJulianDay JulianDayTruncating(double year, double month, double day, bool gregorian);
SplitJulianDay JulianDayFlooring(double year, double month, double day, bool gregorian);

// Right ascension and declination in radians; distance in Earth radii, for the Moon alone.
struct SkyPosition {
    double rightAscension = 0;
    double declination = 0;
    double distance = 0;
};

// `days` since JulianDayOf2000, UTC; `centuries` since 1900.
SkyPosition SunPosition(double days, double centuries);
SkyPosition MoonPosition(double days);

// The sidereal time, in radians, at local midnight of the day that began `centuries` after JulianDayOf2000.
// `zoneDays` is added to local time for UTC; `longitude` in degrees, east positive.
double SiderealTimeAtMidnight(double centuries, double zoneDays, double longitude);

} // namespace quorvane
