#include "platform/windows/base/clock.h"

#include "platform/windows/base/wide.h"
#include "platform/windows/base/win32.h"

#include <algorithm>

namespace quorvane {
namespace {

SYSTEMTIME SystemTime(const DateTime& time) {
    // The system's calendar begins in 1601; zones have no rules so far back in any case.
    return {static_cast<WORD>(std::clamp(time.year, 1601, 9999)),
            static_cast<WORD>(time.month),
            0,
            static_cast<WORD>(time.day),
            static_cast<WORD>(time.hour),
            static_cast<WORD>(time.minute),
            static_cast<WORD>(time.second),
            static_cast<WORD>(time.millisecond)};
}

// The zone's rules for one year; systems before the dynamic zones know one rule for all.
bool RulesOf(int year, TIME_ZONE_INFORMATION& rules) {
    using ForYear = BOOL(WINAPI*)(USHORT, PDYNAMIC_TIME_ZONE_INFORMATION, LPTIME_ZONE_INFORMATION);
    static const auto forYear = SystemFunction<ForYear>(L"kernel32", "GetTimeZoneInformationForYear");
    const auto wanted = static_cast<USHORT>(std::clamp(year, 1601, 9999));
    if (forYear && forYear(wanted, nullptr, &rules)) return true;
    return GetTimeZoneInformation(&rules) != TIME_ZONE_ID_INVALID;
}

std::int64_t Minutes(const SYSTEMTIME& time) {
    FILETIME file{};
    SystemTimeToFileTime(&time, &file);
    constexpr std::int64_t HundredNanosecondsPerMinute = 600'000'000;
    return ((static_cast<std::int64_t>(file.dwHighDateTime) << 32) | file.dwLowDateTime) /
           HundredNanosecondsPerMinute;
}

} // namespace

DateTime WindowsClock::Now() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

TimeZone WindowsClock::ZoneAt(const DateTime& local) {
    TIME_ZONE_INFORMATION rules{};
    if (!RulesOf(local.year, rules)) return {};
    TimeZone zone{true,
                  static_cast<int>(rules.Bias),
                  static_cast<int>(rules.StandardBias),
                  static_cast<int>(rules.DaylightBias),
                  false,
                  {}};
    const SYSTEMTIME localTime = SystemTime(local);
    SYSTEMTIME universal{};
    if (rules.DaylightDate.wMonth != 0 && TzSpecificLocalTimeToSystemTime(&rules, &localTime, &universal)) {
        const std::int64_t biasInForce = Minutes(universal) - Minutes(localTime);
        zone.daylight =
            biasInForce == zone.bias + zone.daylightBias && zone.daylightBias != zone.standardBias;
    }
    zone.name = Utf8(zone.daylight ? rules.DaylightName : rules.StandardName);
    return zone;
}

std::int64_t WindowsClock::Ticks() {
    return static_cast<std::int64_t>(GetTickCount64());
}

} // namespace quorvane
