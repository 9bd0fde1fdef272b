// The small platform interfaces as doubles: graphics, text, hot keys, keyboard layout, event taps, menus and
// dialogs.
#pragma once

#include "doubles/RecordingCanvas.h"
#include "platform/Platform.h"

#include <cctype>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

// Runs every drawing on a recording canvas and yields a clear bitmap.
class FakeGraphics : public Graphics {
public:
  Bitmap render(int pixelWidth, int pixelHeight, Size, const std::function<void(Canvas&)>& drawing) override {
    lastCanvas = {};
    drawing(lastCanvas);
    ++renderings;
    return Bitmap(pixelWidth, pixelHeight);
  }
  RecordingCanvas lastCanvas;
  int renderings = 0;
};

// ASCII only, which is what the tests use.
class FakeTextServices : public TextServices {
public:
  int compareLocalizedCaseInsensitive(std::string_view left, std::string_view right) const override {
    return lowercased(left).compare(lowercased(right));
  }
  std::string uppercased(std::string_view text) const override { return mapped(text, &std::toupper); }
  std::string lowercased(std::string_view text) const override { return mapped(text, &std::tolower); }
  bool isAlphanumericPunctuationOrSymbol(std::string_view text) const override {
    for (const char character : text) {
      const auto byte = static_cast<unsigned char>(character);
      if (byte <= 0x20 || byte == 0x7f) return false;
    }
    return true;
  }
  std::string localized(std::string_view english) const override {
    const auto translation = translations.find(std::string(english));
    return translation == translations.end() ? std::string(english) : translation->second;
  }
  std::map<std::string, std::string> translations;

private:
  static std::string mapped(std::string_view text, int (*convert)(int)) {
    std::string result(text);
    for (char& character : result)
      character = static_cast<char>(convert(static_cast<unsigned char>(character)));
    return result;
  }
};

class FakeHotKeys : public HotKeys {
public:
  struct Entry {
    std::uint64_t keyCode;
    std::uint32_t modifiers;
    HotKeyIdentity identity;
  };
  Registration installHandler(Handler newHandler) override {
    if (!installSucceeds) return {};
    ++handlerInstallations;
    *m_handler = std::move(newHandler);
    return Registration([handler = m_handler] { *handler = nullptr; });
  }
  Registration registerHotKey(std::uint64_t keyCode, std::uint32_t modifiers,
                              HotKeyIdentity identity) override {
    if (takenByOthers.contains({keyCode, modifiers})) return {};
    auto entry = std::make_shared<Entry>(Entry{keyCode, modifiers, identity});
    m_entries->push_back(entry);
    return Registration([entry, entries = std::weak_ptr(m_entries)] {
      if (const auto list = entries.lock()) std::erase(*list, entry);
    });
  }
  bool isTakenByAnotherProgram(std::uint64_t keyCode, std::uint32_t modifiers) override {
    return takenByOthers.contains({keyCode, modifiers});
  }

  bool handlerInstalled() const { return static_cast<bool>(*m_handler); }
  std::vector<Entry> registered() const {
    std::vector<Entry> entries;
    for (const auto& entry : *m_entries)
      entries.push_back(*entry);
    return entries;
  }
  void deliver(HotKeyIdentity identity) const {
    if (const Handler handler = *m_handler) handler(identity);
  }
  // Presses a combination; nothing happens when nobody registered it.
  void press(std::uint64_t keyCode, std::uint32_t modifiers) const {
    for (const Entry& entry : registered()) {
      if (entry.keyCode == keyCode && entry.modifiers == modifiers) {
        deliver(entry.identity);
        return;
      }
    }
  }

  bool installSucceeds = true;
  int handlerInstallations = 0;
  std::set<std::pair<std::uint64_t, std::uint32_t>> takenByOthers;

private:
  std::shared_ptr<Handler> m_handler = std::make_shared<Handler>();
  std::shared_ptr<std::vector<std::shared_ptr<Entry>>> m_entries =
      std::make_shared<std::vector<std::shared_ptr<Entry>>>();
};

class FakeKeyboardLayout : public KeyboardLayout {
public:
  std::optional<std::string> textForKeyCode(std::uint64_t virtualKeyCode) const override {
    const auto text = texts.find(virtualKeyCode);
    if (text == texts.end()) return std::nullopt;
    return text->second;
  }
  std::map<std::uint64_t, std::string> texts = {{0, "a"}, {1, "s"}, {12, "q"}, {13, "w"}, {31, "o"}};
};

