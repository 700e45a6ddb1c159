#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/values/text.h"

namespace quorvel {

/// A map from text to text; a value. Keys are compared byte for byte, and are numbered in the order
/// of their first assignment.
class Dictionary {
 public:
  [[nodiscard]] int32_t Count() const { return static_cast<int32_t>(mEntries.size()); }
  /// The key at `index`, from 0. Raises `OutOfBoundsException` for an index without a key.
  [[nodiscard]] Text Key(int32_t index) const;
  [[nodiscard]] bool HasKey(const Text& key) const;
  /// Raises `KeyNotFoundException` when the dictionary does not have the key.
  [[nodiscard]] Text Value(const Text& key) const;
  /// Assigns the value. A new key comes after all other keys.
  void Value(const Text& key, const Text& value);
  /// The value of `key`, or `fallback` when the dictionary does not have the key.
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
