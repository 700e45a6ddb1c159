#include "platform/values/dictionary.h"

#include <random>

#include "platform/values/exceptions.h"

namespace quorvel {

Text Dictionary::Key(int32_t index) const {
  if (index < 0 || index >= Count()) throw OutOfBoundsException("No key at that index.");
  const Text& key = mEntries[static_cast<size_t>(index)].key;
  RecentCell(key) = static_cast<size_t>(index);
  return key;
}

size_t Dictionary::Hash::operator()(std::string_view key) const {
  constexpr size_t kPrime = 1099511628211U;
  static const size_t seed = std::random_device{}();
  size_t hash = seed;
  for (const char byte : key) hash = (hash ^ static_cast<uint8_t>(byte)) * kPrime;
  return hash ^ (hash >> 29);
}

size_t& Dictionary::RecentCell(const Text& key) const {
  constexpr uintptr_t kLeastDistance = 16;  // of two buffers
  return mRecent[reinterpret_cast<uintptr_t>(key.Bytes().data()) / kLeastDistance % mRecent.size()];
}

const Dictionary::Entry* Dictionary::Find(const Text& key) const {
  if (mEntries.empty()) return nullptr;
  size_t& recent_index = RecentCell(key);
  const Entry& recent = mEntries[recent_index];
  const std::string_view bytes = recent.key.Bytes();
  if (key.Bytes().data() == bytes.data() && key.Bytes().size() == bytes.size()) return &recent;
  const auto found = mIndexOf.find(key.Bytes());
  if (found == mIndexOf.end()) return nullptr;
  recent_index = found->second;
  return &mEntries[recent_index];
}

Dictionary::Entry& Dictionary::FindOrAdd(const Text& key) {
  if (const auto* const found = Find(key)) return const_cast<Entry&>(*found);
  mIndexOf.emplace(key.Bytes(), mEntries.size());
  return mEntries.emplace_back(Entry{Count(), key, {}});
}

bool Dictionary::HasKey(const Text& key) const { return Find(key) != nullptr; }

Text Dictionary::Value(const Text& key) const {
  const Entry* const entry = Find(key);
  if (entry == nullptr) throw KeyNotFoundException("No value under that key.");
  return entry->value;
}

void Dictionary::Value(const Text& key, const Text& value) { FindOrAdd(key).value = value; }

int32_t Dictionary::Append(const Text& key, const Text& tail) {
  Entry& entry = FindOrAdd(key);
  entry.value += tail;
  return entry.index;
}

Text Dictionary::Lookup(const Text& key, const Text& fallback) const {
  const Entry* const entry = Find(key);
  return entry == nullptr ? fallback : entry->value;
}

}  // namespace quorvel
