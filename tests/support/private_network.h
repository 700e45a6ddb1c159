#pragma once

#include <cstdlib>

/// Whether the run has a network of its own, on which groups may be joined; `scripts/test.sh`
/// makes one where the system allows it. Elsewhere only loopback is used.
inline bool HasPrivateNetwork() { return std::getenv("QUORVEL_PRIVATE_NETWORK") != nullptr; }

#define SKIP_WITHOUT_PRIVATE_NETWORK() \
  if (!HasPrivateNetwork()) GTEST_SKIP() << "no private network: loopback alone is tested"
