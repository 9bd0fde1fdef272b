// A settings window without a screen: the test reads what the form shows and acts as its user through the
// delegate.
#pragma once

#include "platform/SettingsForm.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class FakeManagedWindow : public ManagedWindow {
public:
  void setDelegate(ManagedWindowDelegate* newDelegate) override { delegate = newDelegate; }
  Rect frame() const override { return screenFrame; }
  void setFrameOrigin(Point origin) override { screenFrame.origin = origin; }
  void center() override { happened.emplace_back("center"); }
  void makeKeyAndOrderFront() override {
    happened.emplace_back("makeKeyAndOrderFront");
    visible = true;
  }
  void close() override {
    happened.emplace_back("close");
    visible = false;
  }
  bool isVisible() const override { return visible; }
  void setFloating(bool isFloating) override { floating = isFloating; }
  bool supportsBackdropBlur() const override { return blur; }
  void setRoundedBackdrop(BackdropMaterial newMaterial, double inset, double cornerRadius) override {
    backdrop = Backdrop{newMaterial, inset, cornerRadius, screenFrame.size};
  }
  ColorScheme colorScheme() const override { return scheme; }
  void needsDisplay(const Rect& rect) override { damage = damage.unitedWith(rect); }

  // As if the user had changed the desktop's look, or the form had grown.
  void changeColorScheme(ColorScheme newScheme) {
    scheme = newScheme;
    if (delegate) delegate->colorSchemeDidChange();
  }
  void resize(Size size) {
    screenFrame.size = size;
    if (delegate) delegate->windowDidResize();
  }

  struct Backdrop {
    BackdropMaterial material;
    double inset;
    double cornerRadius;
    Size size; // of the window when it was set
  };
  ManagedWindowDelegate* delegate = nullptr;
  Rect screenFrame{300, 200, 420, 380};
  bool visible = false;
  bool floating = false;
  bool blur = true;
  ColorScheme scheme = ColorScheme::light;
  std::optional<Backdrop> backdrop;
  Rect damage;
  std::vector<std::string> happened;
};

class FakePopover;

class FakeSettingsForm : public SettingsForm {
public:
  FakeSettingsForm(SettingsFormContents formContents, SettingsFormDelegate& formDelegate)
      : contents(std::move(formContents)), delegate(formDelegate) {}
  ManagedWindow& window() override { return managedWindow; }
  void setValues(const SettingsValues& newValues) override {
    values = newValues;
    ++timesSet;
  }
  void setHelpButtonVisible(bool visible) override { helpButtonVisible = visible; }
  std::unique_ptr<Popover> makePopover(std::function<void()> didClose) override;

  SettingsFormContents contents;
  SettingsFormDelegate& delegate;
  std::shared_ptr<FakeManagedWindow> sharedWindow =
      std::make_shared<FakeManagedWindow>(); // tests may keep it
  FakeManagedWindow& managedWindow = *sharedWindow;
  SettingsValues values;
  int timesSet = 0;
  bool helpButtonVisible = false;
  std::vector<FakePopover*> popovers; // those that live
};

class FakePopover : public Popover {
public:
  FakePopover(FakeSettingsForm& form, std::function<void()> didClose)
      : m_form(form), m_didClose(std::move(didClose)) {}
  ~FakePopover() override { std::erase(m_form.popovers, this); }
  void setContent(std::vector<HostedView> views, int columnCount) override {
    content = std::move(views);
    columns = columnCount;
  }
  void show(SettingsControl control) override { beside = control; }
  // Also as if the user had clicked elsewhere.
  void close() override {
    if (!std::exchange(beside, std::nullopt)) return;
    const auto told = m_didClose; // may destroy this object
    if (told) told();
  }
  bool isShown() const override { return beside.has_value(); }

  std::vector<HostedView> content;
  int columns = 0;
  std::optional<SettingsControl> beside; // while shown

private:
  FakeSettingsForm& m_form;
  std::function<void()> m_didClose;
};

inline std::unique_ptr<Popover> FakeSettingsForm::makePopover(std::function<void()> didClose) {
  auto popover = std::make_unique<FakePopover>(*this, std::move(didClose));
  popovers.push_back(popover.get());
  return popover;
}

class FakeSettingsForms : public SettingsForms {
public:
  std::unique_ptr<SettingsForm> load(SettingsFormContents contents, SettingsFormDelegate& delegate) override {
    auto form = std::make_unique<FakeSettingsForm>(std::move(contents), delegate);
    last = form.get();
    ++loads;
    return form;
  }
  FakeSettingsForm* last = nullptr; // the newest, which may be gone
  int loads = 0;
};

} // namespace orbel
