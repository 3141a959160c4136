#pragma once

#include "alarms/criteria/words.h"
#include "core/date_time.h"
#include "platform/random.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace quorvane {

// What the variables of the criteria language read: one local date and time, and the random numbers. Made
// once for all criteria of a tick.
class CriteriaMoment {
  public:
    // `random` must outlive the moment.
    CriteriaMoment(const DateTime& now, Random& random);

    // Any variable but Random.
    double Value(SystemVariable variable) const { return values_[static_cast<std::size_t>(variable)]; }
    // A number from 0 up to but not including 1. The generator is seeded from the seconds since midnight
    // before each reading, so that all readings of a moment are the same.
    double NextRandom() const;

    // All values in one word, each in bits of its own.
    std::uint64_t Packed() const { return packed_; }
    // The bits of one variable; none for Random.
    static std::uint64_t PackedBits(SystemVariable variable);

  private:
    std::array<double, 8> values_;
    std::uint64_t packed_;
    double secondsOfDay_;
    Random* random_;
};

} // namespace quorvane
