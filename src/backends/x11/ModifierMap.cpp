#include "backends/x11/ModifierMap.h"

#include "backends/x11/Connection.h"
#include "platform/HotKeyModifier.h"
#include "scene/Event.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orbel::x11 {

namespace {

constexpr std::size_t kFirstFreeModifier = 3; // Mod1; before it stand Shift, Lock and Control
constexpr std::size_t kModifierCount = 8;

// The keys of each modifier bit, and the symbols of each key.
struct Mappings {
  XcbReply<xcb_get_modifier_mapping_reply_t> modifiers;
  XcbReply<xcb_get_keyboard_mapping_reply_t> symbols;
  xcb_keycode_t firstKeyCode = 0;

  std::span<const xcb_keycode_t> keysOf(std::size_t modifier) const {
    const std::size_t perModifier = modifiers->keycodes_per_modifier;
    return {xcb_get_modifier_mapping_keycodes(modifiers.get()) + modifier * perModifier, perModifier};
  }
  std::span<const xcb_keysym_t> symbolsOf(xcb_keycode_t keyCode) const {
    const std::size_t perKey = symbols->keysyms_per_keycode;
    const auto all =
        std::span(xcb_get_keyboard_mapping_keysyms(symbols.get()),
                  static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(symbols.get())));
    const std::size_t start = (static_cast<std::size_t>(keyCode) - firstKeyCode) * perKey;
    if (keyCode < firstKeyCode || start + perKey > all.size()) return {};
    return all.subspan(start, perKey);
  }

  // The first of the free modifier bits that a key with one of the symbols sets; 0 when there is none.
  std::uint16_t maskOf(std::initializer_list<xcb_keysym_t> wanted) const {
    const auto isWanted = [&](xcb_keysym_t symbol) {
      return std::ranges::find(wanted, symbol) != wanted.end();
    };
    for (std::size_t modifier = kFirstFreeModifier; modifier < kModifierCount; ++modifier)
      for (const xcb_keycode_t keyCode : keysOf(modifier))
        if (std::ranges::any_of(symbolsOf(keyCode), isWanted))
          return static_cast<std::uint16_t>(1U << modifier);
    return 0;
  }
};

} // namespace

ModifierMap ModifierMap::current(Connection& connection) {
  const xcb_setup_t& setup = connection.setup();
  const auto modifierCookie = xcb_get_modifier_mapping(connection.xcb());
  const auto symbolCookie =
      xcb_get_keyboard_mapping(connection.xcb(), setup.min_keycode,
                               static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1));
  Mappings mappings;
  mappings.firstKeyCode = setup.min_keycode;
  mappings.modifiers = ownReply(xcb_get_modifier_mapping_reply(connection.xcb(), modifierCookie, nullptr));
  mappings.symbols = ownReply(xcb_get_keyboard_mapping_reply(connection.xcb(), symbolCookie, nullptr));

  ModifierMap map;
  if (mappings.modifiers && mappings.symbols) {
    map.m_command = mappings.maskOf({XKB_KEY_Super_L, XKB_KEY_Super_R});
    map.m_option = mappings.maskOf({XKB_KEY_Alt_L, XKB_KEY_Alt_R});
    map.m_numLock = mappings.maskOf({XKB_KEY_Num_Lock});
    for (std::size_t modifier = 0; modifier < kModifierCount; ++modifier) {
      if (map.m_numLock == 1U << modifier) continue;
      for (const xcb_keycode_t keyCode : mappings.keysOf(modifier))
        if (keyCode != 0) map.m_modifierKeys.set(keyCode);
    }
  }
  // A keymap without such keys: the bits that they usually have. They cannot be pressed, but a combination
  // with them must not become one without.
  if (map.m_command == 0) map.m_command = XCB_MOD_MASK_4;
  if (map.m_option == 0) map.m_option = XCB_MOD_MASK_1;
  return map;
}

std::uint16_t ModifierMap::maskForModifiers(std::uint32_t modifiers) const {
  unsigned mask = 0;
  if (modifiers & kHotKeyCommand) mask |= m_command;
  if (modifiers & kHotKeyShift) mask |= XCB_MOD_MASK_SHIFT;
  if (modifiers & kHotKeyOption) mask |= m_option;
  if (modifiers & kHotKeyControl) mask |= XCB_MOD_MASK_CONTROL;
  return static_cast<std::uint16_t>(mask);
}

std::uint64_t ModifierMap::modifierFlags(std::uint16_t modifierMask) const {
  std::uint64_t flags = 0;
  if (modifierMask & m_command) flags |= kCommandFlag;
  if (modifierMask & XCB_MOD_MASK_SHIFT) flags |= kShiftFlag;
  if (modifierMask & m_option) flags |= kOptionFlag;
  if (modifierMask & XCB_MOD_MASK_CONTROL) flags |= kControlFlag;
  return flags;
}

std::vector<std::uint16_t> ModifierMap::lockVariants(std::uint16_t modifierMask) const {
  std::vector<std::uint16_t> variants;
  constexpr unsigned capsLock = XCB_MOD_MASK_LOCK;
  for (const unsigned locks : {0U, capsLock, unsigned{m_numLock}, capsLock | m_numLock}) {
    const auto variant = static_cast<std::uint16_t>(modifierMask | locks);
    if (std::ranges::find(variants, variant) == variants.end()) variants.push_back(variant);
  }
  return variants;
}

std::uint16_t ModifierMap::significantMask() const {
  return static_cast<std::uint16_t>(0xFFU & ~(unsigned{XCB_MOD_MASK_LOCK} | m_numLock));
}

} // namespace orbel::x11
