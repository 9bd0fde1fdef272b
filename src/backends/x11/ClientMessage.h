// Messages of the window manager standards.
#pragma once

#include <array>
#include <cstdint>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class ClientMessage {
public:
  using Data = std::array<std::uint32_t, 5>;
  // About the window, to the root window, where the window manager receives it.
  static void sendToManager(Connection& connection, xcb_window_t window, const char* type, Data data);
  // To the program that made the window.
  static void sendToProgram(Connection& connection, xcb_window_t window, const char* type, Data data);
};

} // namespace orbel::x11
