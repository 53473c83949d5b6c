// The program's one source of random numbers: never seeded, so every run draws the same sequence.
#pragma once

#include <cstdint>

namespace fw {

class RandomSource {
public:
    // Uniform in [0, 1).
    double Next()
    {
        // splitmix64: a full-period 64-bit sequence from a fixed start.
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        z ^= z >> 31;
        return static_cast<double>(z >> 11) * (1.0 / 9007199254740992.0);
    }

private:
    std::uint64_t state_ = 0;
};

} // namespace fw
