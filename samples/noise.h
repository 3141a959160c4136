#pragma once

#include <cmath>
#include <cstdint>

namespace quorvane::samples {

// A number that looks random, always the same for the same three.
inline std::uint32_t Hash(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    std::uint32_t h = x * 0x9E3779B1U ^ y * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
    h = (h ^ h >> 15) * 0x2C1B3C6DU;
    h = (h ^ h >> 12) * 0x297A2D39U;
    return h ^ h >> 15;
}

// The same from 0 to 1.
inline float Chance(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    return static_cast<float>(Hash(x, y, seed) >> 8) / static_cast<float>(1 << 24);
}

// Smooth noise from 0 to 1 on a lattice of 1.
inline float Noise(float x, float y, std::uint32_t seed) {
    const float fx = std::floor(x), fy = std::floor(y);
    const auto ix = static_cast<std::uint32_t>(static_cast<std::int32_t>(fx));
    const auto iy = static_cast<std::uint32_t>(static_cast<std::int32_t>(fy));
    const float u = x - fx, v = y - fy;
    const float su = u * u * (3 - 2 * u), sv = v * v * (3 - 2 * v);
    const float upper = Chance(ix, iy, seed) * (1 - su) + Chance(ix + 1, iy, seed) * su;
    const float lower = Chance(ix, iy + 1, seed) * (1 - su) + Chance(ix + 1, iy + 1, seed) * su;
    return upper * (1 - sv) + lower * sv;
}

// Noise upon finer noise, from 0 to nearly 1.
inline float Layers(float x, float y, int octaves, std::uint32_t seed) {
    float sum = 0, weight = 0.5F;
    for (int i = 0; i < octaves; ++i, x *= 2.03F, y *= 2.03F, weight *= 0.5F)
        sum += weight * Noise(x, y, seed + static_cast<std::uint32_t>(i));
    return sum;
}

} // namespace quorvane::samples
