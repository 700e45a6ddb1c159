#include "app/entry.h"

#include "app/app.h"
#include "platform/runtime/runtime.h"
#include "platform/windows/window.h"
#include "ui/file_types.h"
#include "ui/globals.h"
#include "ui/menu_bar.h"
#include "ui/resources.h"

namespace quorvel {

namespace {

void _NewAppInstance() {
  const auto app = New<app::App>();
  app->MenuBar(MenuBar1());
  _RuntimeRegisterAppObject(app);
}

void _ApplicationAddMenuHandlers() {
  const auto app = quorvel::App();
  app->_AddMenuHandler("HelpAbout", [] { return App()->_HelpAbout_Action(); });
  app->_AddMenuHandler("HelpHelp", [] { return App()->_HelpHelp_Action(); });
  app->_AddMenuHandler("HelpKeyInformation", [] { return App()->_HelpKeyInformation_Action(); });
}

void finalize() {
  _ReleaseResources();
  _WindowSupport::ReleaseAll();
  App()->MenuBar(Nil);
  _ReleaseMenuBar1();
  mGlobals::_Release();
  FileTypes1::pText = Nil;
}

}  // namespace

void _Start(native::Side& side) {
  RuntimeInit(side);
  FileTypes1::_Initialize();
  _NewAppInstance();
  _ApplicationAddMenuHandlers();
}

int _Finish() {
  finalize();
  return RuntimeExit();
}

int RunQuorvel(native::Side& side) {
  _Start(side);
  _RuntimeRun();
  return _Finish();
}

}  // namespace quorvel
