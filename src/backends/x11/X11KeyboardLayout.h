// The text of a key under the server's current keymap and the group that the user has switched to.
// The keymap is read when it is asked for after a change, not at the change. Called by the shortcut module.
#pragma once

#include "backends/x11/XkbEvents.h"
#include "foundation/Registration.h"
#include "platform/KeyboardLayout.h"

#include <memory>
#include <xcb/xcb.h>

struct xkb_context;

namespace orbel::x11 {

class Connection;

class X11KeyboardLayout : public KeyboardLayout {
public:
  explicit X11KeyboardLayout(Connection& connection);
  ~X11KeyboardLayout() override;

  std::optional<std::string> textForKeyCode(std::uint64_t virtualKeyCode) const override;

private:
  struct Keymap; // the keymap, and a state of it with nothing but the current group
  void forgetKeymapIfChanged(const xcb_generic_event_t& event) const;
  const Keymap* currentKeymap() const;

  Connection& m_connection;
  std::optional<XkbEvents> m_xkb;
  xkb_context* m_context = nullptr;
  mutable std::unique_ptr<Keymap> m_keymap; // empty when it must be read
  Registration m_events;
};

} // namespace orbel::x11
