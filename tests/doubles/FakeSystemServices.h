// The small platform interfaces as doubles: graphics, text, hot keys, keyboard layout, event taps, menus
// and dialogs.
#pragma once

#include "foundation/Log.h"
#include "platform/Platform.h"
#include "tests/doubles/RecordingCanvas.h"

#include <algorithm>
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
  Bitmap render(int pixelWidth, int pixelHeight, Size pointSize,
                const std::function<void(Canvas&)>& drawing) override {
    if (pixelWidth <= 0 || pixelHeight <= 0) return {};
    // Drawings nest: the canvas of the outermost one, which ends last, is the one that is kept.
    RecordingCanvas canvas;
    canvas.backingScale = pixelWidth / pointSize.width;
    drawing(canvas);
    lastCanvas = std::move(canvas);
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
      if (byte <= 0x20 || byte == 0x7f) return false; // separators and controls
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
  static constexpr std::uint64_t kHighestKeyCode = 127; // of the keyboard; beyond it there are no keys
  struct Entry {
    std::uint64_t keyCode;
    std::uint32_t modifiers;
    HotKeyIdentity identity;
    AnswerBlock answered = nullptr;
    bool isBound = false;
  };
  Registration installHandler(Handler newHandler) override {
    if (!installSucceeds || *m_handler) return {};
    ++handlerInstallations;
    *m_handler = std::move(newHandler);
    return Registration([handler = m_handler] { *handler = nullptr; });
  }
  Registration registerHotKey(std::uint64_t keyCode, std::uint32_t modifiers, HotKeyIdentity identity,
                              AnswerBlock answered) override {
    asked.push_back({keyCode, modifiers, identity});
    auto entry = std::make_shared<Entry>(Entry{keyCode, modifiers, identity, std::move(answered)});
    m_entries->push_back(entry);
    if (!answersLater && !answer(entry, usualAnswer(*entry))) return {};
    return Registration([entry, entries = std::weak_ptr(m_entries)] {
      if (const auto list = entries.lock()) std::erase(*list, entry);
    });
  }
  std::optional<bool> isTakenByAnotherProgram(std::uint64_t keyCode, std::uint32_t modifiers) override {
    if (!tellsWhatIsTaken) return std::nullopt;
    return takenByOthers.contains({keyCode, modifiers});
  }

  // Gives everything that waits the answer that it would have had at once.
  void answerAll() {
    const auto entries = *m_entries;
    for (const auto& entry : entries)
      if (isLiving(entry) && !entry->isBound) answer(entry, usualAnswer(*entry));
  }
  // Gives the registrations of a combination this answer, the first or another one.
  void answer(std::uint64_t keyCode, std::uint32_t modifiers, const HotKeyAnswer& given) {
    const auto entries = *m_entries;
    for (const auto& entry : entries)
      if (isLiving(entry) && entry->keyCode == keyCode && entry->modifiers == modifiers) answer(entry, given);
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
  // Presses a combination: all for whom it is bound receive it.
  void press(std::uint64_t keyCode, std::uint32_t modifiers) const {
    const auto entries = *m_entries;
    for (const auto& entry : entries) {
      const bool isMeant = entry->isBound && entry->keyCode == keyCode && entry->modifiers == modifiers;
      if (isMeant && isLiving(entry)) deliver(entry->identity);
    }
  }

  bool installSucceeds = true;
  int handlerInstallations = 0;
  std::set<std::pair<std::uint64_t, std::uint32_t>> takenByOthers;
  std::vector<Entry> asked; // every registration that was tried, also the refused ones
  bool answersLater = false;
  bool tellsWhatIsTaken = true;

private:
  using EntryPointer = std::shared_ptr<Entry>;
  bool isLiving(const EntryPointer& entry) const {
    return std::find(m_entries->begin(), m_entries->end(), entry) != m_entries->end();
  }
  HotKeyAnswer usualAnswer(const Entry& entry) const {
    if (takenByOthers.contains({entry.keyCode, entry.modifiers}) || entry.keyCode > kHighestKeyCode)
      return Failure{"no hot key for the key code " + std::to_string(entry.keyCode)};
    return HotKeyStatus{HotKeyStatus::State::bound};
  }
  // Whether it was no refusal.
  bool answer(const EntryPointer& entry, const HotKeyAnswer& given) {
    entry->isBound = given && given->state != HotKeyStatus::State::pending;
    if (!given) std::erase(*m_entries, entry);
    if (const auto answered = entry->answered) answered(given);
    return given.succeeded();
  }

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

// Input is what the test makes of it; it reaches the taps that live and are enabled.
class FakeEventTaps : public EventTaps {
public:
  struct TapState {
    std::string kind; // "touch", "mouseUp" or "mouseMoved"
    std::function<void()> block;
    std::function<MovementUse()> moved;
    TouchHandlers touch;
    bool enabled = false;
    bool alive = true;
  };
  std::unique_ptr<EventTap> makeMouseUpTap(std::function<void()> block) override {
    return makeTap({"mouseUp", std::move(block), {}, {}});
  }
  std::unique_ptr<EventTap> makeMouseMovedTap(std::function<MovementUse()> moved) override {
    return makeTap({"mouseMoved", {}, std::move(moved), {}});
  }
  bool tellsMovements() const override { return movementsAreTold; }
  std::unique_ptr<EventTap> makeTouchTap(TouchHandlers handlers) override {
    return makeTap({"touch", {}, {}, std::move(handlers)});
  }
  bool isTrusted() override { return trusted; }
  Result<> checkTouchpadAccess() override { return touchpadAccess; }
  bool isEnabled(const std::string& kind) const {
    for (const auto& tap : taps) {
      if (tap->alive && tap->kind == kind) return tap->enabled;
    }
    return false;
  }

  // The primary button is released.
  void mouseUp() const {
    tell("mouseUp", [](const TapState& tap) { tap.block(); });
  }
  // The pointer moves with no button held; what the last tap made of it.
  MovementUse mouseMoved() const {
    MovementUse use = MovementUse::ignored;
    if (!movementsAreTold) return use;
    tell("mouseMoved", [&](const TapState& tap) { use = tap.moved(); });
    return use;
  }
  void touchesChanged(const std::vector<Touch>& touches) const {
    tell("touch", [&](const TapState& tap) {
      if (tap.touch.touchesChanged) tap.touch.touchesChanged(touches);
    });
  }
  void magnified() const {
    tell("touch", [](const TapState& tap) {
      if (tap.touch.magnified) tap.touch.magnified();
    });
  }

  std::vector<std::shared_ptr<TapState>> taps; // in the order of creation
  bool trusted = true;
  bool movementsAreTold = true; // false: a display that keeps them to itself
  Result<> touchpadAccess;

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
  std::unique_ptr<EventTap> makeTap(TapState state) {
    taps.push_back(std::make_shared<TapState>(std::move(state)));
    return std::make_unique<FakeTap>(taps.back());
  }
  template <class Telling>
  void tell(const std::string& kind, Telling telling) const {
    const auto told = taps;
    for (const auto& tap : told) {
      if (tap->alive && tap->enabled && tap->kind == kind) telling(*tap);
    }
  }
};

// Keeps the menu that is open; the test chooses an entry by its title. Opening another one closes it.
class FakeContextMenus : public ContextMenus {
public:
  // A menu without a visible entry never opens.
  std::unique_ptr<OpenContextMenu> popUp(std::vector<MenuEntry> newEntries, ContextMenuDelegate* newDelegate,
                                         const Surface& newSurface, Point newPlace) override {
    close();
    surface = &newSurface;
    place = newPlace;
    m_tracking = std::make_shared<Tracking>(Tracking{newDelegate});
    entries = std::move(newEntries);
    const auto isShown = [](const MenuEntry& entry) { return !entry.isHidden && !entry.isSeparator; };
    isOpen = std::any_of(entries.begin(), entries.end(), isShown);
    auto handle = std::make_unique<Handle>(*this, m_tracking);
    if (!isOpen) return handle;
    ++timesOpened;
    if (newDelegate) newDelegate->menuWillOpen();
    return handle;
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
  // False when there is no such visible entry, or it is disabled or one that only opens a submenu.
  bool choose(const std::string& title) {
    const MenuEntry* found = find(title);
    if (!isOpen || !found || !found->isEnabled || !found->submenu.empty()) return false;
    const MenuEntry chosen = *found;
    const auto tracking = m_tracking;
    close();
    if (chosen.action && !tracking->isAbandoned) chosen.action(chosen);
    return true;
  }
  void close() {
    if (!std::exchange(isOpen, false)) return;
    const auto tracking = m_tracking;
    if (tracking->delegate && !tracking->isAbandoned) tracking->delegate->menuDidClose();
  }

  std::vector<MenuEntry> entries;
  const Surface* surface = nullptr; // of the newest menu; may be dangling
  Point place;                      // in the surface's points
  bool isOpen = false;
  int timesOpened = 0;

private:
  struct Tracking {
    ContextMenuDelegate* delegate = nullptr;
    bool isAbandoned = false; // its handle has been destroyed
  };
  class Handle : public OpenContextMenu {
  public:
    Handle(FakeContextMenus& menus, std::shared_ptr<Tracking> tracking)
        : m_menus(menus), m_tracking(std::move(tracking)) {}
    ~Handle() override {
      m_tracking->isAbandoned = true;
      end();
    }
    void cancelTracking() override { end(); }

  private:
    void end() {
      if (m_menus.m_tracking == m_tracking) m_menus.close();
    }
    FakeContextMenus& m_menus;
    std::shared_ptr<Tracking> m_tracking;
  };
  static const MenuEntry* find(const std::vector<MenuEntry>& menu, const std::string& title) {
    for (const MenuEntry& entry : menu) {
      if (entry.isHidden) continue;
      if (!entry.isSeparator && entry.title == title) return &entry;
      if (const MenuEntry* nested = find(entry.submenu, title)) return nested;
    }
    return nullptr;
  }

  std::shared_ptr<Tracking> m_tracking;
};

// Keeps the dialogs that are up; the test answers the newest of a kind.
class FakeDialogs : public Dialogs {
public:
  void runTextPrompt(const TextPrompt& newPrompt, const Surface* newOwner,
                     std::function<void(std::optional<std::string>)> done) override {
    owner = newOwner;
    m_prompts.emplace_back(newPrompt, std::move(done));
    prompt = newPrompt;
  }
  void runAlert(const Alert& newAlert, const Surface* newOwner, std::function<void()> done) override {
    owner = newOwner;
    m_alerts.emplace_back(newAlert, std::move(done));
    alert = newAlert;
  }
  void runOpenPanel(const OpenPanel& newPanel, const Surface* newOwner,
                    std::function<void(std::optional<std::string>)> done) override {
    owner = newOwner;
    m_panels.emplace_back(newPanel, std::move(done));
    panel = newPanel;
  }
  void answerPrompt(std::optional<std::string> text) {
    if (const auto done = take(m_prompts, prompt)) done(std::move(text));
  }
  void closeAlert() {
    if (const auto done = take(m_alerts, alert)) done();
  }
  // False when that file cannot be chosen; then the panel stays.
  bool answerPanel(std::optional<std::string> path) {
    if (path && panel && panel->shouldEnable && !panel->shouldEnable(*path)) return false;
    if (const auto done = take(m_panels, panel)) done(std::move(path));
    return true;
  }

  // The newest, while one is up.
  std::optional<TextPrompt> prompt;
  std::optional<Alert> alert;
  std::optional<OpenPanel> panel;
  const Surface* owner = nullptr; // of the dialog that was asked for last; may be dangling

private:
  template <class Request, class Done>
  using Running = std::vector<std::pair<Request, Done>>;

  // Ends the newest and shows the one before it.
  template <class Request, class Done>
  static Done take(Running<Request, Done>& running, std::optional<Request>& shown) {
    if (running.empty()) return nullptr;
    auto done = std::move(running.back().second);
    running.pop_back();
    shown.reset();
    if (!running.empty()) shown = running.back().first;
    return done;
  }

  Running<TextPrompt, std::function<void(std::optional<std::string>)>> m_prompts;
  Running<Alert, std::function<void()>> m_alerts;
  Running<OpenPanel, std::function<void(std::optional<std::string>)>> m_panels;
};

} // namespace orbel
