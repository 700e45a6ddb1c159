#include "platform/values/dictionary.h"

#include <random>

#include "platform/values/exceptions.h"

namespace quorvel {

Text Dictionary::Key(int32_t index) const {
  if (index < 0 || index >= Count()) throw OutOfBoundsException("No key at that index.");
  mLast = static_cast<size_t>(index);
  return mEntries[mLast].key;
}

size_t Dictionary::Hash::operator()(std::string_view key) const {
  constexpr size_t kPrime = 1099511628211U;
  static const size_t seed = std::random_device{}();
  size_t hash = seed;
  for (const char byte : key) hash = (hash ^ static_cast<uint8_t>(byte)) * kPrime;
  return hash ^ (hash >> 29);
}

// Whether the key is a copy of the key of the last access; looks at no byte.
bool Dictionary::IsLast(const Text& key) const {
  if (mLast >= mEntries.size()) return false;
  const std::string_view last = mEntries[mLast].key.Bytes();
  return key.Bytes().data() == last.data() && key.Bytes().size() == last.size();
}

const Dictionary::Entry* Dictionary::Find(const Text& key) const {
  if (IsLast(key)) return &mEntries[mLast];
  const auto found = mIndexOf.find(key.Bytes());
  if (found == mIndexOf.end()) return nullptr;
  mLast = found->second;
  return &mEntries[mLast];
}

size_t Dictionary::FindOrAdd(const Text& key) {
  if (Find(key) != nullptr) return mLast;
  mEntries.push_back({key, {}});
  mLast = mEntries.size() - 1;
  mIndexOf.emplace(mEntries.back().key.Bytes(), mLast);
  return mLast;
}

bool Dictionary::HasKey(const Text& key) const { return Find(key) != nullptr; }

Text Dictionary::Value(const Text& key) const {
  const Entry* const entry = Find(key);
  if (entry == nullptr) throw KeyNotFoundException("No value under that key.");
  return entry->value;
}

void Dictionary::Value(const Text& key, const Text& value) {
  mEntries[FindOrAdd(key)].value = value;
}

int32_t Dictionary::Append(const Text& key, const Text& tail) {
  const size_t index = FindOrAdd(key);
  mEntries[index].value += tail;
  return static_cast<int32_t>(index);
}

Text Dictionary::Lookup(const Text& key, const Text& fallback) const {
  const Entry* const entry = Find(key);
  return entry == nullptr ? fallback : entry->value;
}

}  // namespace quorvel
