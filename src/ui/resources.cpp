#include "ui/resources.h"

#include <map>
#include <utility>

namespace quorvel {

namespace {

// A missing picture or sound is looked for again at each use; a missing text is kept as an empty
// text.
struct Held {
  std::map<int32_t, Ref<Picture>> _permapic;
  std::map<int32_t, Ref<Sound>> _snd;
  std::map<int32_t, Text> _permatext;
};

Held& Resources() {
  static Held held;
  return held;
}

Ref<Picture> HeldPicture(int32_t number) {
  auto& held = Resources()._permapic[number];
  if (!held) held = appResourceForkGetter()->GetPicture(number);
  return held;
}

Ref<Sound> HeldSound(int32_t number) {
  auto& held = Resources()._snd[number];
  if (!held) held = appResourceForkGetter()->GetSound(number);
  return held;
}

Text HeldText(int32_t number) {
  const auto [entry, added] = Resources()._permatext.try_emplace(number);
  if (added) entry->second = appResourceForkGetter()->GetResource("TEXT", number);
  return entry->second;
}

}  // namespace

Ref<Picture> OssiandTitle() { return HeldPicture(169); }
Ref<Picture> Ossiand() { return HeldPicture(170); }
Ref<Sound> sndRegSuccess() { return HeldSound(168); }
Text ReadMeFirst7() { return HeldText(168); }
Text ReadMeFirst0() { return HeldText(170); }
Text ReadMeFirstMac1() { return HeldText(177); }
Text ReadMeFirstMac2() { return HeldText(178); }
Text ReadMeFirstMac3() { return HeldText(179); }
Text ReadMeFirstMac4() { return HeldText(180); }
Text ReadMeFirstMac6() { return HeldText(181); }
Text ReadMeFirstMac8() { return HeldText(182); }
Text QuorvelInstructions() { return HeldText(189); }

void _ReleaseResources() { Resources() = Held(); }

}  // namespace quorvel
