// A full set of ephemerides against its floor: the same formulas as bare straight-line code, numbers only.

#include "calendar/ephemerides.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace quorvane {
namespace {

constexpr double Turn = 6.28318530717958;
constexpr double Degree = 3.14159265358979 / 180;

double Part(double value) {
    return (value - std::floor(value)) * Turn;
}

void Sun(double d, double t1, double& ra, double& dec) {
    const double l = (0.779072 + 0.00273790931 * d - std::trunc(0.779072 + 0.00273790931 * d)) * Turn;
    const double g = (0.993126 + 0.0027377785 * d - std::trunc(0.993126 + 0.0027377785 * d)) * Turn;
    const double v = 0.39785 * std::sin(l) - 0.01 * std::sin(l - g) + 0.00333 * std::sin(l + g) -
                     0.00021 * t1 * std::sin(l);
    const double u = 1 - 0.03349 * std::cos(g) - 0.00014 * std::cos(2 * l) + 0.00008 * std::cos(l);
    const double w = -0.0001 - 0.04129 * std::sin(2 * l) + 0.03211 * std::sin(g) +
                     0.00104 * std::sin(2 * l - g) - 0.00035 * std::sin(2 * l + g) -
                     0.00008 * t1 * std::sin(g);
    double s = w / std::sqrt(u - v * v);
    ra = l + std::atan(s / std::sqrt(1 - s * s));
    s = v / std::sqrt(u);
    dec = std::atan(s / std::sqrt(1 - s * s));
}

void Moon(double day, double& ra, double& dec, double& dist) {
    const double l = Part(0.606434 + 0.03660110129 * day);
    const double m = Part(0.374897 + 0.03629164709 * day);
    const double f = Part(0.259091 + 0.0367481952 * day);
    const double e = Part(0.827362 + 0.03386319198 * day);
    const double n = Part(0.347343 - 0.00014709391 * day);
    const double g = Part(0.993126 + 0.0027377785 * day);
    double v = 0.39558 * std::sin(f + n);
    v += 0.082 * std::sin(f);
    v += 0.03257 * std::sin(m - f - n);
    v += 0.01092 * std::sin(m + f + n);
    v += 0.00666 * std::sin(m - f);
    v -= 0.00644 * std::sin(m + f - 2 * e + n);
    v -= 0.00331 * std::sin(f - 2 * e + n);
    v -= 0.00304 * std::sin(f - 2 * e);
    v -= 0.0024 * std::sin(m - f - 2 * e - n);
    v += 0.00226 * std::sin(m + f);
    v -= 0.00108 * std::sin(m + f - 2 * e);
    v -= 0.00079 * std::sin(f - n);
    v += 0.00078 * std::sin(f + 2 * e + n);
    double u = 1 - 0.10828 * std::cos(m);
    u -= 0.0188 * std::cos(m - 2 * e);
    u -= 0.01479 * std::cos(2 * e);
    u += 0.00181 * std::cos(2 * m - 2 * e);
    u -= 0.00147 * std::cos(2 * m);
    u -= 0.00105 * std::cos(2 * e - g);
    u -= 0.00075 * std::cos(m - 2 * e + g);
    double w = 0.10478 * std::sin(m);
    w -= 0.04105 * std::sin(2 * f + 2 * n);
    w -= 0.0213 * std::sin(m - 2 * e);
    w -= 0.01779 * std::sin(2 * f + n);
    w += 0.01774 * std::sin(n);
    w += 0.00987 * std::sin(2 * e);
    w -= 0.00338 * std::sin(m - 2 * f - 2 * n);
    w -= 0.00309 * std::sin(g);
    w -= 0.0019 * std::sin(2 * f);
    w -= 0.00144 * std::sin(m + n);
    w -= 0.00144 * std::sin(m - 2 * f - n);
    w -= 0.00113 * std::sin(m + 2 * f + 2 * n);
    w -= 0.00094 * std::sin(m - 2 * e + g);
    w -= 0.00092 * std::sin(2 * m - 2 * e);
    double s = w / std::sqrt(u - v * v);
    ra = l + std::atan(s / std::sqrt(1 - s * s));
    s = v / std::sqrt(u);
    dec = std::atan(s / std::sqrt(1 - s * s));
    dist = 60.40974 * std::sqrt(u);
}

// Hours and azimuths of rise and set, and the Moon's age and distance.
struct Numbers {
    double sun[4];
    double moon[4];
    double age, distance;
};

struct Observer {
    double sinLatitude, cosLatitude, cosZenith;

