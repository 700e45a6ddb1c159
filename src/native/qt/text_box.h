#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "native/native.h"
#include "native/qt/content.h"

namespace quorvel::qt {

/// The user changed a box's text. The box may be gone when this returns.
using Edited = std::function<void(const QString& text)>;

/// One of the widgets that a text field can be.
class TextBox {
 public:
  virtual ~TextBox() = default;
  virtual void Update(const native::ControlState& state) = 0;
  [[nodiscard]] virtual QString Text() const = 0;
  virtual void SetText(const QString& text) = 0;
  virtual void AppendText(const QString& text) = 0;
  virtual void Refresh() = 0;
};

[[nodiscard]] std::unique_ptr<TextBox> MakeTextLine(Content& content, Edited edited);
[[nodiscard]] std::unique_ptr<TextBox> MakeTextArea(Content& content, Edited edited);

/// The colours of a text field.
[[nodiscard]] QPalette TextBoxColors(const native::ControlState& state);

}  // namespace quorvel::qt
