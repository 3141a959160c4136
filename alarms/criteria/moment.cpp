#include "alarms/criteria/moment.h"

namespace quorvane {
namespace {

struct BitField {
    unsigned shift;
    unsigned width;
};

// Where a variable's value lies in the packed word, in the order of SystemVariable.
constexpr std::array<BitField, 8> PackedFields{{
    {32, 32}, // year
    {28, 4},  // month
    {23, 5},  // day
    {20, 3},  // weekday
    {15, 5},  // hour
    {9, 6},   // minute
    {3, 6},   // second
    {0, 3},   // week of the month
}};

constexpr std::uint64_t Bits(BitField field) {
    return ((std::uint64_t{1} << field.width) - 1) << field.shift;
}

} // namespace

CriteriaMoment::CriteriaMoment(const DateTime& now, Random& random)
    : packed_(0)
    , secondsOfDay_(SecondsOfDay(now))
    , random_(&random) {
    const int weekday = WeekdayMondayFirst(now.year, now.month, now.day);
    const int firstWeekday = WeekdayMondayFirst(now.year, now.month, 1);
    const int week = 1 + (firstWeekday - weekday + now.day - 1) / 7; // a multiple of 7, never negative
    const std::array<int, 8> values{now.year, now.month,  now.day,    weekday,
                                    now.hour, now.minute, now.second, week};
    for (std::size_t at = 0; at < values.size(); ++at) {
        values_[at] = values[at];
        packed_ |=
            (static_cast<std::uint64_t>(values[at]) << PackedFields[at].shift) & Bits(PackedFields[at]);
    }
}

double CriteriaMoment::NextRandom() const {
    random_->Seed(secondsOfDay_);
    return static_cast<double>(random_->Next());
}

std::uint64_t CriteriaMoment::PackedBits(SystemVariable variable) {
    return variable == SystemVariable::Random ? 0 : Bits(PackedFields[static_cast<std::size_t>(variable)]);
}

} // namespace quorvane
