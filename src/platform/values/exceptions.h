#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "platform/values/text.h"

namespace quorvel {

/// Base of all exceptions that the program raises. The logic catches none of them: each goes up
/// to `Dispatch`, which is the one place that decides what it means.
class RuntimeException : public std::exception {
 public:
  explicit RuntimeException(quorvel::Text message = {}, int32_t error_number = 0);

  quorvel::Text Message;
  int32_t ErrorNumber = 0;

  /// The calls that were open where the exception was made, innermost first. Empty on a system
  /// that cannot tell.
  [[nodiscard]] std::vector<quorvel::Text> Stack() const;

  [[nodiscard]] virtual const char* ClassName() const { return "RuntimeException"; }
  [[nodiscard]] const char* what() const noexcept override { return mWhat.c_str(); }

 private:
  std::string mWhat;
  std::vector<void*> mFrames;
};

// NOLINTBEGIN(bugprone-macro-parentheses): a class name takes no parentheses.
#define QUORVEL_EXCEPTION(Name)                                            \
  class Name : public RuntimeException {                                   \
   public:                                                                 \
    using RuntimeException::RuntimeException;                              \
    [[nodiscard]] const char* ClassName() const override { return #Name; } \
  }

QUORVEL_EXCEPTION(NilObjectException);
QUORVEL_EXCEPTION(IllegalCastException);
QUORVEL_EXCEPTION(OutOfBoundsException);
QUORVEL_EXCEPTION(KeyNotFoundException);
QUORVEL_EXCEPTION(StackOverflowException);
/// Unwinds the handler that asked the application to quit.
QUORVEL_EXCEPTION(EndException);

#undef QUORVEL_EXCEPTION
// NOLINTEND(bugprone-macro-parentheses)

}  // namespace quorvel
