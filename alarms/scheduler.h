#pragma once

#include "alarms/criteria/foretelling.h"
#include "alarms/criteria/program.h"
#include "config/entries.h"
#include "config/one_based.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class Random;

// Tests the alarms twice a second and fires those whose criterion holds. There is no queue and no due time: a
// criterion is a condition on the present moment, and the count of firings is the only latch. When the next
// tick can matter is worked out apart from that, so that nobody has to tick for alarms that cannot fire.
class AlarmScheduler {
  public:
    static constexpr int TickMilliseconds = 500;

    // The present local date and time.
    using Now = std::function<DateTime()>;
    // Does what a firing of the alarm of this number, from 1 on, is there for. It may take its time, change
    // and remove alarms, and let further ticks run.
    using CarryOut = std::function<void(std::int32_t alarm)>;

    // `alarms` and `random` must outlive the scheduler.
    AlarmScheduler(OneBased<AlarmRecord>& alarms, Random& random)
        : alarms_(alarms)
        , random_(random) {}

    // One tick over all alarms, in their order. The clock is read at its beginning and behind each firing.
    void Tick(const Now& now, const CarryOut& carryOut);

    // The first second from `from` on and before `end` at which an alarm fires as things stand; `from` itself
    // where one cannot be foretold; nothing where none fires until then.
    std::optional<LocalSecond> NextFiring(LocalSecond from, LocalSecond end);

    // Whether the alarm's firings can be foretold: its criterion hangs on the moment alone.
    bool CanForetell(std::int32_t alarm);

  private:
    // What is kept of an alarm from one tick, and from one question for the next firing, to the next.
    struct Watched {
        WatchedCriterion criterion;
        std::string foretoldText;
        std::optional<Foretelling> foretelling;
        // From `searched` on and before `found` the criterion never holds; at `found` it does where `holds`.
        LocalSecond searched = 0;
        LocalSecond found = 0;
        bool holds = false;
    };

    Watched& At(std::int32_t alarm);
    Foretelling& ForetellingOf(std::int32_t alarm);
    LocalSecond NextTrue(std::int32_t alarm, LocalSecond from, LocalSecond end);

    OneBased<AlarmRecord>& alarms_;
    Random& random_;
    CriteriaMemory memory_;
    std::vector<Watched> watched_;
};

// The alarm can fire at all: it is switched on and has firings left.
bool IsLive(const AlarmRecord& alarm);

} // namespace quorvane
