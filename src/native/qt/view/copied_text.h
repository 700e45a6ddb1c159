#pragma once

#include <QMimeData>
#include <memory>
#include <string_view>

namespace quorvel::qt {

/// Keeps the bytes of a text as they are now, for as long as a copy of the pointer lives.
using Keeper = std::shared_ptr<const void>;

/// A piece of text for the clipboard. The form that a reader wants is made when the reader asks, so
/// copying costs nothing however long the text is.
class CopiedText final : public QMimeData {
 public:
  /// `keeper` keeps `bytes`.
  CopiedText(std::string_view the_bytes, Keeper the_keeper)
      : bytes(the_bytes), keeper(std::move(the_keeper)) {}

  [[nodiscard]] QStringList formats() const override { return {"text/plain"}; }
  [[nodiscard]] bool hasFormat(const QString& format) const override {
    return format == "text/plain";
  }

 protected:
  [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType type) const override;

 private:
  std::string_view bytes;
  Keeper keeper;
};

}  // namespace quorvel::qt
