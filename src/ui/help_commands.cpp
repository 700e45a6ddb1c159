// The Help menu's commands live on the application, so that they work over every window.

#include "key/key_is_window.h"
#include "shell/app.h"
#include "ui/about_window.h"
#include "ui/help_window.h"

namespace quorvel::app {

bool App::_HelpAbout_Action() {
  wAbout()->Show();
  return false;
}

bool App::_HelpHelp_Action() {
  wHelp()->Show();
  return false;
}

bool App::_HelpKeyInformation_Action() {
  wKeyIs()->Show();
  return false;
}

}  // namespace quorvel::app
