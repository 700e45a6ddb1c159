#include "native/qt/view/copied_text.h"

#include "native/text/utf8.h"

namespace quorvel::qt {

QVariant CopiedText::retrieveData(const QString& format, QMetaType) const {
  if (!hasFormat(format)) return {};
  if (IsValidUtf8(bytes)) return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return QByteArray::fromStdString(ToValidUtf8(bytes));
}

}  // namespace quorvel::qt
