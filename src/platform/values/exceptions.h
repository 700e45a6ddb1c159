#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "platform/values/text.h"

namespace quorvel {

/// Base of all exceptions that the program raises. The program's logic catches no exception: each
/// goes up to `Dispatch`, the only code that turns an exception into a quit or an error message.
class RuntimeException : public std::exception {
 public:
  explicit RuntimeException(quorvel::Text message = {}, int32_t error_number = 0);

  quorvel::Text Message;
  int32_t ErrorNumber = 0;

  /// The functions that were running when the exception was made, innermost first, named as the
  /// system's backtrace names functions. Empty on a system without backtraces.
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
/// No error: `Quit` raises the exception to unwind the handler that asked for the quit.
QUORVEL_EXCEPTION(EndException);

#undef QUORVEL_EXCEPTION
// NOLINTEND(bugprone-macro-parentheses)

}  // namespace quorvel
