#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace quorvel {

using PropertyValue = std::variant<bool, int32_t, std::string_view>;

/// A row of a layout table: a property's name and value.
struct Property {
  std::string_view name;
  PropertyValue value;
};
using PropertySet = std::span<const Property>;

/// Binds the name of a property that a class has, but that has no effect on the class.
using NoEffect = std::monostate;

/// Binds a property's name to a member of `State`.
template <class State>
struct PropertyBinding {
  std::string_view name;
  std::variant<NoEffect, bool State::*, int32_t State::*, std::string State::*> member;
};

/// Raises `RuntimeException`.
[[noreturn]] void RaiseUnknownProperty(std::string_view name);
/// Whether all windows, controls and timers have the property, and the property has no effect on
/// any of them (`HelpTag`, `LockLeft` and the like).
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

/// Assigns the row's value to the member of `state` that `bindings` name for the row; false, and no
/// effect, when `bindings` do not have the name. Raises `std::bad_variant_access` for a value of
/// the wrong type.
template <class State>
[[nodiscard]] bool AssignBound(
    State& state, std::span<const PropertyBinding<std::type_identity_t<State>>> bindings,
    const Property& property) {
  for (const auto& binding : bindings) {
    if (binding.name != property.name) continue;
    const auto assign = [&](auto member) {
      if constexpr (!std::is_same_v<decltype(member), NoEffect>) {
        detail::Assign(state.*member, property.value);
      }
    };
    std::visit(assign, binding.member);
    return true;
  }
  return false;
}

}  // namespace quorvel
