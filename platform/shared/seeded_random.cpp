#include "platform/shared/seeded_random.h"

#include <bit>

namespace quorvane {
namespace {

// Source: G. Steele, D. Lea, C. Flood, "Fast Splittable Pseudorandom Number Generators", SplitMix64.
constexpr std::uint64_t Step = 0x9E3779B97F4A7C15;

std::uint64_t Mix(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
    return bits ^ (bits >> 31);
}

} // namespace

void SeededRandom::Seed(double seed) {
    state_ = Mix(std::bit_cast<std::uint64_t>(seed + 0.0)); // both zeros are one seed
}

float SeededRandom::Next() {
    state_ += Step;
    constexpr float Unit = 1.0F / (1 << 24); // single precision holds 24 bits, so 1 is never reached
    return static_cast<float>(Mix(state_) >> 40) * Unit;
}

void OnceSeededRandom::Seed(double seed) {
    if (seeded_) return;
    seeded_ = true;
    SeededRandom::Seed(seed);
}

} // namespace quorvane
