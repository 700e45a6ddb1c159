#pragma once

#include <chrono>

#include "tools/check/facts.h"

namespace quorvel::check {

/// Opens the port, joins the key's group, listens for the given time and gathers the facts. Ends
/// early when the port cannot be opened, and at SIGINT or SIGTERM; late by less than two seconds.
/// The runtime has been started on a native side, and is run once.
[[nodiscard]] Facts Gather(const Text& key, std::chrono::seconds most);

}  // namespace quorvel::check
