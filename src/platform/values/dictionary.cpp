#include "platform/values/dictionary.h"

#include <random>

#include "platform/values/exceptions.h"

namespace quorvel {

void Dictionary::RaiseOutOfBounds() { throw OutOfBoundsException("No key at that index."); }
void Dictionary::RaiseKeyNotFound() { throw KeyNotFoundException("No value under that key."); }

size_t Dictionary::Hash::operator()(std::string_view key) const {
  constexpr size_t kPrime = 1099511628211U;
  static const size_t seed = std::random_device{}();
  size_t hash = seed;
  for (const char byte : key) hash = (hash ^ static_cast<uint8_t>(byte)) * kPrime;
  return hash ^ (hash >> 29);
}

const Dictionary::Entry* Dictionary::Search(const Text& key) const {
  const auto found = mIndexOf.find(key.Bytes());
  if (found == mIndexOf.end()) return nullptr;
  RecentCell(key) = found->second;
  return &mEntries[found->second];
}

Dictionary::Entry& Dictionary::Add(const Text& key) {
  mIndexOf.emplace(key.Bytes(), mEntries.size());
  return mEntries.emplace_back(Entry{key, {}});
}

Text Dictionary::Lookup(const Text& key, const Text& fallback) const {
  const Entry* const entry = Find(key);
  return entry == nullptr ? fallback : entry->value;
}

}  // namespace quorvel
