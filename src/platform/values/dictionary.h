#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/values/text.h"

namespace quorvel {

/// A map from text to text; a value. Keys are compared byte for byte, and are numbered in the order
/// of their first assignment.
class Dictionary {
 public:
  [[nodiscard]] int32_t Count() const { return static_cast<int32_t>(mEntries.size()); }
  /// The key at `index`, from 0. Raises `OutOfBoundsException` for an index without a key.
  [[nodiscard]] Text Key(int32_t index) const {
    if (index < 0 || index >= Count()) RaiseOutOfBounds();
    const Text& key = mEntries[static_cast<size_t>(index)].key;
    RecentCell(key) = static_cast<size_t>(index);
    return key;
  }
  [[nodiscard]] bool HasKey(const Text& key) const { return Find(key) != nullptr; }
  /// Raises `KeyNotFoundException` when the dictionary does not have the key.
  [[nodiscard]] Text Value(const Text& key) const {
    const Entry* const entry = Find(key);
    if (entry == nullptr) RaiseKeyNotFound();
    return entry->value;
  }
  /// Assigns the value. A new key comes after all other keys.
  void Value(const Text& key, Text value) { FindOrAdd(key).value = std::move(value); }
  /// Joins `tail` to the end of the key's value, empty for a new key, without a second copy of the
  /// value. Returns the index of the key.
  int32_t Append(const Text& key, const Text& tail) {
    Entry& entry = FindOrAdd(key);
    entry.value += tail;
    return static_cast<int32_t>(&entry - mEntries.data());
  }
  /// The value of `key`, or `fallback` when the dictionary does not have the key.
  [[nodiscard]] Text Lookup(const Text& key, const Text& fallback) const;

 private:
  struct Entry {
    Text key;
    Text value;
  };
  /// Seeded by chance, so that no stranger can choose keys that share a bucket.
  struct Hash {
    size_t operator()(std::string_view key) const;
  };
  [[noreturn]] static void RaiseOutOfBounds();
  [[noreturn]] static void RaiseKeyNotFound();
  [[nodiscard]] size_t& RecentCell(const Text& key) const {
    constexpr uintptr_t kLeastDistance = 16;  // of two buffers
    const auto address = reinterpret_cast<uintptr_t>(key.Bytes().data());
    return mRecent[address / kLeastDistance % mRecent.size()];
  }
  [[nodiscard]] const Entry* Find(const Text& key) const {
    const size_t recent = RecentCell(key);
    const bool found = recent < mEntries.size() && mEntries[recent].key.IsSameViewAs(key);
    return found ? &mEntries[recent] : Search(key);
  }
  [[nodiscard]] const Entry* Search(const Text& key) const;
  Entry& FindOrAdd(const Text& key) {
    const Entry* const found = Find(key);
    return found != nullptr ? const_cast<Entry&>(*found) : Add(key);
  }
  Entry& Add(const Text& key);

  std::vector<Entry> mEntries;
  // Entries of the last accesses, each in the cell of the address of the key's bytes: copies of one
  // key are often asked for, and are found without a look at their bytes.
  mutable std::array<size_t, 256> mRecent{};
  // Views of the bytes of the entries' keys, which copies of the dictionary share.
  std::unordered_map<std::string_view, size_t, Hash> mIndexOf;
};

}  // namespace quorvel
