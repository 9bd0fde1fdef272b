// A keyboard shortcut: one key of the keyboard and the modifiers held with it. A value; no shortcut is an
// empty optional. Key codes are virtual key codes, modifier flags the device-independent ones of
// scene/Event.h, texts UTF-8. Its static operations register shortcuts as system-wide hot keys, alone or
// bound to a key of the preferences store. Used by the settings store, the recorder and the settings window.
// Main thread only.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Registration.h"
#include "platform/HotKeys.h"
#include "scene/Event.h"
#include "shortcut/KeyNames.h"
#include "shortcut/ShortcutMenuItem.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orbel {

class MASShortcutUserDefaultsHotKey;

class MASShortcut {
public:
  MASShortcut(std::uint64_t keyCode, std::uint64_t modifierFlags);
  static MASShortcut shortcutWithKeyCode(std::uint64_t keyCode, std::uint64_t modifierFlags);
  // The low 16 bits of the event's key code count.
  static MASShortcut shortcutWithEvent(const KeyEvent& event);
  // None for no data, for an archive of nothing and for bytes that are no archived shortcut (logged).
  static std::optional<MASShortcut> shortcutWithData(const PropertyList::Data* data);

  // The keyed archive that the preferences store holds.
  PropertyList::Data data() const;
  // The archive that reads back as no shortcut.
  static PropertyList::Data dataOfNothing();

  // kNoKeyCode for no key.
  std::uint64_t keyCode() const { return m_keyCode; }
  void setKeyCode(std::uint64_t keyCode) { m_keyCode = keyCode; }
  // Only Shift, Control, Option and Command are kept.
  std::uint64_t modifierFlags() const { return m_modifierFlags; }
  void setModifierFlags(std::uint64_t flags) { m_modifierFlags = flags & kAllModifierFlags; }

  // The codes of the hot-key interface; no key is 0 there.
  std::uint64_t carbonKeyCode() const;
  std::uint32_t carbonFlags() const;

  // The key as menus write it: a glyph, a word, or what the current keyboard layout yields, upper-cased. May
  // be empty.
  std::string keyCodeString() const;
  // The key as a menu item's key equivalent: one character, or empty.
  std::string keyCodeStringForKeyEquivalent() const;
  // Glyphs in the order Control, Option, Shift, Command.
  std::string modifierFlagsString() const;
  // The modifiers' glyphs followed by the key's text.
  std::string description() const;

  // Whether it may be a global shortcut: typing must stay possible.
  bool isValid() const;
  // Command+W and Command+Q stay the program's own commands while a shortcut is recorded.
  bool shouldBypass() const;
  // Whether Option alone makes any key valid (false at first). Process-wide.
  static bool allowsAnyHotkeyWithOptionModifier();
  static void setAllowsAnyHotkeyWithOptionModifier(bool allows);

  // Whether another program or an item of the program's own menu uses it already, by the localized reason for
  // that: none when it is free.
  std::optional<std::string> isTaken() const;
  // The same for a menu alone: whether one of its items, submenus first, has that key equivalent (lower case)
  // with these modifiers.
  static std::optional<std::string> isKeyEquivalentTakenInMenu(std::string_view keyEquivalent,
                                                               std::uint64_t flags, const ShortcutMenu& menu);
  // The program's own menu, which isTaken() searches; empty until the program has one. Process-wide.
  static const ShortcutMenu& mainMenu();
  static void setMainMenu(ShortcutMenu menu);

  using Handler = std::function<void()>;
  // The shortcut's description; two tokens of one text stand for the same monitor. Empty for none.
  using MonitorToken = std::shared_ptr<const std::string>;

  // Runs the handler on every press, whichever program is in front. Empty when the combination has a monitor
  // already (the first one wins) or the system refuses it. A system that refuses later ends the monitor then.
  static MonitorToken addGlobalHotkeyMonitorWithShortcut(const MASShortcut& shortcut, Handler handler);
  static void removeGlobalHotkeyMonitor(const MonitorToken& token);

  // Keeps the shortcut stored under the key registered, whatever it is changed to, until it is unregistered.
  // An earlier binding of the key is destroyed after the new one is made, so unregister first where both hold
  // the same shortcut.
  static void registerGlobalShortcutWithUserDefaultsKey(const std::string& key, Handler handler);
  static void unregisterGlobalShortcutWithUserDefaultsKey(const std::string& key);
  // Stores the shortcut, or removes the key for none; a binding of the key follows at once.
  static void setGlobalShortcut(const std::optional<MASShortcut>& shortcut,
                                const std::string& userDefaultsKey);
  // Stores what data() or dataOfNothing() gave; a binding of the key follows at once. The shortcut that is
  // stored already is tried again where the system refused it: the program that held it may have ended.
  static void storeGlobalShortcut(PropertyList::Data data, const std::string& userDefaultsKey);

  // How the hot key of a bound key stands with the desktop. None while the key is not bound or no shortcut is
  // stored under it.
  static std::optional<HotKeyAnswer> hotKeyAnswer(const std::string& userDefaultsKey);
  // Calls the block after any such answer may have changed.
  static Registration observeHotKeyAnswers(std::function<void()> block);

  using UserDefaultsHotKeys = std::map<std::string, std::unique_ptr<MASShortcutUserDefaultsHotKey>>;
  static const UserDefaultsHotKeys& registeredUserDefaultsHotKeys();

  friend bool operator==(const MASShortcut&, const MASShortcut&) = default;

private:
  std::uint64_t m_keyCode;
  std::uint64_t m_modifierFlags;
};

} // namespace orbel
