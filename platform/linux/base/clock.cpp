#include "platform/linux/base/clock.h"

#include "platform/headless.h"

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace quorvane {

namespace {

constexpr std::time_t SecondsOfWeek = 7 * 86400;
constexpr const char* ZoneFolder = "/usr/share/zoneinfo";
constexpr int WeeksSearched = 53; // a zone that has both kinds of time shows both within a year

int BiasMinutes(const std::tm& time) {
    return static_cast<int>(-time.tm_gmtoff / 60);
}

std::optional<std::tm> LocalTime(std::time_t moment) {
    std::tm time{};
    return localtime_r(&moment, &time) ? std::optional(time) : std::nullopt;
}

// The bias of the other kind of time, daylight or standard, where the zone has it nearest to `moment`.
std::optional<int> NearestBias(std::time_t moment, bool daylight) {
    for (int week = 1; week <= WeeksSearched; ++week) {
        for (const std::time_t distance : {-week * SecondsOfWeek, week * SecondsOfWeek}) {
            const auto time = LocalTime(moment + distance);
            if (time && (time->tm_isdst > 0) == daylight) return BiasMinutes(*time);
        }
    }
    return std::nullopt;
}

bool HasZoneFile(const std::string& name) {
    const char* folder = std::getenv("TZDIR");
    const std::string path =
        name.starts_with('/') ? name : (folder && *folder ? folder : ZoneFolder) + ("/" + name);
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// Whether a text begins as a rule does: a name of three letters at least or one in angle brackets, and behind
// it the hours from UTC.
bool IsZoneRule(std::string_view text) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    std::size_t end = 0;
    if (text.starts_with('<')) {
        end = text.find('>');
        if (end == std::string_view::npos) return false;
        ++end;
    } else {
        while (end < text.size() && isLetter(text[end]))
            ++end;
        if (end < 3) return false;
    }
    if (end < text.size() && (text[end] == '+' || text[end] == '-')) ++end;
    return end < text.size() && text[end] >= '0' && text[end] <= '9';
}

// Whether TZ names a zone that there is. The C library takes any other text for UTC under that name.
bool KnowsZone() {
    const char* variable = std::getenv("TZ");
    std::string name = variable ? variable : "";
    if (name.starts_with(':')) name.erase(0, 1);
    return name.empty() || HasZoneFile(name) || IsZoneRule(name);
}

} // namespace

DateTime LinuxClock::Now() {
    std::timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tzset();
    const auto time = LocalTime(now.tv_sec);
    if (!time) {
        return {};
    }
    return {time->tm_year + 1900,
            time->tm_mon + 1,
            time->tm_mday,
            time->tm_hour,
            time->tm_min,
            time->tm_sec < 60 ? time->tm_sec : 59,
            static_cast<int>(now.tv_nsec / 1'000'000)};
}

TimeZone LinuxClock::ZoneAt(const DateTime& local) {
    tzset();
    std::tm wanted{};
    wanted.tm_year = local.year - 1900;
    wanted.tm_mon = local.month - 1;
    wanted.tm_mday = local.day;
    wanted.tm_hour = local.hour;
    wanted.tm_min = local.minute;
    wanted.tm_sec = local.second;
    wanted.tm_isdst = -1;
    const std::time_t moment = mktime(&wanted);
    const auto time = LocalTime(moment);
    if (!time || !KnowsZone()) return {};
    TimeZone zone;
    zone.known = true;
    zone.daylight = time->tm_isdst > 0;
    zone.name = time->tm_zone ? time->tm_zone : "";
    const int inForce = BiasMinutes(*time);
    const std::optional<int> other = NearestBias(moment, !zone.daylight);
    if (zone.daylight) {
        zone.bias = other.value_or(inForce + 60);
        zone.daylightBias = inForce - zone.bias;
    } else {
        zone.bias = inForce;
        zone.daylightBias = other ? *other - inForce : 0;
    }
    return zone;
}

std::int64_t LinuxClock::Ticks() {
    std::timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

std::unique_ptr<Clock> CreateClock() {
    return std::make_unique<LinuxClock>();
}

} // namespace quorvane
