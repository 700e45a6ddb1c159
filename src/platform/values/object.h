#pragma once

#include <concepts>
#include <cstddef>
#include <memory>
#include <typeinfo>
#include <utility>

namespace quorvel {

/// The empty reference.
inline constexpr std::nullptr_t Nil = nullptr;

namespace detail {
[[noreturn]] void RaiseNilObject();
[[noreturn]] void RaiseIllegalCast();
}  // namespace detail

/// Base of everything with identity: windows, controls, sockets, streams. Objects are made with
/// `New`, held through `Ref`, never copied, and destroyed with their last `Ref`.
class Object : public std::enable_shared_from_this<Object> {
 public:
  virtual ~Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

 protected:
  Object() = default;
};

/// A counted reference. Using Nil raises `NilObjectException` where a plain pointer would crash.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  explicit Ref(std::shared_ptr<T> object) : mObject(std::move(object)) {}
  template <class U>
  requires std::convertible_to<U*, T*> Ref(const Ref<U>& other) : mObject(other.Shared()) {}

  T* operator->() const { return &**this; }
  T& operator*() const {
    if (!mObject) detail::RaiseNilObject();
    return *mObject;
  }
  explicit operator bool() const { return mObject != nullptr; }
  bool operator==(const Ref& other) const = default;
  [[nodiscard]] const std::shared_ptr<T>& Shared() const& { return mObject; }
  [[nodiscard]] std::shared_ptr<T> Shared() && { return std::move(mObject); }

 private:
  std::shared_ptr<T> mObject;
};

template <class T, class... Arguments>
[[nodiscard]] Ref<T> New(Arguments&&... arguments) {
  return Ref<T>(std::make_shared<T>(std::forward<Arguments>(arguments)...));
}

/// The same object as a `T`; Nil stays Nil. Raises `IllegalCastException` when the object is no
/// `T`.
template <class T, class U>
[[nodiscard]] inline Ref<T> Cast(Ref<U> object) {
  auto shared = std::move(object).Shared();
  // An object of exactly this class takes no search through its bases.
  if constexpr (std::derived_from<T, U>) {
    if (shared && typeid(*shared) == typeid(T)) {
      return Ref<T>(std::static_pointer_cast<T>(std::move(shared)));
    }
  }
  auto cast = std::dynamic_pointer_cast<T>(shared);
  if (shared && !cast) detail::RaiseIllegalCast();
  return Ref<T>(std::move(cast));
}

/// A new reference to `object`. Some `Ref` must hold the object already.
template <class T>
[[nodiscard]] Ref<T> Self(T& object) {
  return Ref<T>(std::static_pointer_cast<T>(object.shared_from_this()));
}

}  // namespace quorvel
