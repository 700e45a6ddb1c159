#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel {

/// A text to look for in long texts. Positions are byte offsets.
class Needle {
 public:
  /// A character to look for, in UTF-8: a hit has the first or the second of the two forms, which
  /// are of equal length. Both are the same when capital and small letters are told apart.
  using Character = std::pair<std::string, std::string>;
  /// A byte of a character, in the one form or the other.
  struct Either {
    uint8_t one;
    uint8_t other;
  };

  explicit Needle(const std::vector<Character>& the_characters);

  [[nodiscard]] bool IsEmpty() const { return bytes.empty(); }
  [[nodiscard]] size_t Size() const { return bytes.size(); }
  /// The first hit that begins at `from` or later.
  [[nodiscard]] std::optional<size_t> FirstIn(std::string_view text, size_t from) const;
  /// The last hit that ends at `to` or earlier.
  [[nodiscard]] std::optional<size_t> LastIn(std::string_view text, size_t to) const;

 private:
  [[nodiscard]] bool IsAt(const char* at) const;

  std::vector<Either> bytes;
  std::vector<size_t> lengths;  // of the characters, in bytes
};

}  // namespace quorvel
