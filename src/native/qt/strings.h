#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "native/text/utf8.h"

namespace quorvel::qt {

inline QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Bytes that are no part of a well-formed UTF-8 sequence are read as ISO 8859-1.
inline QString FromBytes(std::string_view bytes) {
  return IsValidUtf8(bytes) ? FromUtf8(bytes) : FromUtf8(ToValidUtf8(bytes));
}

inline std::string ToUtf8(const QString& text) { return text.toStdString(); }

/// The text with the symbol U+2400 for each NUL.
inline QString WithVisibleNulls(QString text) { return text.replace(QChar(u'\0'), QChar(0x2400)); }

}  // namespace quorvel::qt
