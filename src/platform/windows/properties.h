#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace quorvel {

using PropertyValue = std::variant<bool, int32_t, std::string_view>;

/// One row of a layout table.
struct Property {
  std::string_view name;
  PropertyValue value;
};
using PropertySet = std::span<const Property>;

/// Binds the names of a layout table to the members of `State`.
template <class State>
struct PropertyBinding {
  std::string_view name;
  std::variant<bool State::*, int32_t State::*, std::string State::*> member;
};

[[noreturn]] void RaiseUnknownProperty(std::string_view name);
/// Whether every object has the property and nothing depends on its value.
[[nodiscard]] bool IsWithoutEffect(std::string_view name);

namespace detail {

/// 0 and 1 stand for False and True.
inline void Assign(bool& member, const PropertyValue& value) {
  const auto* const number = std::get_if<int32_t>(&value);
  member = number != nullptr ? *number != 0 : std::get<bool>(value);
}
inline void Assign(int32_t& member, const PropertyValue& value) {
  member = std::get<int32_t>(value);
}
inline void Assign(std::string& member, const PropertyValue& value) {
  member = std::get<std::string_view>(value);
}

}  // namespace detail

template <class State>
void AssignProperty(State& state, std::span<const PropertyBinding<State>> bindings,
                    const Property& property) {
  for (const auto& binding : bindings) {
    if (binding.name != property.name) continue;
    std::visit([&](auto member) { detail::Assign(state.*member, property.value); }, binding.member);
    return;
  }
  if (!IsWithoutEffect(property.name)) RaiseUnknownProperty(property.name);
}

}  // namespace quorvel
