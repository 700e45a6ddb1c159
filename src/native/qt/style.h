#pragma once

#include <QIcon>
#include <QProxyStyle>

namespace quorvel::qt {

/// The desktop's style, without the picture of the button that leads to the menus for which a menu
/// bar has no room. The toolkit reads this picture for every menu bar, and with the first picture
/// the modules for all formats of pictures, a twentieth of the start. `MenuBar` draws an arrow
/// instead.
class Style final : public QProxyStyle {
 public:
  using QProxyStyle::QProxyStyle;

  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                     const QWidget* widget) const override {
    if (icon == SP_ToolBarHorizontalExtensionButton) return {};
    return QProxyStyle::standardIcon(icon, option, widget);
  }
};

}  // namespace quorvel::qt
