#pragma once

#include "platform/random.h"

#include <cstdint>

namespace quorvane {

// The random numbers of every platform. The bits of the seed are mixed before and after each step, so that
// seeds close to each other, as two times of day are, give numbers that have nothing in common.
class SeededRandom : public Random {
  public:
    void Seed(double seed) override;
    float Next() override;

  private:
    std::uint64_t state_ = 0;
};

// Keeps to its first seed: the whole run hangs on that one number, however often the system reseeds from the
// time of day.
class OnceSeededRandom final : public SeededRandom {
  public:
    void Seed(double seed) override;

  private:
    bool seeded_ = false;
};

} // namespace quorvane
