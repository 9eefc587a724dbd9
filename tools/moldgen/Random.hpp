// The generator's own random numbers: xoshiro256** seeded through SplitMix64, and integer-only
// draws on top. Nothing comes from <random>'s distributions, whose output differs between
// standard libraries, and nothing goes through floating point: the same seed gives the same
// numbers on every machine and compiler.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace moldgen {

class Random {
public:
    explicit Random(std::uint64_t seed) {
        for (std::uint64_t& word : state_) word = SplitMix(seed);
    }

    std::uint64_t Next() {
        const std::uint64_t result = Rotl(state_[1] * 5, 7) * 9;
        const std::uint64_t t = state_[1] << 17;
        state_[2] ^= state_[0];
        state_[3] ^= state_[1];
        state_[1] ^= state_[2];
        state_[0] ^= state_[3];
        state_[2] ^= t;
        state_[3] = Rotl(state_[3], 45);
        return result;
    }

    // Uniform in [0, n), n > 0: Lemire's multiply-and-reject on the high 32 bits.
    std::uint32_t Below(std::uint32_t n) {
        std::uint64_t m = (Next() >> 32) * n;
        if (static_cast<std::uint32_t>(m) < n) {
            const std::uint32_t threshold = static_cast<std::uint32_t>(-n) % n;
            while (static_cast<std::uint32_t>(m) < threshold) m = (Next() >> 32) * n;
        }
        return static_cast<std::uint32_t>(m >> 32);
    }

    // Uniform in [low, high], low <= high.
    int Between(int low, int high) { return low + static_cast<int>(Below(static_cast<std::uint32_t>(high - low) + 1)); }

    // True with probability percent / 100.
    bool Chance(int percent) { return static_cast<int>(Below(100)) < percent; }

    template <class T>
    const T& Pick(const std::vector<T>& items) {
        return items[Below(static_cast<std::uint32_t>(items.size()))];
    }

    // One of the items, each as likely as its weight (weights > 0).
    template <class T>
    const T& Weighted(const std::vector<std::pair<T, int>>& items) {
        int total = 0;
        for (const auto& item : items) total += item.second;
        int draw = static_cast<int>(Below(static_cast<std::uint32_t>(total)));
        for (const auto& item : items) {
            if (draw < item.second) return item.first;
            draw -= item.second;
        }
        return items.back().first;
    }

    // Fisher-Yates.
    template <class T>
    void Shuffle(std::vector<T>& items) {
        for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[Below(static_cast<std::uint32_t>(i))]);
    }

private:
    static std::uint64_t Rotl(std::uint64_t x, int k) { return (x << k) | (x >> (64 - k)); }

    static std::uint64_t SplitMix(std::uint64_t& x) {
        std::uint64_t z = (x += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    std::uint64_t state_[4];
};

}  // namespace moldgen
