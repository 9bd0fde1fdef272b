// Reports whether another program holds a key combination by a grab of the input extension, as some desktops
// hold theirs. Such a grab and one of the core protocol do not collide in the server, so trying the latter
// finds nothing. Used by PassiveKeyGrabs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class ExtensionKeyGrabs {
public:
  explicit ExtensionKeyGrabs(Connection& connection) : m_connection(connection) {}

  // Found out by trying, without keeping any. One round trip; two the first time.
  bool isHeldByAnother(xcb_keycode_t keyCode, std::span<const std::uint32_t> modifierMasks);

private:
  bool isAvailable();

  Connection& m_connection;
  std::optional<bool> m_isAvailable; // none before the server has been asked
};

} // namespace orbel::x11
