#include "calendar/sky_position.h"

#include <cmath>
#include <cstddef>

namespace quorvane {
namespace {

double Truncate(double value) {
    return std::trunc(value);
}
double Floor(double value) {
    return std::floor(value);
}

template<double (*Whole)(double)>
SplitJulianDay JulianDay(double year, double month, double day, bool gregorian) {
    const double wholeDay = Whole(day);
    double centuryTerm = 0;
    if (gregorian) {
        const double side = month > 9 ? 1 : month < 9 ? -1 : 0;
        const double yearFromMarch = Whole(year + side * Whole(std::abs(month - 9) / 7));
        centuryTerm = -Whole((Whole(yearFromMarch / 100) + 1) * 3 / 4);
    }
    const double calendar = gregorian ? 1 : 0;
    SplitJulianDay result;
    result.whole = -Whole(7 * (Whole((month + 9) / 12) + year) / 4) + Whole(275 * month / 9) + wholeDay +
                   calendar * centuryTerm + 1721027 + 2 * calendar + 367 * year;
    result.fraction = day - wholeDay - 0.5;
    if (result.fraction < 0) {
        result.fraction += 1;
        result.whole -= 1;
    }
    return result;
}

// Of an angle in revolutions, what lies beyond the last whole one, in radians.
double PartTurnTruncating(double revolutions) {
    return (revolutions - std::trunc(revolutions)) * TwoPi;
}
double PartTurn(double revolutions) {
    return (revolutions - std::floor(revolutions)) * TwoPi;
}

// The method yields the sines of right ascension (from the mean longitude) and declination out of the three
// auxiliary sums V, U, W.
double ArcSine(double sine) {
    return std::atan(sine / std::sqrt(1 - sine * sine));
}
SkyPosition FromAuxiliaries(double meanLongitude, double v, double u, double w) {
    SkyPosition position;
    position.rightAscension = meanLongitude + ArcSine(w / std::sqrt(u - v * v));
    position.declination = ArcSine(v / std::sqrt(u));
    return position;
}

// Arguments of the Moon's series, in radians.
struct MoonArguments {
    double anomaly;    // mean anomaly M
    double latitude;   // argument of latitude F
    double elongation; // mean elongation from the Sun E
    double node;       // longitude of the ascending node N
    double sunAnomaly; // mean anomaly of the Sun G
};

// coefficient * sine (or cosine) of the sum of the arguments, each taken as often as its column says.
struct SeriesTerm {
    double coefficient;
    double anomaly, latitude, elongation, node, sunAnomaly;

