#pragma once

#include "platform/shared/seeded_random.h"

#include <deque>
#include <vector>

namespace quorvane {

// The numbers that a test prepared, then seeded ones. Keeps every seed and counts the draws.
class MemoryRandom final : public Random {
  public:
    void Seed(double seed) override {
        seeds.push_back(seed);
        if (!keepsFirstSeed || seeds.size() == 1) numbers_.Seed(seed);
    }
    float Next() override {
        ++draws;
        if (prepared.empty()) return numbers_.Next();
        const float number = prepared.front();
        prepared.pop_front();
        return number;
    }

    std::deque<float> prepared;
    bool keepsFirstSeed =
        false; // a clock that stands still would give the same numbers after every reseeding
    std::vector<double> seeds;
    int draws = 0;

  private:
    SeededRandom numbers_;
};

} // namespace quorvane
