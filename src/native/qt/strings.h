#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quorvel::qt {

inline QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string ToUtf8(const QString& text) { return text.toStdString(); }

/// The text with the symbol U+2400 for each NUL.
inline QString WithVisibleNulls(QString text) { return text.replace(QChar(u'\0'), QChar(0x2400)); }

}  // namespace quorvel::qt
