#include "platform/values/dictionary.h"

#include "platform/values/exceptions.h"

namespace quorvel {

Text Dictionary::Key(int32_t index) const {
  if (index < 0 || index >= Count()) throw OutOfBoundsException("No key at that index.");
  return mEntries[static_cast<size_t>(index)].key;
}

const Dictionary::Entry* Dictionary::Find(const Text& key) const {
  const auto found = mIndexOf.find(std::string(key.Bytes()));
  return found == mIndexOf.end() ? nullptr : &mEntries[found->second];
}

bool Dictionary::HasKey(const Text& key) const { return Find(key) != nullptr; }

Text Dictionary::Value(const Text& key) const {
  const Entry* const entry = Find(key);
  if (entry == nullptr) throw KeyNotFoundException("No value under that key.");
  return entry->value;
}

void Dictionary::Value(const Text& key, const Text& value) {
  const auto [found, added] = mIndexOf.try_emplace(std::string(key.Bytes()), mEntries.size());
  if (added) {
    mEntries.push_back({key, value});
  } else {
    mEntries[found->second].value = value;
  }
}

Text Dictionary::Lookup(const Text& key, const Text& fallback) const {
  const Entry* const entry = Find(key);
  return entry == nullptr ? fallback : entry->value;
}

}  // namespace quorvel
