#include "calendar/sky_text.h"

#include "core/locale_ids.h"

#include <string_view>
#include <utility>

namespace quorvane {
namespace {

// "H:MM" as minutes of the day; empty for anything that is no time of a day, the special texts for one.
std::optional<int> MinutesOfDay(std::string_view time) {
    const std::size_t colon = time.find(':');
    if (colon < 1 || colon > 2 || time.size() != colon + 3) return std::nullopt;
    int number[2] = {0, 0};
    for (std::size_t i = 0; i < time.size(); ++i) {
        if (i == colon) continue;
        if (time[i] < '0' || time[i] > '9') return std::nullopt;
        int& part = number[i > colon ? 1 : 0];
        part = part * 10 + (time[i] - '0');
    }
    if (number[0] > 23 || number[1] > 59) return std::nullopt;
    return number[0] * 60 + number[1];
}

// The hours are cut downwards, so that the minutes never carry a sign.
std::string DurationText(int minutes) {
    const int hours = (minutes >= 0 ? minutes : minutes - 59) / 60;
    const int rest = minutes - hours * 60;
    return std::to_string(hours) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

class LineWriter {
  public:
    LineWriter(const LocaleStrings& locale, Color color)
        : locale_(locale)
        , color_(color) {}

    void Line(std::string text) { lines_.push_back({std::move(text), color_}); }

    void Labelled(int id, std::string_view builtIn, std::string_view value) {
        Line(Label(id, builtIn, value));
    }

    // A time with its azimuth. A special text, which tells why there is no time, stands alone.
    void Event(int id, std::string_view builtIn, const std::string& time, const std::string& azimuth,
               std::string_view specialA, std::string_view specialB) {
        if (time == specialA || time == specialB) return Line(time);
        Line(Label(id, builtIn, time) + ", " + Label(locale_id::Azimuth, "Az:", azimuth));
    }

    std::vector<TextLine> Take() { return std::move(lines_); }

  private:
    std::string Label(int id, std::string_view builtIn, std::string_view value) const {
        return std::string(locale_.TextOr(id, builtIn)).append(" ").append(value);
    }

    const LocaleStrings& locale_;
    Color color_;
    std::vector<TextLine> lines_;
};

} // namespace

SkyText DescribeSky(const GlobalRecord& record, const CalendarInputs& inputs) {
    Ephemerides sky;
    ComputeEphemerides(inputs.now, {record.Latitude, record.Longitude}, inputs.zone, inputs.locale,
                       inputs.regional.sDecimal, sky);
    return DescribeSky(record, inputs.locale, sky);
}

SkyText DescribeSky(const GlobalRecord& record, const LocaleStrings& locale, const Ephemerides& sky) {
    const SkyTexts special(locale);
    SkyText text;
    if (record.CalculateSunEphemeredes > 0) {
        LineWriter sun(locale, record.Sun_Ephemeredes_Color);
        sun.Line(sky.TimeZoneName);
        sun.Event(locale_id::SunRise, "Sun rise:", sky.SunRise, sky.SunRiseAz, special.noSunRise,
                  special.polarNight);
        sun.Event(locale_id::SunSet, "Sun set:", sky.SunSet, sky.SunSetAz, special.noSunSet,
                  special.polarDay);
        const auto rise = MinutesOfDay(sky.SunRise);
        const auto set = MinutesOfDay(sky.SunSet);
        if (rise && set) sun.Labelled(locale_id::VisibleHours, "Visible hours:", DurationText(*set - *rise));
        text.sun = sun.Take();
    }
    if (record.CalculateMoonEphemeredes > 0) {
        LineWriter moon(locale, record.Moon_Ephemeredes_Color);
        moon.Event(locale_id::MoonRise, "Moon rise:", sky.MoonRise, sky.MoonRiseAz, special.noMoonRise,
                   special.moonDown);
        moon.Event(locale_id::MoonSet, "Moon set:", sky.MoonSet, sky.MoonSetAz, special.noMoonSet,
                   special.moonUp);
        moon.Labelled(locale_id::Age, "Age:", sky.MoonAge);
        text.moon = moon.Take();
    }
    return text;
}

} // namespace quorvane