    double Altitude(double dec, double h) const {
        return sinLatitude * std::sin(dec) + cosLatitude * std::cos(dec) * std::cos(h) - cosZenith;
    }
};

void Event(const Observer& o, int i, double da, double db, double h0, double h2, double v0, double v2,
           double* out) {
    if (!((v0 < 0 && v2 > 0) || (v0 > 0 && v2 < 0))) return;
    const double h1 = (h2 + h0) / 2, dm = (db + da) / 2;
    const double v1 = o.Altitude(dm, h1);
    const double a = 2 * v2 - 4 * v1 + 2 * v0, b = 4 * v1 - 3 * v0 - v2;
    double q = b * b - 4 * a * v0;
    if (q < 0) return;
    q = std::sqrt(q);
    double e = (-b + q) / (2 * a);
    if (e > 1 || e < 0) e = (-b - q) / (2 * a);
    const double h = h0 + e * (h2 - h0);
    const double n = -std::cos(dm) * std::sin(h);
    const double m = o.cosLatitude * std::sin(dm) - o.sinLatitude * std::cos(dm) * std::cos(h);
    double az = std::atan(n / m) / Degree;
    if (m < 0) az += 360;
    if (az < 0) az += 180;
    if (n > 0 && m > 0) az += 180;
    if (az > 360) az -= 360;
    out[v0 < 0 ? 0 : 2] = i + e + 1.0 / 120;
    out[v0 < 0 ? 1 : 3] = az;
}

Numbers StraightLine(int year, int month, int day, double bias, double latitude, double longitude) {
    Numbers out{};
    const double z = bias / 60 / 24, k = 15 * Degree * 1.0027379;
    const double c = std::floor(year + (month > 9 ? 1 : -1) * std::floor(std::abs(month - 9.0) / 7));
    const double a = -std::floor((std::floor(c / 100) + 1) * 3 / 4);
    const double j = -std::floor(7 * (std::floor((month + 9) / 12.0) + year) / 4) +
                     std::floor(275 * month / 9.0) + day + a + 1721027 + 2 + 367.0 * year - 1;
    const double d0 = j - 2451545 + 0.5, t = d0 / 36525;
    double s = (24110.5 + 8640184.813 * t + 86636.6 * z + 86400 * longitude / 360) / 86400;
    const double sidereal = (s - std::trunc(s)) * 360 * Degree;
    const double d = d0 + z;
    Observer o{std::sin(latitude * Degree), std::cos(latitude * Degree), std::cos(90.833 * Degree)};

    double ra0, dec0, ra1, dec1;
    Sun(d, t + 1, ra0, dec0);
    Sun(d + 1, t + 1, ra1, dec1);
    if (ra1 < ra0) ra1 += Turn;
    double ra = ra0, da = dec0, v0 = o.Altitude(da, sidereal - ra);
    for (int i = 0; i < 24; ++i) {
        const double p = (i + 1) / 24.0;
        const double rb = ra0 + p * (ra1 - ra0), db = dec0 + p * (dec1 - dec0);
        const double h0 = sidereal + i * k - ra, h2 = sidereal + i * k + k - rb;
        const double v2 = o.Altitude(db, h2);
        Event(o, i, da, db, h0, h2, v0, v2, out.sun);
        ra = rb, da = db, v0 = v2;
    }

    double ra2, dec2, dist0, dist1, dist2;
    Moon(d, ra0, dec0, dist0);
    Moon(d + 0.5, ra1, dec1, dist1);
    Moon(d + 1, ra2, dec2, dist2);
    if (ra1 <= ra0) ra1 += Turn;
    if (ra2 <= ra1) ra2 += Turn;
    o.cosZenith = std::cos(Degree * (90.567 - 41.685 / dist1));
    ra = ra0, da = dec0, v0 = o.Altitude(da, sidereal - ra);
    for (int i = 0; i < 24; ++i) {
        const double p = (i + 1) / 24.0;
        double rb = ra0 + p * (2 * (ra1 - ra0) + (ra2 - ra1 - (ra1 - ra0)) * (2 * p - 1));
        const double db = dec0 + p * (2 * (dec1 - dec0) + (dec2 - dec1 - (dec1 - dec0)) * (2 * p - 1));
        if (rb < ra) rb += Turn;
        const double h0 = sidereal + i * k - ra, h2 = sidereal + i * k + k - rb;
        const double v2 = o.Altitude(db, h2);
        Event(o, i, da, db, h0, h2, v0, v2, out.moon);
        ra = rb, da = db, v0 = v2;
    }

    const double jd = j + 0.5 + z;
    const double ip = Part((jd - 2451550.1) / 29.530588853), dp = Part((jd - 2451562.2) / 27.55454988);
    out.age = ip / Turn * 29.53;
    out.distance = 60.4 - 3.3 * std::cos(dp) - 0.6 * std::cos(2 * ip - dp) - 0.5 * std::cos(2 * ip);
    return out;
}

void Floor_StraightLine(benchmark::State& state) {
    int day = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(StraightLine(2026, 6, 1 + day++ % 28, -180, 54.2, 37.6));
}
BENCHMARK(Floor_StraightLine);

void Ephemerides_FullSet(benchmark::State& state) {
    TimeZone zone;
    zone.known = true;
    zone.bias = -180;
    zone.name = "MSK";
    const LocaleStrings locale;
    int day = 0;
    for (auto _ : state) {
        Ephemerides out;
        ComputeEphemerides({2026, 6, 1 + day++ % 28}, {54.2, 37.6}, zone, locale, ".", out);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(Ephemerides_FullSet);

} // namespace
} // namespace quorvane
