// The collision checks of MASShortcut.
#include "foundation/SharedObjects.h"
#include "platform/Platform.h"
#include "shortcut/MASShortcut.h"

#include <utility>

namespace orbel {

namespace {
constexpr const char* kTakenBySystem = "This combination cannot be used because it is already used by a "
                                       "system-wide keyboard shortcut.\nIf you really want "
                                       "to use this key combination, most shortcuts can be changed in the "
                                       "Keyboard & Mouse panel in System Preferences.";
constexpr const char* kTakenByMenuItem =
    "This shortcut cannot be used because it is already used by the menu item \u2018%@\u2019.";
constexpr std::string_view kPlaceholder = "%@";

struct ProgramMenu {
  ShortcutMenu entries;
};

ShortcutMenu& programMenu() {
  return SharedObjects::current().get<ProgramMenu>().entries;
}

std::string takenBy(const ShortcutMenuItem& item) {
  std::string reason = Platform::current().text.localized(kTakenByMenuItem);
  if (const auto place = reason.find(kPlaceholder); place != std::string::npos) {
    reason.replace(place, kPlaceholder.size(), item.title);
  }
  return reason;
}

bool collides(const ShortcutMenuItem& item, std::string_view keyEquivalent, std::uint64_t flags) {
  if (Platform::current().text.lowercased(item.keyEquivalent) != keyEquivalent) return false;
  std::uint64_t needed = item.modifierMask & kAllModifierFlags;
  if (item.keyEquivalent != keyEquivalent) needed |= kShiftFlag; // an upper-case letter
  return needed == flags;
}
} // namespace

std::optional<std::string> MASShortcut::isTaken() const {
  const Platform& platform = Platform::current();
  // Where the desktop does not report it, registering will.
  if (platform.hotKeys.isTakenByAnotherProgram(m_keyCode, carbonFlags()).value_or(false))
    return platform.text.localized(kTakenBySystem);
  return isKeyEquivalentTakenInMenu(keyCodeStringForKeyEquivalent(), m_modifierFlags, mainMenu());
}

std::optional<std::string> MASShortcut::isKeyEquivalentTakenInMenu(std::string_view keyEquivalent,
                                                                   std::uint64_t flags,
                                                                   const ShortcutMenu& menu) {
  for (const ShortcutMenuItem& item : menu) {
    if (auto reason = isKeyEquivalentTakenInMenu(keyEquivalent, flags, item.submenu)) return reason;
    if (collides(item, keyEquivalent, flags)) return takenBy(item);
  }
  return std::nullopt;
}

const ShortcutMenu& MASShortcut::mainMenu() {
  return programMenu();
}

void MASShortcut::setMainMenu(ShortcutMenu menu) {
  programMenu() = std::move(menu);
}

} // namespace orbel
