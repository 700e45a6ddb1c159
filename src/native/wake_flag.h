#pragma once

namespace quorvel {

/// A flag by which one thread wakes another: the descriptor of the flag is readable while the flag
/// is set. `Set` and `Clear` never wait, and any thread may call both.
class WakeFlag {
 public:
  WakeFlag();
  ~WakeFlag();
  WakeFlag(const WakeFlag&) = delete;
  WakeFlag& operator=(const WakeFlag&) = delete;

  void Set() const;
  void Clear() const;
  /// Owned by this object; -1 when the system had no descriptor to give, and the flag does nothing.
  [[nodiscard]] int Descriptor() const { return mReadEnd; }

 private:
  int mReadEnd = -1;
  int mWriteEnd = -1;
};

}  // namespace quorvel
