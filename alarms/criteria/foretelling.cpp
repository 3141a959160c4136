#include "alarms/criteria/foretelling.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr int YearsAhead = 10;
constexpr std::size_t MostRemembered = 1'000'000; // spans of one level; enough for every hour of ten years

// Nothing foretold reads a random number.
class NoRandom final : public Random {
  public:
    void Seed(double) override {}
    float Next() override { return 0; }
};

std::uint64_t BitsOf(std::initializer_list<SystemVariable> variables) {
    std::uint64_t bits = 0;
    for (const SystemVariable variable : variables)
        bits |= CriteriaMoment::PackedBits(variable);
    return bits;
}

bool HangsOnTheMomentAlone(const std::vector<CriteriaInstruction>& order) {
    return std::none_of(order.begin(), order.end(), [](const CriteriaInstruction& instruction) {
        return instruction.operation == Operation::Recall || (instruction.operation == Operation::Variable &&
                                                              instruction.variable == SystemVariable::Random);
    });
}

} // namespace

Foretelling::Foretelling(std::string_view compiled)
    : Foretelling(EvaluationOrder(compiled)) {}

Foretelling::Foretelling(const std::vector<CriteriaInstruction>& order)
    : program_(order)
    , bounds_(order)
    , possible_(HangsOnTheMomentAlone(order)) {}

std::optional<LocalSecond> Foretelling::First(bool wanted, LocalSecond from, LocalSecond end) {
    return FirstIn(Year, from, end, {wanted, from, end});
}

std::vector<DateTime> Foretelling::Turns(const DateTime& from, std::size_t count) {
    std::vector<DateTime> turns;
    DateTime last = from;
    last.year += YearsAhead;
    const LocalSecond end = LocalSecondOf(last) + 1;
    std::optional<LocalSecond> at = First(false, LocalSecondOf(from), end);
    while (at && turns.size() < count) {
        at = First(true, *at, end);
        if (!at) break;
        turns.push_back(DateTimeOf(*at));
        at = First(false, *at, end);
    }
    return turns;
}

// The units of a level that touch the time from `begin` on and before `end`.
std::optional<LocalSecond> Foretelling::FirstIn(Level level, LocalSecond begin, LocalSecond end,
                                                const Search& search) {
    for (LocalSecond at = std::max(begin, search.from); at < std::min(end, search.end);) {
        const LocalSecond next = EndOf(level, at);
        if (const auto found = FirstInUnit(level, at, next, search)) return found;
        at = next;
    }
    return std::nullopt;
}

std::optional<LocalSecond> Foretelling::FirstInUnit(Level level, LocalSecond begin, LocalSecond end,
                                                    const Search& search) {
    static const std::uint64_t Date =
        BitsOf({SystemVariable::Year, SystemVariable::Month, SystemVariable::Day, SystemVariable::Weekday,
                SystemVariable::WeekOfMonth});
    static const std::uint64_t Fixed[] = {BitsOf({SystemVariable::Year}),
                                          BitsOf({SystemVariable::Year, SystemVariable::Month}),
                                          Date,
                                          Date | BitsOf({SystemVariable::Hour}),
                                          Date | BitsOf({SystemVariable::Hour, SystemVariable::Minute}),
                                          ~std::uint64_t{0}};
    static NoRandom noRandom;
    const DateTime time = DateTimeOf(begin);
    const CriteriaMoment moment(time, noRandom);
    const std::uint64_t read = moment.Packed() & program_.ReadBits();
    if ((program_.ReadBits() & ~Fixed[level]) == 0)
        return program_.Evaluate(moment, memory_) == search.wanted ? std::optional(begin) : std::nullopt;

    // The days of a month do not hang on what is read of the month alone, so larger spans are not remembered.
    auto& barren = barren_[search.wanted][level];
    const bool remembers = level >= Day;
    if (remembers && barren.count(read & Fixed[level]) > 0) return std::nullopt;
    const Verdict verdict = JudgeUnit(level, time, moment);
    if (verdict != Verdict::Sometimes)
        return (verdict == Verdict::Always) == search.wanted ? std::optional(begin) : std::nullopt;
    const auto found = FirstIn(static_cast<Level>(level + 1), begin, end, search);
    const bool whole = begin == EndOf(level, begin - 1) && end <= search.end;
    if (!found && remembers && whole && barren.size() < MostRemembered) barren.insert(read & Fixed[level]);
    return found;
}

Verdict Foretelling::JudgeUnit(Level level, const DateTime& begin, const CriteriaMoment& moment) {
    VariableBounds bounds;
    for (std::size_t at = 0; at < bounds.size(); ++at) {
        const double value = moment.Value(static_cast<SystemVariable>(at));
        bounds[at] = {value, value};
    }
    const auto open = [&](SystemVariable variable, double low, double high) {
        bounds[static_cast<std::size_t>(variable)] = {low, high};
    };
    if (level < Minute) open(SystemVariable::Minute, 0, 59);
    if (level < Hour) open(SystemVariable::Hour, 0, 23);
    open(SystemVariable::Second, 0, 59);
    if (level < Day) {
        open(SystemVariable::Day, 1, level == Year ? 31 : DaysInMonth(begin.month, begin.year));
        open(SystemVariable::Weekday, 1, 7);
        open(SystemVariable::WeekOfMonth, 1, 6);
    }
    if (level < Month) open(SystemVariable::Month, 1, 12);
    return bounds_.Judge(bounds);
}

LocalSecond Foretelling::EndOf(Level level, LocalSecond second) {
    constexpr LocalSecond Lengths[] = {0, 0, SecondsPerDay, 3600, 60, 1};
    if (level >= Day) {
        const LocalSecond length = Lengths[level];
        return second + length - (second % length + length) % length;
    }
    const DateTime time = DateTimeOf(second);
    const int month = level == Year ? 12 : time.month;
    return LocalSecondOf({time.year + month / 12, month % 12 + 1, 1});
}

} // namespace quorvane
