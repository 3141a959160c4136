#include "calendar/ephemerides.h"

#include "calendar/sky_position.h"
#include "core/locale_ids.h"
#include "core/numbers.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace quorvane {
namespace {

constexpr int HoursPerDay = 24;

// The turn of the sky in one hour, in radians.
constexpr double SiderealHour = 15 * RadiansPerDegree * 1.0027379;

// The observer's sky: the altitude of a point over the line at which the body counts as risen.
class Horizon {
  public:
    Horizon(double latitude, double zenithDistance)
        : sinLatitude_(std::sin(latitude * RadiansPerDegree))
        , cosLatitude_(std::cos(latitude * RadiansPerDegree))
        , cosZenithDistance_(std::cos(zenithDistance))
        , pole_(std::abs(latitude) == 90) {}

    // Grows with the altitude; 0 on the line.
    double Altitude(double declination, double hourAngle) const {
        return sinLatitude_ * std::sin(declination) +
               cosLatitude_ * std::cos(declination) * std::cos(hourAngle) - cosZenithDistance_;
    }

    // In degrees. The steps and their order are the program's own, not the textbook's rule of quadrants: the
    // result counts from the south through the west. Empty where the body stands due east or west.
    std::optional<double> Azimuth(double declination, double hourAngle) const {
        const double east = -std::cos(declination) * std::sin(hourAngle);
        const double north =
            cosLatitude_ * std::sin(declination) - sinLatitude_ * std::cos(declination) * std::cos(hourAngle);
        if (north == 0) return std::nullopt;
        double azimuth = std::atan(east / north) / RadiansPerDegree;
        if (north < 0) azimuth += 360;
        if (azimuth < 0) azimuth += 180;
        if (east > 0 && north > 0) azimuth += 180;
        if (azimuth > 360) azimuth -= 360;
        return azimuth;
    }

    // At a pole the altitude hangs on the declination alone and nothing rises or sets in a day.
    bool Pole() const { return pole_; }

  private:
    double sinLatitude_;
    double cosLatitude_;
    double cosZenithDistance_;
    bool pole_;
};

struct HorizonEvent {
    double hour = 0; // local time
    std::optional<double> azimuth;
};

struct DayEvents {
    std::optional<HorizonEvent> rise; // the last of the day, as `set`
    std::optional<HorizonEvent> set;
    double lastAltitude = 0; // at the end of the day
};

// One end of an hour.
struct HourEnd {
    double declination = 0;
    double hourAngle = 0;
    double altitude = 0;
};

// The moment at which the altitude is 0 between the two ends, by the parabola through the ends and the
// middle; as a fraction of the hour.
std::optional<double> CrossingFraction(const Horizon& horizon, const HourEnd& start, const HourEnd& end) {
    const double middle =
        horizon.Altitude((end.declination + start.declination) / 2, (end.hourAngle + start.hourAngle) / 2);
    const double a = 2 * end.altitude - 4 * middle + 2 * start.altitude;
    const double b = 4 * middle - 3 * start.altitude - end.altitude;
    const double discriminant = b * b - 4 * a * start.altitude;
    if (discriminant < 0 || a == 0) return std::nullopt;
    const double root = std::sqrt(discriminant);
    const double fraction = (-b + root) / (2 * a);
    return fraction > 1 || fraction < 0 ? (-b - root) / (2 * a) : fraction;
}

// Walks the day hour by hour. `positionAt(part, before)` is the body's position when `part` of the day has
// gone by, `before` being the one an hour earlier.
template<typename PositionAt>
DayEvents FindEvents(const Horizon& horizon, double siderealMidnight, SkyPosition position,
                     const PositionAt& positionAt) {
    DayEvents events;
    HourEnd start;
    start.declination = position.declination;
    start.altitude = horizon.Altitude(start.declination, siderealMidnight - position.rightAscension);
    for (int hour = 0; hour < HoursPerDay; ++hour) {
        const double siderealStart = siderealMidnight + hour * SiderealHour;
        start.hourAngle = siderealStart - position.rightAscension;
        position = positionAt((hour + 1.0) / HoursPerDay, position);
        HourEnd end;
        end.declination = position.declination;
        end.hourAngle = siderealStart + SiderealHour - position.rightAscension;
        end.altitude = horizon.Altitude(end.declination, end.hourAngle);

        const bool rising = start.altitude < 0 && end.altitude > 0;
        const bool setting = start.altitude > 0 && end.altitude < 0;
        if ((rising || setting) && !horizon.Pole()) {
            if (const auto fraction = CrossingFraction(horizon, start, end)) {
                HorizonEvent event;
                event.hour = hour + *fraction;
                event.azimuth =
                    horizon.Azimuth((end.declination + start.declination) / 2,
                                    start.hourAngle + *fraction * (end.hourAngle - start.hourAngle));
                (rising ? events.rise : events.set) = event;
            }
        }
        start = end;
    }
    events.lastAltitude = start.altitude;
    return events;
}

// "H:MM", rounded to the minute by half a minute added. 24 is not wrapped.
std::string TimeText(double hour) {
    const double rounded = hour + 1.0 / 120;
    const double hours = std::trunc(rounded);
    const auto minutes = static_cast<int>((rounded - hours) * 60);
    std::string text = std::to_string(static_cast<std::int64_t>(hours));
    text += minutes < 10 ? ":0" : ":";
    text += std::to_string(minutes);
    return text;
}

void ShowEvent(const std::optional<HorizonEvent>& event, std::string_view decimal, std::string& time,
               std::string& azimuth) {
    if (!event) return;
    time = TimeText(event->hour);
    if (event->azimuth) azimuth = LocaleNumberText(std::floor(100 * *event->azimuth + 0.5) / 100, decimal);
}

// A moment's days since 2000 and what follows from them for the place.
struct DayFrame {
    double days = 0; // UTC of local midnight
    double centuries = 0;
    double siderealMidnight = 0;

