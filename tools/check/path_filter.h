#pragma once

#include <optional>
#include <string>

namespace quorvel::check {

/// The filter in force that drops datagrams whose sender would be answered by another interface:
/// 0 off, 1 strict, 2 loose. Nothing where the system has no such filter.
[[nodiscard]] std::optional<int> ReversePathFilter(const std::string& interface);

}  // namespace quorvel::check
