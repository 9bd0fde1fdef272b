// A settings window without a screen: the test reads what the form shows and acts as its user, on controls
// that it names by their identifiers.
#pragma once

#include "platform/SettingsForm.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class FakeManagedWindow : public ManagedWindow {
public:
  void setDelegate(ManagedWindowDelegate* newDelegate) override { delegate = newDelegate; }
  Rect frame() const override { return screenFrame; }
  void setFrameOrigin(Point origin) override { screenFrame.origin = origin; }
  bool beginInteractiveMove() override {
    if (movedByDisplay) happened.emplace_back("beginInteractiveMove");
    return movedByDisplay;
  }
  void center() override { happened.emplace_back("center"); }
  void makeKeyAndOrderFront() override {
    happened.emplace_back("makeKeyAndOrderFront");
    visible = true;
  }
  void close() override {
    happened.emplace_back("close");
    visible = false;
    if (closed) closed();
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
  std::function<void()> closed; // the form's
  ManagedWindowDelegate* delegate = nullptr;
  Rect screenFrame{300, 200, 420, 380};
  bool visible = false;
  bool floating = false;
  bool blur = true;
  bool movedByDisplay = false; // what it answers to a press on its background
  ColorScheme scheme = ColorScheme::light;
  std::optional<Backdrop> backdrop;
  Rect damage;
  std::vector<std::string> happened;
};

class FakePopover;

class FakeSettingsForm : public SettingsForm {
public:
  explicit FakeSettingsForm(SettingsFormDescription formDescription)
      : description(std::move(formDescription)) {
    for (const SettingsControl* control : controls()) {
      visible[control->identifier] = true;
      if (std::holds_alternative<SettingsCheckBox>(control->kind)) values[control->identifier] = false;
      if (const auto* button = std::get_if<SettingsPopUpButton>(&control->kind))
        values[control->identifier] = button->choices.at(0).tag;
    }
    managedWindow.closed = [this] { closePopovers(); };
  }
  ~FakeSettingsForm() override { managedWindow.closed = nullptr; }
  ManagedWindow& window() override { return managedWindow; }
  void setValue(const std::string& identifier, SettingsValue value) override {
    values.at(identifier) = value;
    received.push_back(identifier);
  }
  void setVisible(const std::string& identifier, bool isVisible) override {
    visible.at(identifier) = isVisible;
  }
  std::unique_ptr<Popover> makePopover(std::function<void()> didClose) override;

  // As the Tab key visits them; those that take no keyboard, too.
  std::vector<const SettingsControl*> controls() const {
    std::vector<const SettingsControl*> all;
    for (const SettingsGroup& group : description.groups) {
      for (const SettingsRow& row : group.rows) {
        all.push_back(&row.control);
        if (row.accessory) all.push_back(&*row.accessory);
      }
    }
    for (const auto* footer : {&description.footerAtLeft, &description.footerAtRight}) {
      for (const SettingsControl& control : *footer)
        all.push_back(&control);
    }
    all.push_back(&description.closeButton);
    return all;
  }
  // Throws where there is none of that identifier and kind.
  template <class Kind>
  const Kind& control(const std::string& identifier) const {
    for (const SettingsControl* candidate : controls()) {
      if (candidate->identifier == identifier) return std::get<Kind>(candidate->kind);
    }
    throw std::out_of_range("the form has no control " + identifier);
  }
  const HostedView& hosted(const std::string& identifier) const { return control<HostedView>(identifier); }
  bool isOn(const std::string& checkBox) const { return std::get<bool>(values.at(checkBox)); }
  std::int64_t selectedTag(const std::string& popUpButton) const {
    return std::get<std::int64_t>(values.at(popUpButton));
  }

  // The user's actions.
  void click(const std::string& checkBox, bool on) {
    values.at(checkBox) = on;
    control<SettingsCheckBox>(checkBox).clicked(on);
  }
  void choose(const std::string& popUpButton, std::int64_t tag) {
    values.at(popUpButton) = tag;
    control<SettingsPopUpButton>(popUpButton).chosen(tag);
  }
  void press(const std::string& button) { control<SettingsButton>(button).pressed(); }
  // Calls the blocks of all keys that are these.
  void pressKey(const std::string& keyEquivalent, std::uint64_t modifierFlags) {
    for (const SettingsKey& key : description.keys) {
      if (key.keyEquivalent == keyEquivalent && key.modifierFlags == modifierFlags) key.pressed();
    }
  }

  SettingsFormDescription description;
  // Tests may keep it
  std::shared_ptr<FakeManagedWindow> sharedWindow = std::make_shared<FakeManagedWindow>();
  FakeManagedWindow& managedWindow = *sharedWindow;
  std::map<std::string, SettingsValue> values; // by identifier, as shown
  std::map<std::string, bool> visible;         // by identifier
  std::vector<std::string> received;           // identifiers of the controls that were sent a value
  std::vector<FakePopover*> popovers;          // those that live

private:
  void closePopovers();
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
  void show(const std::string& control) override { beside = control; }
  // Also as if the user had clicked elsewhere.
  void close() override {
    if (!std::exchange(beside, std::nullopt)) return;
    const auto told = m_didClose; // may destroy this object
    if (told) told();
  }
  bool isShown() const override { return beside.has_value(); }

  std::vector<HostedView> content;
  int columns = 0;
  std::optional<std::string> beside; // the control's identifier while shown

private:
  FakeSettingsForm& m_form;
  std::function<void()> m_didClose;
};

inline std::unique_ptr<Popover> FakeSettingsForm::makePopover(std::function<void()> didClose) {
  auto popover = std::make_unique<FakePopover>(*this, std::move(didClose));
  popovers.push_back(popover.get());
  return popover;
}

inline void FakeSettingsForm::closePopovers() {
  const auto earlier = popovers; // one that closes may destroy others
  for (FakePopover* popover : earlier) {
    if (std::count(popovers.begin(), popovers.end(), popover) > 0) popover->close();
  }
}

class FakeSettingsFormFactory : public SettingsFormFactory {
public:
  std::unique_ptr<SettingsForm> load(SettingsFormDescription description) override {
    auto form = std::make_unique<FakeSettingsForm>(std::move(description));
    last = form.get();
    ++loads;
    return form;
  }
  FakeSettingsForm* last = nullptr; // the newest, which may have been destroyed
  int loads = 0;
};

} // namespace orbel
