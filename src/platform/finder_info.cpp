#include "platform/finder_info.h"

#include <algorithm>
#include <array>

#ifdef __APPLE__
#include <sys/xattr.h>
#endif

namespace quorvel {

void WriteFinderInfo([[maybe_unused]] const std::string& path,
                     [[maybe_unused]] std::string_view type,
                     [[maybe_unused]] std::string_view creator) {
#ifdef __APPLE__
  constexpr const char* kAttribute = "com.apple.FinderInfo";
  std::array<char, 32> info{};
  getxattr(path.c_str(), kAttribute, info.data(), info.size(), 0, 0);
  std::copy_n(type.begin(), std::min<size_t>(type.size(), 4), info.begin());
  std::copy_n(creator.begin(), std::min<size_t>(creator.size(), 4), info.begin() + 4);
  setxattr(path.c_str(), kAttribute, info.data(), info.size(), 0, 0);
#endif
}

}  // namespace quorvel
