#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/values/text.h"

namespace quorvel {

/// A map from text to text; a value. Keys are compared byte for byte and keep the order in which
/// they first came in.
class Dictionary {
 public:
  [[nodiscard]] int32_t Count() const { return static_cast<int32_t>(mEntries.size()); }
  /// The key at `index`, from 0. Raises `OutOfBoundsException`.
  [[nodiscard]] Text Key(int32_t index) const;
  [[nodiscard]] bool HasKey(const Text& key) const;
  /// Raises `KeyNotFoundException` when there is no such key.
  [[nodiscard]] Text Value(const Text& key) const;
  void Value(const Text& key, const Text& value);
  [[nodiscard]] Text Lookup(const Text& key, const Text& fallback) const;

 private:
  struct Entry {
    Text key;
    Text value;
  };
  [[nodiscard]] const Entry* Find(const Text& key) const;

  std::vector<Entry> mEntries;
  std::unordered_map<std::string, size_t> mIndexOf;
};

}  // namespace quorvel
