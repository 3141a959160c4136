#pragma once

namespace quorvane {

// Uniform random numbers. Not for secrets.
class Random {
  public:
    virtual ~Random() = default;
    // The same seed gives the same numbers.
    virtual void Seed(double seed) = 0;
    // From 0 up to but not including 1, in single precision.
    virtual float Next() = 0;
};

} // namespace quorvane