    DayFrame(const SplitJulianDay& midnight, double zoneDays, double longitude) {
        const double localDays = midnight.SinceEpoch();
        centuries = localDays / DaysPerCentury;
        siderealMidnight = SiderealTimeAtMidnight(centuries, zoneDays, longitude);
        days = localDays + zoneDays;
    }
};

void ShowSun(const DateTime& now, const Place& place, double zoneDays, const SkyTexts& texts,
             std::string_view decimal, Ephemerides& out) {
    const DayFrame frame(JulianDayTruncating(now.year, now.month, now.day, now.year >= 1583), zoneDays,
                         place.Longitude);
    const double centuriesSince1900 = frame.centuries + 1;
    const SkyPosition first = SunPosition(frame.days, centuriesSince1900);
    SkyPosition last = SunPosition(frame.days + 1, centuriesSince1900);
    if (last.rightAscension < first.rightAscension) last.rightAscension += TwoPi;

    const auto positionAt = [&](double part, const SkyPosition&) {
        SkyPosition position;
        position.rightAscension = first.rightAscension + part * (last.rightAscension - first.rightAscension);
        position.declination = first.declination + part * (last.declination - first.declination);
        return position;
    };

    const Horizon horizon(place.Latitude, 90.833 * RadiansPerDegree);
    const DayEvents events = FindEvents(horizon, frame.siderealMidnight, first, positionAt);
    ShowEvent(events.rise, decimal, out.SunRise, out.SunRiseAz);
    ShowEvent(events.set, decimal, out.SunSet, out.SunSetAz);
    if (!events.rise && !events.set) {
        if (events.lastAltitude < 0) out.SunRise = texts.polarNight;
        if (events.lastAltitude > 0) out.SunSet = texts.polarDay;
    } else if (!events.rise) {
        out.SunRise = texts.noSunRise;
    } else if (!events.set) {
        out.SunSet = texts.noSunSet;
    }
}

// The value at `part` of a day out of those at its start, its middle and its end.
double Interpolate(double part, double start, double middle, double end) {
    const double a = middle - start;
    const double b = end - middle - a;
    return start + part * (2 * a + b * (2 * part - 1));
}

void ShowMoon(const DateTime& now, const Place& place, double zoneDays, const SkyTexts& texts,
              std::string_view decimal, Ephemerides& out) {
    // The year of the calendar's reform counts as Gregorian here, other than for the Sun.
    const DayFrame frame(JulianDayFlooring(now.year, now.month, now.day, now.year >= 1582), zoneDays,
                         place.Longitude);
    const SkyPosition start = MoonPosition(frame.days);
    SkyPosition middle = MoonPosition(frame.days + 0.5);
    SkyPosition end = MoonPosition(frame.days + 1);
    if (middle.rightAscension <= start.rightAscension) middle.rightAscension += TwoPi;
    if (end.rightAscension <= middle.rightAscension) end.rightAscension += TwoPi;

    const auto positionAt = [&](double part, const SkyPosition& before) {
        SkyPosition position;
        position.rightAscension =
            Interpolate(part, start.rightAscension, middle.rightAscension, end.rightAscension);
        position.declination = Interpolate(part, start.declination, middle.declination, end.declination);
        if (position.rightAscension < before.rightAscension) position.rightAscension += TwoPi;
        return position;
    };
    const Horizon horizon(place.Latitude, RadiansPerDegree * (90.567 - 41.685 / middle.distance));
    const DayEvents events = FindEvents(horizon, frame.siderealMidnight, start, positionAt);
    ShowEvent(events.rise, decimal, out.MoonRise, out.MoonRiseAz);
    ShowEvent(events.set, decimal, out.MoonSet, out.MoonSetAz);
    if (!events.rise && !events.set) {
        // The side of the horizon is that of one hour after the moment.
        const double hours = now.hour + now.minute / 60.0 + now.second / 3600.0;
        const SkyPosition position = positionAt((hours + 1) / HoursPerDay, start);
        const double hourAngle =
            frame.siderealMidnight + hours * SiderealHour + SiderealHour - position.rightAscension;
        const double altitude = horizon.Altitude(position.declination, hourAngle);
        if (altitude < 0) out.MoonRise = texts.moonDown;
        if (altitude > 0) out.MoonSet = texts.moonUp;
    } else if (!events.rise) {
        out.MoonRise = texts.noMoonRise;
    } else if (!events.set) {
        out.MoonSet = texts.noMoonSet;
    }
}

// Age and distance by mean periods alone: the synodic month from a new moon, the anomalistic month from a
// perigee.
void ShowMoonAge(const DateTime& now, double biasMinutes, const LocaleStrings& locale,
                 std::string_view decimal, Ephemerides& out) {
    constexpr double FullTurn = 6.28318530717958;
    constexpr double EarthDiameter = 12756; // kilometres
    const double date = JulianDayOf(biasMinutes, now).date;
    const auto phase = [date](double epoch, double period) {
        const double periods = (date - epoch) / period;
        return periods - std::floor(periods);
    };
    const double lunation = phase(2451550.1, 29.530588853);
    const double age = lunation * 29.53;
    const double elongation = lunation * FullTurn;
    const double anomaly = phase(2451562.2, 27.55454988) * FullTurn;
    const double earthRadii = 60.4 - 3.3 * std::cos(anomaly) - 0.6 * std::cos(2 * elongation - anomaly) -
                              0.5 * std::cos(2 * elongation);
    const double thousandKilometres = std::floor(std::floor(earthRadii * 10) * EarthDiameter / 20 / 100) / 10;

    out.MoonAge = LocaleNumberText(std::floor(10 * age) / 10, decimal);
    out.MoonAge.append("; ").append(locale.TextOr(locale_id::Distance, "dist:")).append(" ");
    out.MoonAge.append(LocaleNumberText(thousandKilometres, decimal));
    out.MoonAge.append(" ").append(locale.TextOr(locale_id::ThousandKilometres, "Kkm"));
}

// Systems hand the name over in a field padded by zero characters.
std::string ZoneName(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '\0', ' ');
    return std::string(Trim(text));
}

} // namespace

