#include "platform/values/exceptions.h"

#include <cstdlib>
#include <memory>

#include "platform/values/object.h"

#if __has_include(<execinfo.h>)
#include <execinfo.h>
#endif

namespace quorvel {

namespace {

constexpr int kMostFrames = 32;

std::vector<void*> OpenCalls() {
#if __has_include(<execinfo.h>)
  std::vector<void*> frames(kMostFrames);
  frames.resize(static_cast<size_t>(backtrace(frames.data(), kMostFrames)));
  return frames;
#else
  return {};
#endif
}

std::vector<Text> Names(const std::vector<void*>& frames) {
  std::vector<Text> names;
#if __has_include(<execinfo.h>)
  const std::unique_ptr<char*, decltype(&std::free)> symbols(
      backtrace_symbols(frames.data(), static_cast<int>(frames.size())), &std::free);
  for (size_t i = 0; symbols && i < frames.size(); ++i) names.emplace_back(symbols.get()[i]);
#endif
  return names;
}

}  // namespace

RuntimeException::RuntimeException(Text message, int32_t error_number)
    : Message(std::move(message)),
      ErrorNumber(error_number),
      mWhat(Message.Bytes()),
      mFrames(OpenCalls()) {}

std::vector<Text> RuntimeException::Stack() const { return Names(mFrames); }

namespace detail {

void RaiseNilObject() { throw NilObjectException("An object was used that does not exist."); }
void RaiseIllegalCast() {
  throw IllegalCastException("An object was cast to a class that it does not have.");
}

}  // namespace detail

}  // namespace quorvel
