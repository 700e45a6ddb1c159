#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

namespace quorvel {

/// A source of random numbers. Each failure during its life tells the seed, and the environment
/// variable QUORVEL_SEED repeats a run.
class Random {
 public:
  /// At least 0 and less than `limit`.
  size_t Below(size_t limit) { return mEngine() % limit; }

 private:
  static unsigned long Seed() {
    const char* const given = std::getenv("QUORVEL_SEED");
    return given != nullptr ? std::strtoul(given, nullptr, 10) : std::random_device{}();
  }

  unsigned long mSeed = Seed();
  std::mt19937 mEngine{static_cast<std::mt19937::result_type>(mSeed)};
  testing::ScopedTrace mTrace{__FILE__, __LINE__, "QUORVEL_SEED=" + std::to_string(mSeed)};
};

}  // namespace quorvel
