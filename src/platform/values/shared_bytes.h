#pragma once

#include <cstddef>
#include <string_view>

namespace quorvel {

/// An immutable run of bytes in a counted buffer; the storage beneath `Text`. The bytes of a
/// value never change and never move. Counts are plain integers: one thread only.
class SharedBytes {
 public:
  SharedBytes() = default;
  SharedBytes(const SharedBytes& other);
  SharedBytes(SharedBytes&& other) noexcept;
  SharedBytes& operator=(SharedBytes other) noexcept;
  ~SharedBytes();

  static SharedBytes Copy(std::string_view bytes);

  [[nodiscard]] std::string_view View() const { return mView; }
  /// `length` bytes from `offset` on; both must lie inside.
  [[nodiscard]] SharedBytes Slice(size_t offset, size_t length) const;
  /// These bytes followed by `tail`: in place when they end where the buffer's used part ends and
  /// it has room, else in a fresh buffer. The cost is that of `tail`, amortised.
  [[nodiscard]] SharedBytes Joined(std::string_view tail) const;
  [[nodiscard]] bool StartsWhere(const SharedBytes& other) const {
    return mBuffer == other.mBuffer && mView.data() == other.mView.data();
  }

 private:
  struct Buffer;
  SharedBytes(Buffer* adopted, std::string_view view) : mBuffer(adopted), mView(view) {}

  Buffer* mBuffer = nullptr;
  std::string_view mView;
};

}  // namespace quorvel