    double Angle(const MoonArguments& of) const {
        return anomaly * of.anomaly + latitude * of.latitude + elongation * of.elongation + node * of.node +
               sunAnomaly * of.sunAnomaly;
    }
};

// clang-format off
constexpr std::array<SeriesTerm, 13> MoonV = {{ // sines
    //            M   F   E   N   G
    { 0.39558,    0,  1,  0,  1,  0},
    { 0.082,      0,  1,  0,  0,  0},
    { 0.03257,    1, -1,  0, -1,  0},
    { 0.01092,    1,  1,  0,  1,  0},
    { 0.00666,    1, -1,  0,  0,  0},
    {-0.00644,    1,  1, -2,  1,  0},
    {-0.00331,    0,  1, -2,  1,  0},
    {-0.00304,    0,  1, -2,  0,  0},
    {-0.0024,     1, -1, -2, -1,  0},
    { 0.00226,    1,  1,  0,  0,  0},
    {-0.00108,    1,  1, -2,  0,  0},
    {-0.00079,    0,  1,  0, -1,  0},
    { 0.00078,    0,  1,  2,  1,  0},
}};
constexpr std::array<SeriesTerm, 7> MoonU = {{ // cosines, on top of 1
    {-0.10828,    1,  0,  0,  0,  0},
    {-0.0188,     1,  0, -2,  0,  0},
    {-0.01479,    0,  0,  2,  0,  0},
    { 0.00181,    2,  0, -2,  0,  0},
    {-0.00147,    2,  0,  0,  0,  0},
    {-0.00105,    0,  0,  2,  0, -1},
    {-0.00075,    1,  0, -2,  0,  1},
}};
constexpr std::array<SeriesTerm, 14> MoonW = {{ // sines
    { 0.10478,    1,  0,  0,  0,  0},
    {-0.04105,    0,  2,  0,  2,  0},
    {-0.0213,     1,  0, -2,  0,  0},
    {-0.01779,    0,  2,  0,  1,  0},
    { 0.01774,    0,  0,  0,  1,  0},
    { 0.00987,    0,  0,  2,  0,  0},
    {-0.00338,    1, -2,  0, -2,  0},
    {-0.00309,    0,  0,  0,  0,  1},
    {-0.0019,     0,  2,  0,  0,  0},
    {-0.00144,    1,  0,  0,  1,  0},
    {-0.00144,    1, -2,  0, -1,  0},
    {-0.00113,    1,  2,  0,  2,  0},
    {-0.00094,    1,  0, -2,  0,  1},
    {-0.00092,    2,  0, -2,  0,  0},
}};
// clang-format on

template<std::size_t Count>
double SumOfSines(const std::array<SeriesTerm, Count>& series, const MoonArguments& arguments) {
    double sum = 0;
    for (const SeriesTerm& term : series)
        sum += term.coefficient * std::sin(term.Angle(arguments));
    return sum;
}
template<std::size_t Count>
double OnePlusCosines(const std::array<SeriesTerm, Count>& series, const MoonArguments& arguments) {
    double sum = 1;
    for (const SeriesTerm& term : series)
        sum += term.coefficient * std::cos(term.Angle(arguments));
    return sum;
}

} // namespace

SplitJulianDay JulianDayTruncating(double year, double month, double day, bool gregorian) {
    return JulianDay<Truncate>(year, month, day, gregorian);
}

SplitJulianDay JulianDayFlooring(double year, double month, double day, bool gregorian) {
    return JulianDay<Floor>(year, month, day, gregorian);
}

SkyPosition SunPosition(double days, double centuries) {
    const double meanLongitude = PartTurnTruncating(0.779072 + 0.00273790931 * days);
    const double anomaly = PartTurnTruncating(0.993126 + 0.0027377785 * days);
    const double v = 0.39785 * std::sin(meanLongitude) - 0.01 * std::sin(meanLongitude - anomaly) +
                     0.00333 * std::sin(meanLongitude + anomaly) -
                     0.00021 * centuries * std::sin(meanLongitude);
    const double u = 1 - 0.03349 * std::cos(anomaly) - 0.00014 * std::cos(2 * meanLongitude) +
                     0.00008 * std::cos(meanLongitude);
    const double w = -0.0001 - 0.04129 * std::sin(2 * meanLongitude) + 0.03211 * std::sin(anomaly) +
                     0.00104 * std::sin(2 * meanLongitude - anomaly) -
                     0.00035 * std::sin(2 * meanLongitude + anomaly) -
                     0.00008 * centuries * std::sin(anomaly);
    return FromAuxiliaries(meanLongitude, v, u, w);
}

SkyPosition MoonPosition(double days) {
    const double meanLongitude = PartTurn(0.606434 + 0.03660110129 * days);
    MoonArguments arguments;
    arguments.anomaly = PartTurn(0.374897 + 0.03629164709 * days);
    arguments.latitude = PartTurn(0.259091 + 0.0367481952 * days);
    arguments.elongation = PartTurn(0.827362 + 0.03386319198 * days);
    arguments.node = PartTurn(0.347343 - 0.00014709391 * days);
    arguments.sunAnomaly = PartTurn(0.993126 + 0.0027377785 * days);

    const double v = SumOfSines(MoonV, arguments);
    const double u = OnePlusCosines(MoonU, arguments);
    const double w = SumOfSines(MoonW, arguments);
    SkyPosition position = FromAuxiliaries(meanLongitude, v, u, w);
    position.distance = 60.40974 * std::sqrt(u);
    return position;
}

double SiderealTimeAtMidnight(double centuries, double zoneDays, double longitude) {
    constexpr double SecondsPerDay = 86400;
    const double seconds =
        24110.5 + 8640184.813 * centuries + 86636.6 * zoneDays + SecondsPerDay * (longitude / 360);
    const double turns = seconds / SecondsPerDay;
    return (turns - std::trunc(turns)) * 360 * RadiansPerDegree;
}

} // namespace quorvane
