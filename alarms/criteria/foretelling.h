#pragma once

#include "alarms/criteria/bounds.h"
#include "alarms/criteria/program.h"
#include "core/local_second.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace quorvane {

// When a criterion will hold. The calendar is walked from years down to seconds: a span in which the
// criterion never or always holds is passed over as a whole, and one that is like an earlier one in all that
// the criterion reads is not walked again.
class Foretelling {
  public:
    explicit Foretelling(std::string_view compiled);

    // False where the answers do not hang on the moment alone: the criterion reads "rr" or calls "frst". Then
    // nothing else may be asked.
    bool Possible() const { return possible_; }

    // The first second from `from` on and before `end` at which the criterion's answer is `wanted`.
    std::optional<LocalSecond> First(bool wanted, LocalSecond from, LocalSecond end);

    // The moments after `from`, at most `count` of them and at most ten years ahead, at which the criterion
    // turns from false to true, looked at once a second. True at `from` itself counts only after it was
    // false.
    std::vector<DateTime> Turns(const DateTime& from, std::size_t count);

  private:
    enum Level : std::uint8_t { Year, Month, Day, Hour, Minute, Second };
    struct Search {
        bool wanted;
        LocalSecond from;
        LocalSecond end;
    };

    explicit Foretelling(const std::vector<CriteriaInstruction>& order);

    std::optional<LocalSecond> FirstIn(Level level, LocalSecond begin, LocalSecond end, const Search& search);
    std::optional<LocalSecond> FirstInUnit(Level level, LocalSecond begin, LocalSecond end,
                                           const Search& search);
    Verdict JudgeUnit(Level level, const DateTime& begin, const CriteriaMoment& moment);
    static LocalSecond EndOf(Level level, LocalSecond second);

    CriteriaProgram program_;
    CriteriaBounds bounds_;
    CriteriaMemory memory_;
    bool possible_;
    // The spans without the answer wanted, by what the criterion reads of them; for either answer, by level.
    std::array<std::array<std::unordered_set<std::uint64_t>, Second>, 2> barren_;
};

} // namespace quorvane