SkyTexts::SkyTexts(const LocaleStrings& locale)
    : polarNight(locale.TextOr(locale_id::PolarNight, "Polar night"))
    , polarDay(locale.TextOr(locale_id::PolarDay, "Polar day"))
    , noSunRise(locale.TextOr(locale_id::NoSunRise, "Today there is no sunrise"))
    , noSunSet(locale.TextOr(locale_id::NoSunSet, "Today there is no sunset"))
    , noMoonRise(locale.TextOr(locale_id::NoMoonRise, "Today there is no moonrise"))
    , noMoonSet(locale.TextOr(locale_id::NoMoonSet, "Today there is no moonset"))
    , moonDown(locale.TextOr(locale_id::MoonDown, "Moon down all day"))
    , moonUp(locale.TextOr(locale_id::MoonUp, "Moon up all day")) {}

int BiasInForce(const TimeZone& zone) {
    if (!zone.known) return 0;
    return zone.daylight ? zone.bias + zone.daylightBias : zone.bias;
}

JulianDate JulianDayOf(double biasMinutes, const DateTime& local) {
    const double day =
        local.day + local.hour / 24.0 + local.minute / 60.0 / 24.0 + local.second / 3600.0 / 24.0;
    const SplitJulianDay split = JulianDayFlooring(local.year, local.month, day, local.year >= 1583);
    JulianDate result;
    result.wholeDay = split.whole;
    result.date = split.whole + biasMinutes / 24 / 60 + split.fraction;
    result.centuries = (result.date - JulianDayOf2000) / DaysPerCentury;
    return result;
}

void ComputeEphemerides(const DateTime& now, const Place& place, const TimeZone& zone,
                        const LocaleStrings& locale, std::string_view decimal, Ephemerides& out) {
    const SkyTexts texts(locale);
    const double biasMinutes = BiasInForce(zone);
    const double zoneDays = biasMinutes / 60 / 24;
    if (zone.known) {
        out.TimeZoneName = ZoneName(zone.name);
    } else {
        out.TimeZoneName = locale.TextOr(locale_id::UnknownZone, "Unknown...");
    }
    ShowSun(now, place, zoneDays, texts, decimal, out);
    ShowMoon(now, place, zoneDays, texts, decimal, out);
    ShowMoonAge(now, biasMinutes, locale, decimal, out);
}

} // namespace quorvane
