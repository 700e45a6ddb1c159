#include "ui/app_window.h"

#include "ui/menu_bar.h"

namespace quorvel {

void AppWindow::LayOut(PropertySet properties) {
  MenuBar(MenuBar1());
  _SetProperties(*this, properties);
}

}  // namespace quorvel
