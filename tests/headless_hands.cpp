#include <utility>

#include "support/hands.h"
#include "support/side.h"

namespace quorvel {

namespace {

class HeadlessHands : public Hands {
 public:
  HeadlessHands() { mSide.desktop.resources = QUORVEL_RESOURCES; }

  native::Side& Side() override { return mSide; }

  bool WaitUntil(const std::function<bool()>& reached) override {
    for (int second = 0; second < 100 && !reached(); ++second) {
      mSide.loop.Settle();
      if (!reached()) mSide.loop.Advance(std::chrono::seconds(1));
    }
    return reached();
  }
  void Post(std::function<void()> step) override { mSide.loop.Post(std::move(step)); }

  bool IsOpen(const std::string& title) override { return mSide.windows.Find(title) != nullptr; }
  std::pair<int, int> ContentSize(const std::string& title) override {
    const auto& state = mSide.windows.Find(title)->state;
    return {state.Width, state.Height};
  }
  std::string ShownText(const std::string& field) override {
    return mSide.windows.FindControl(field)->text;
  }
  Place PlaceOf(const std::string& control) override {
    const auto& state = mSide.windows.FindControl(control)->State();
    return {state.Left, state.Top, state.Width, state.Height};
  }
  bool HasFingerCursor(const std::string& control) override {
    return mSide.windows.FindControl(control)->State().FingerPointer;
  }
  std::vector<std::string> EnabledItems() override {
    mSide.windows.OpenMenus();
    std::vector<std::string> enabled;
    for (const auto& menu : mSide.windows.menus) {
      for (const auto& item : menu.Children) {
        if (item.Enabled) enabled.push_back(item.Name);
      }
    }
    return enabled;
  }
  std::vector<std::string> Messages() override { return mSide.dialogs.messages; }

  void PressCloseButton(const std::string& title) override { Listener(title).OnCloseRequested(); }
  void Resize(const std::string& title, int width, int height) override {
    Listener(title).OnResized(width, height, true);
    Listener(title).OnResized(width, height, false);
  }
  void BringToFront(const std::string& title) override { mSide.windows.BringToFront(title); }
  void Choose(const std::string& item) override { mSide.windows.Choose(item); }
  void Type(const std::string& field, const std::string& text) override {
    const auto control = mSide.windows.FindControl(field);
    control->text += text;
    control->field_listener->OnEdited(control->text);
  }
  void PressButton(const std::string& button) override {
    const auto pressed = mSide.windows.FindControl(button)->pressed;
    pressed();
  }
  void FollowLink(const std::string& link) override {
    const auto& window = *mSide.windows.open.front();
    const auto& state = mSide.windows.FindControl(link)->State();
    if (!std::get<native::LabelState>(mSide.windows.FindControl(link)->kind).Link) return;
    const native::Point middle{state.Left + state.Width / 2, state.Top + state.Height / 2};
    window.listener->OnMousePressed(middle);
    window.listener->OnMouseReleased(middle);
  }
  void MoveMouse(const std::string& title, int x, int y) override {
    Listener(title).OnMouseMoved({x, y});
  }
  void PressMouse(const std::string& title, int x, int y) override {
    Listener(title).OnMousePressed({x, y});
  }
  void ReleaseMouse(const std::string& title, int x, int y) override {
    Listener(title).OnMouseReleased({x, y});
  }
  void WhileNextMessageIsUp(std::function<void()> act) override {
    mSide.dialogs.while_open = std::move(act);
  }

 private:
  native::WindowListener& Listener(const std::string& title) {
    return *mSide.windows.Find(title)->listener;
  }

  test::Side mSide;
};

}  // namespace

std::unique_ptr<Hands> Hands::Make() { return std::make_unique<HeadlessHands>(); }

}  // namespace quorvel
