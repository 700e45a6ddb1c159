#include "app/os_version.h"

namespace quorvel::OSVersionInformation {

namespace {

bool mInitialized = false;
bool mIs2K = false;
bool mIs95 = false;
bool mIs98 = false;
bool mIsME = false;
bool mIsNT4 = false;
bool mIsXP = false;
bool mIsXPPlus = false;

void Initialize() {
  if (!mInitialized) mInitialized = true;
}

bool Flag(const bool& flag) {
  Initialize();
  return flag;
}

}  // namespace

bool Is2k() { return Flag(mIs2K); }
bool Is95() { return Flag(mIs95); }
bool Is98() { return Flag(mIs98); }
bool IsME() { return Flag(mIsME); }
bool IsNT4() { return Flag(mIsNT4); }
bool IsXP() { return Flag(mIsXP); }
bool IsXPPlus() { return Flag(mIsXPPlus); }

}  // namespace quorvel::OSVersionInformation