class FakeEventTaps : public EventTaps {
public:
  struct TapState {
    std::string kind; // "touch", "mouseUp" or "mouseMoved"
    bool enabled = false;
    bool alive = true;
  };
  std::unique_ptr<EventTap> makeMouseUpTap(std::function<void()> block) override {
    mouseUp = std::move(block);
    return makeTap("mouseUp");
  }
  std::unique_ptr<EventTap> makeMouseMovedTap(std::function<void()> block) override {
    mouseMoved = std::move(block);
    return makeTap("mouseMoved");
  }
  std::unique_ptr<EventTap> makeTouchTap(TouchHandlers handlers) override {
    touch = std::move(handlers);
    return makeTap("touch");
  }
  bool isTrusted() override { return trusted; }
  std::optional<std::string> unreadableTouchpad() override { return unreadable; }
  bool isEnabled(const std::string& kind) const {
    for (const auto& tap : taps) {
      if (tap->alive && tap->kind == kind) return tap->enabled;
    }
    return false;
  }

  std::vector<std::shared_ptr<TapState>> taps; // in the order of creation
  std::function<void()> mouseUp;
  std::function<void()> mouseMoved;
  TouchHandlers touch;
  bool trusted = true;
  std::optional<std::string> unreadable;

private:
  class FakeTap : public EventTap {
  public:
    explicit FakeTap(std::shared_ptr<TapState> state) : m_state(std::move(state)) {}
    ~FakeTap() override { m_state->alive = false; }
    void setEnabled(bool enabled) override { m_state->enabled = enabled; }
    bool isEnabled() const override { return m_state->enabled; }

  private:
    std::shared_ptr<TapState> m_state;
  };
  std::unique_ptr<EventTap> makeTap(const std::string& kind) {
    taps.push_back(std::make_shared<TapState>(TapState{kind}));
    return std::make_unique<FakeTap>(taps.back());
  }
};

// Keeps the menu that is open; the test chooses an entry by its title.
class FakeContextMenus : public ContextMenus {
public:
  std::unique_ptr<OpenContextMenu> popUpAtPointer(std::vector<MenuEntry> newEntries,
                                                  ContextMenuDelegate* newDelegate) override {
    entries = std::move(newEntries);
    delegate = newDelegate;
    isOpen = true;
    ++timesOpened;
    if (delegate) delegate->menuWillOpen();
    return std::make_unique<Handle>(*this);
  }

  std::vector<std::string> visibleTitles() const { return titles(entries); }
  static std::vector<std::string> titles(const std::vector<MenuEntry>& menu) {
    std::vector<std::string> result;
    for (const MenuEntry& entry : menu) {
      if (!entry.isHidden) result.push_back(entry.isSeparator ? "-" : entry.title);
    }
    return result;
  }
  const MenuEntry* find(const std::string& title) const { return find(entries, title); }
  // False when there is no such visible entry.
  bool choose(const std::string& title) {
    const MenuEntry* found = find(title);
    if (!isOpen || !found) return false;
    const MenuEntry chosen = *found;
    close();
    if (chosen.action) chosen.action(chosen);
    return true;
  }
  void close() {
    if (!std::exchange(isOpen, false)) return;
    if (auto* closed = std::exchange(delegate, nullptr)) closed->menuDidClose();
  }

  std::vector<MenuEntry> entries;
  ContextMenuDelegate* delegate = nullptr;
  bool isOpen = false;
  int timesOpened = 0;

private:
  class Handle : public OpenContextMenu {
  public:
    explicit Handle(FakeContextMenus& menus) : m_menus(menus) {}
    void cancelTracking() override { m_menus.close(); }

  private:
    FakeContextMenus& m_menus;
  };
  static const MenuEntry* find(const std::vector<MenuEntry>& menu, const std::string& title) {
    for (const MenuEntry& entry : menu) {
      if (entry.isHidden) continue;
      if (!entry.isSeparator && entry.title == title) return &entry;
      if (const MenuEntry* nested = find(entry.submenu, title)) return nested;
    }
    return nullptr;
  }
};

// Keeps the dialog that is up; the test answers it.
class FakeDialogs : public Dialogs {
public:
  void runTextPrompt(const TextPrompt& newPrompt,
                     std::function<void(std::optional<std::string>)> done) override {
    prompt = newPrompt;
    m_textDone = std::move(done);
  }
  void runAlert(const Alert& newAlert, std::function<void()> done) override {
    alert = newAlert;
    m_alertDone = std::move(done);
  }
  void runOpenPanel(const OpenPanel& newPanel,
                    std::function<void(std::optional<std::string>)> done) override {
    panel = newPanel;
    m_panelDone = std::move(done);
  }
  void answerPrompt(std::optional<std::string> text) {
    prompt.reset();
    if (auto done = std::exchange(m_textDone, nullptr)) done(std::move(text));
  }
  void closeAlert() {
    alert.reset();
    if (auto done = std::exchange(m_alertDone, nullptr)) done();
  }
  void answerPanel(std::optional<std::string> path) {
    panel.reset();
    if (auto done = std::exchange(m_panelDone, nullptr)) done(std::move(path));
  }

  std::optional<TextPrompt> prompt;
  std::optional<Alert> alert;
  std::optional<OpenPanel> panel;

private:
  std::function<void(std::optional<std::string>)> m_textDone;
  std::function<void()> m_alertDone;
  std::function<void(std::optional<std::string>)> m_panelDone;
};

} // namespace orbel
