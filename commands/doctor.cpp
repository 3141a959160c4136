#include "commands/doctor.h"

#include "alarms/criteria/compiler.h"
#include "alarms/scheduler.h"
#include "core/text.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/shared/memory_store.h"
#include "platform/shared/seeded_random.h"
#include "platform/system.h"

#include <cmath>
#include <optional>
#include <set>

namespace quorvane::commands {
namespace {

using State = Finding::State;

constexpr LocalSecond TenYears = 10LL * 366 * SecondsPerDay;
constexpr int MinutesOfAZone = 60;
constexpr double DegreesOfAZone = 15;

// One line for all that is well, and one for each source that is not.
void ExamineSources(Place& place, std::vector<Finding>& findings) {
    int good = 0;
    std::int32_t number = 0;
    for (const WallpaperSource& source : place.record.WallpaperSources) {
        ++number;
        if (!source.Active) continue;
        FolderListing listing;
        if (place.context.files.List(source.Path, "*.*", listing)) {
            ++good;
        } else {
            findings.push_back(
                {"sources", State::Missing,
                 "source " + std::to_string(number) + ", \"" + source.Path + "\", cannot be read",
                 "mount it or allow it to be read, or: quorvanectl sources remove " +
                     std::to_string(number)});
        }
    }
    if (good > 0) {
        findings.push_back({"sources", State::Ok,
                            std::to_string(good) + (good == 1 ? " folder is" : " folders are") + " scanned"});
    } else if (findings.empty()) {
        findings.push_back({"sources", State::Missing, "no folder of pictures is scanned",
                            "quorvanectl sources add ~/Pictures"});
    }
}

// What may keep an active alarm from firing as its person thinks; nothing where all is well.
std::optional<Finding> ExamineAlarm(const AlarmRecord& alarm, const std::string& name, Place& place) {
    const CompiledCriterion compiled = CompileCriteria(alarm.CriteriaText);
    if (compiled.refused || alarm.Criteria.empty()) {
        const std::string why = compiled.refused && !compiled.message.empty()
                                    ? Replace(std::string(Trim(compiled.message)), "\r\n", " ")
                                    : "its compiled form is empty";
        return Finding{"alarms", State::Missing, name + " does not compile: " + why,
                       "write its criterion anew"};
    }
    if (!IsLive(alarm))
        return Finding{"alarms", State::Limited, name + " has fired as often as it may", "set it back to 0"};
    OneBased<AlarmRecord> alone;
    alone.Add(alarm);
    SeededRandom random;
    AlarmScheduler scheduler(alone, random);
    const LocalSecond now = LocalSecondOf(place.context.clock.Now());
    if (scheduler.CanForetell(1) && !scheduler.NextFiring(now, now + TenYears))
        return Finding{"alarms", State::Limited, name + " does not fire in the next ten years",
                       "look at its criterion: quorvanectl criteria next"};
    const bool endless = alarm.ExecCount >= alarm_count::Infinite;
    if (endless && alarm.Criteria.find("9;ss") == std::string::npos)
        return Finding{"alarms", State::Limited,
                       name + " fires twice in each second in which its criterion holds, without end",
                       "add a test of the second, as in hh=12&nn=0&ss=0, or give it a count"};
    return std::nullopt;
}

void ExamineAlarms(Place& place, std::vector<Finding>& findings) {
    int active = 0;
    int good = 0;
    std::int32_t number = 0;
    for (const AlarmRecord& alarm : place.record.AlarmRecords) {
        ++number;
        if (!alarm.Active) continue;
        ++active;
        const std::string name = "alarm " + std::to_string(number) + ", \"" + alarm.Name + "\",";
        if (auto finding = ExamineAlarm(alarm, name, place)) {
            findings.push_back(std::move(*finding));
        } else {
            ++good;
        }
    }
    if (active == 0) findings.push_back({"alarms", State::Ok, "none is active"});
    if (good > 0)
        findings.push_back(
            {"alarms", State::Ok,
             std::to_string(good) + " of " + std::to_string(active) + " active alarms are sound"});
}

// Nobody has told the place where it is still the one that the settings begin with, unless the clock of the
// zone goes with it.
void ExaminePlace(Place& place, std::vector<Finding>& findings) {
    const GlobalRecord& record = place.record;
    if (!record.Calculate_Ephemeredes) return;
    const SettingsContext& given = place.context;
    MemoryStore nothing;
    Settings fresh;
    ReadRecord(fresh, {nothing, given.files, given.clock, given.screen});
    const TimeZone zone = given.clock.ZoneAt(given.clock.Now());
    const double zoneHours = -static_cast<double>(zone.bias + zone.standardBias) / MinutesOfAZone;
    const bool isDefault = record.Latitude == fresh.Latitude && record.Longitude == fresh.Longitude;
    const bool fits = !zone.known || std::abs(zoneHours - record.Longitude / DegreesOfAZone) <= 1;
    if (isDefault && !fits) {
        findings.push_back(
            {"place", State::Limited,
             "Sun and Moon are told for the place that the settings begin with, and the clock "
             "is that of another zone",
             "quorvanectl settings set 'General\\Latitude' 50.1 and 'General\\Longitude' 14.4"});
    } else {
        findings.push_back({"place", State::Ok, "Sun and Moon are told for your place"});
    }
}

} // namespace

Expected ExpectedOf(const GlobalRecord& record) {
    std::set<std::string> fonts;
    for (const FontRecord* font : {&record.CaptionFont, &record.CalendarFont, &record.EphemeredesFont}) {
        if (!font->FontName.empty()) fonts.insert(font->FontName);
    }
    return {record.Wallpaper,
            std::string(WallpaperStyle(record.WallpaperPosition)),
            record.AutoStartApplication != 0,
            {fonts.begin(), fonts.end()}};
}

std::vector<Finding> ExamineRecord(Place& place) {
    std::vector<Finding> findings;
    ExamineSources(place, findings);
    findings.push_back({"formats", State::Ok, "can be read: " + place.system.PicturePatterns()});
    ExamineAlarms(place, findings);
    ExaminePlace(place, findings);
    return findings;
}

} // namespace quorvane::commands
