#pragma once

#include "platform/values/object.h"
#include "platform/values/text.h"
#include "platform/windows/resources.h"

namespace quorvel {

// The program's own texts, pictures and sound. Each is read on first use and kept until the end
// of the process. A missing text is empty; a missing picture or sound is Nil.

[[nodiscard]] Ref<Picture> OssiandTitle();
[[nodiscard]] Ref<Picture> Ossiand();
[[nodiscard]] Ref<Sound> sndRegSuccess();
[[nodiscard]] Text ReadMeFirst7();
[[nodiscard]] Text ReadMeFirst0();
[[nodiscard]] Text ReadMeFirstMac1();
[[nodiscard]] Text ReadMeFirstMac2();
[[nodiscard]] Text ReadMeFirstMac3();
[[nodiscard]] Text ReadMeFirstMac4();
[[nodiscard]] Text ReadMeFirstMac6();
[[nodiscard]] Text ReadMeFirstMac8();
[[nodiscard]] Text QuorvelInstructions();

void _ReleaseResources();

}  // namespace quorvel
