#include "shortcut/MASShortcut.h"

#include "foundation/KeyedArchive.h"
#include "foundation/Log.h"
#include "foundation/SharedObjects.h"
#include "platform/Platform.h"

#include <algorithm>
#include <array>

namespace orbel {

namespace {
constexpr const char* kArchivedClass = "MASShortcut";
constexpr const char* kKeyCodeField = "KeyCode";
constexpr const char* kModifierFlagsField = "ModifierFlags";
constexpr std::int64_t kArchivedNoKey = -1; // where a key code stands in a stored shortcut
constexpr std::uint64_t kKeyCodeBitsOfEvent = 0xFFFF;

struct Modifier {
  std::uint64_t flag;
  std::uint32_t carbonFlag;
  std::string_view glyph;
};
// In the order in which menus show the glyphs.
constexpr std::array kModifiers = {
    Modifier{kControlFlag, kHotKeyControl, "\u2303"},
    Modifier{kOptionFlag, kHotKeyOption, "\u2325"},
    Modifier{kShiftFlag, kHotKeyShift, "\u21E7"},
    Modifier{kCommandFlag, kHotKeyCommand, "\u2318"},
};

// F1 as a menu's key equivalent; the other function keys follow.
constexpr std::uint32_t kFirstFunctionKeyCharacter = 0xF704;

struct ValidityRules {
  bool anyHotkeyWithOptionModifier = false;
};

ValidityRules& rules() {
  return SharedObjects::current().get<ValidityRules>();
}

// UTF-8 of a character of three bytes (U+0800 to U+FFFF).
std::string threeByteCharacter(std::uint32_t codePoint) {
  return {static_cast<char>(0xE0 | (codePoint >> 12)), static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)),
          static_cast<char>(0x80 | (codePoint & 0x3F))};
}

std::size_t characterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}
} // namespace

MASShortcut::MASShortcut(std::uint64_t keyCode, std::uint64_t modifierFlags)
    : m_keyCode(keyCode), m_modifierFlags(modifierFlags & kAllModifierFlags) {}

MASShortcut MASShortcut::shortcutWithKeyCode(std::uint64_t keyCode, std::uint64_t modifierFlags) {
  return {keyCode, modifierFlags};
}

MASShortcut MASShortcut::shortcutWithEvent(const KeyEvent& event) {
  return {event.keyCode & kKeyCodeBitsOfEvent, event.modifierFlags};
}

std::optional<MASShortcut> MASShortcut::shortcutWithData(const PropertyList::Data* data) {
  if (!data) return std::nullopt;
  const auto archive = KeyedArchive::unarchive(*data);
  Log::warningIfFailed(archive);
  if (!archive || !*archive) return std::nullopt;
  const auto& object = *archive;
  const auto keyCode = object->fields.find(kKeyCodeField);
  // Without a key code it would read as key 0 and take a letter away from everybody.
  if (object->className != kArchivedClass || keyCode == object->fields.end()) {
    Log::warning("a stored keyboard shortcut is ignored: the archive holds no shortcut");
    return std::nullopt;
  }
  const auto flags = object->fields.find(kModifierFlagsField);
  const std::uint64_t modifierFlags =
      flags == object->fields.end() ? 0 : static_cast<std::uint64_t>(flags->second);
  if (keyCode->second < 0) return MASShortcut(kNoKeyCode, modifierFlags);
  return MASShortcut(static_cast<std::uint64_t>(keyCode->second), modifierFlags);
}

PropertyList::Data MASShortcut::data() const {
  const std::int64_t keyCode =
      m_keyCode == kNoKeyCode ? kArchivedNoKey : static_cast<std::int64_t>(m_keyCode);
  return KeyedArchive::archive(KeyedArchive::Object{
      kArchivedClass,
      {{kKeyCodeField, keyCode}, {kModifierFlagsField, static_cast<std::int64_t>(m_modifierFlags)}}});
}

PropertyList::Data MASShortcut::dataOfNothing() {
  return KeyedArchive::archive(std::nullopt);
}

std::uint64_t MASShortcut::carbonKeyCode() const {
  return m_keyCode == kNoKeyCode ? 0 : m_keyCode;
}

std::uint32_t MASShortcut::carbonFlags() const {
  std::uint32_t flags = 0;
  for (const Modifier& modifier : kModifiers) {
    if (m_modifierFlags & modifier.flag) flags |= modifier.carbonFlag;
  }
  return flags;
}

std::string MASShortcut::keyCodeString() const {
  if (m_keyCode == kNoKeyCode) return {};
  const Platform& platform = Platform::current();
  if (const auto fixed = KeyNames::fixedText(m_keyCode)) {
    return m_keyCode == kSpaceKeyCode ? platform.text.localized(*fixed) : std::string(*fixed);
  }
  const auto text = platform.keyboardLayout.textForKeyCode(m_keyCode);
  if (!text || !platform.text.isAlphanumericPunctuationOrSymbol(*text)) return {};
  return platform.text.uppercased(*text);
}

std::string MASShortcut::keyCodeStringForKeyEquivalent() const {
  const std::string text = keyCodeString();
  if (characterCount(text) <= 1) return Platform::current().text.lowercased(text);
  if (m_keyCode == kSpaceKeyCode) return " ";
  if (const auto number = KeyNames::functionKeyNumber(m_keyCode)) {
    return threeByteCharacter(kFirstFunctionKeyCharacter + static_cast<std::uint32_t>(*number) - 1);
  }
  return {};
}

std::string MASShortcut::modifierFlagsString() const {
  std::string glyphs;
  for (const Modifier& modifier : kModifiers) {
    if (m_modifierFlags & modifier.flag) glyphs += modifier.glyph;
  }
  return glyphs;
}

std::string MASShortcut::description() const {
  return modifierFlagsString() + keyCodeString();
}

bool MASShortcut::isValid() const {
  if (KeyNames::isFunctionKey(m_keyCode)) return true;
  if (m_modifierFlags & (kCommandFlag | kControlFlag)) return true;
  if (!(m_modifierFlags & kOptionFlag)) return false;
  return m_keyCode == kSpaceKeyCode || m_keyCode == kEscapeKeyCode || allowsAnyHotkeyWithOptionModifier();
}

bool MASShortcut::shouldBypass() const {
  if (m_modifierFlags != kCommandFlag) return false;
  const std::string key = keyCodeString();
  return key == "W" || key == "Q";
}

bool MASShortcut::allowsAnyHotkeyWithOptionModifier() {
  return rules().anyHotkeyWithOptionModifier;
}

void MASShortcut::setAllowsAnyHotkeyWithOptionModifier(bool allows) {
  rules().anyHotkeyWithOptionModifier = allows;
}

} // namespace orbel
