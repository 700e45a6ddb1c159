#pragma once

#include <cstddef>
#include <string_view>

namespace quorvel {

/// A stretch of text: a line of the text, or a piece of a long line. Each stretch is laid out by
/// itself, so showing a part of a text costs nothing for the rest of the text, however long the
/// lines are. Positions are byte offsets into the text.
struct Stretch {
  size_t begin = 0;
  size_t end = 0;   ///< before the line end
  size_t next = 0;  ///< after the line end, where the next stretch begins; the size of the text for
                    ///< the last stretch
};

/// The least and about half the greatest length of a piece of a long line, in bytes.
inline constexpr size_t kStretch = 16384;

/// The stretch of `position`, which may also be the end of the text. The end of a text that ends in
/// a line end belongs to the last line. LF, CR LF and CR end a line. A long line is cut at points
/// that depend on the bytes before the point alone: behind a blank where a blank is near, and never
/// inside of a UTF-8 sequence. Looks at a few times `kStretch` bytes at most.
[[nodiscard]] Stretch StretchAt(std::string_view text, size_t position);

}  // namespace quorvel
