#include "alarms/scheduler.h"

#include "core/run_time_error.h"
#include "core/text.h"

#include <algorithm>
#include <limits>

namespace quorvane {
namespace {

bool HasFiringsLeft(const AlarmRecord& alarm) {
    return !(static_cast<double>(alarm.CurrentExecCount) >= alarm.ExecCount);
}

// Stored texts may carry NULs, which count as blanks. `room` is used only where there are any.
std::string_view Cleaned(const std::string& text, std::string& room) {
    if (text.find('\0') == std::string::npos) return Trim(text);
    room = text;
    std::replace(room.begin(), room.end(), '\0', ' ');
    return Trim(room);
}

// Of the alarm as it is after its actions, which may have taken it away.
void CloseFiring(AlarmRecord& alarm) {
    alarm.LastExecStatus = alarm.CurrentState;
    alarm.CurrentState = 0;
    if (!HasFiringsLeft(alarm)) alarm.Active = false;
}

} // namespace

bool IsLive(const AlarmRecord& alarm) {
    return HasFiringsLeft(alarm) && alarm.Active;
}

void AlarmScheduler::Tick(const Now& now, const CarryOut& carryOut) {
    CriteriaMoment moment(now(), random_);
    std::string room;
    for (std::int32_t number = 1; number <= alarms_.Count(); ++number) {
        AlarmRecord& alarm = alarms_[number];
        if (!IsLive(alarm)) continue;
        if (!At(number).criterion.Test(Cleaned(alarm.Criteria, room), moment, memory_)) continue;
        if (alarm.CurrentExecCount < std::numeric_limits<std::int32_t>::max()) ++alarm.CurrentExecCount;
        PassOver([&] { carryOut(number); });
        PassOver([&] { CloseFiring(alarms_[number]); });
        moment = CriteriaMoment(now(), random_);
    }
}

AlarmScheduler::Watched& AlarmScheduler::At(std::int32_t alarm) {
    const auto at = static_cast<std::size_t>(alarm);
    if (watched_.size() < at) watched_.resize(std::max(at, static_cast<std::size_t>(alarms_.Count())));
    return watched_[at - 1];
}

Foretelling& AlarmScheduler::ForetellingOf(std::int32_t alarm) {
    Watched& watched = At(alarm);
    std::string room;
    const std::string_view criteria = Cleaned(alarms_[alarm].Criteria, room);
    if (!watched.foretelling || watched.foretoldText != criteria) {
        watched.foretoldText = criteria;
        watched.foretelling.emplace(criteria);
        watched.searched = watched.found = 0;
        watched.holds = false;
    }
    return *watched.foretelling;
}

bool AlarmScheduler::CanForetell(std::int32_t alarm) {
    return ForetellingOf(alarm).Possible();
}

std::optional<LocalSecond> AlarmScheduler::NextFiring(LocalSecond from, LocalSecond end) {
    LocalSecond next = end;
    for (std::int32_t number = 1; number <= alarms_.Count() && next > from; ++number) {
        if (IsLive(alarms_[number])) next = std::min(next, NextTrue(number, from, next));
    }
    return next < end ? std::optional(next) : std::nullopt;
}

// The first second at which the alarm's criterion may hold; at `end` or later where it does not before.
LocalSecond AlarmScheduler::NextTrue(std::int32_t alarm, LocalSecond from, LocalSecond end) {
    Foretelling& foretelling = ForetellingOf(alarm);
    if (!foretelling.Possible()) return from;
    Watched& watched = At(alarm);
    const bool known = watched.searched <= from && from <= watched.found;
    if (known && (watched.holds || watched.found >= end)) return watched.found;
    const std::optional<LocalSecond> holds = foretelling.First(true, known ? watched.found : from, end);
    if (!known) watched.searched = from;
    watched.found = holds.value_or(end);
    watched.holds = holds.has_value();
    return watched.found;
}

} // namespace quorvane
