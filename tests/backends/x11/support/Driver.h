// The user's hands, by XTEST, and a look at the server, over a connection apart from those under test.
// Key codes are the kernel's, screen positions are pixels with the y axis pointing down.
#pragma once

#include "backends/x11/XcbReply.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::test {

class Driver {
public:
  explicit Driver(const std::string& display);
  ~Driver();
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;

  xcb_connection_t* xcb() const { return m_connection; }
  xcb_window_t root() const { return m_screen->root; }

  // Each returns after the server has dealt with it.
  void pressKey(std::uint16_t evdevCode);
  void releaseKey(std::uint16_t evdevCode);
  void tapKey(std::uint16_t evdevCode);
  // Presses the first ones, taps the last, releases them again.
  void tapKeys(const std::vector<std::uint16_t>& evdevCodes);
  void pressButton(std::uint8_t button);
  void releaseButton(std::uint8_t button);
  void click(std::uint8_t button);
  void moveTo(int x, int y); // from where it is, as a mouse would: raw motion comes of it
  void clickAt(int x, int y);

  // Whether it was granted.
  bool grabKey(std::uint16_t evdevCode, std::uint16_t modifierMask);
  // By the input extension, as some desktops do; the core protocol's grabs know nothing of it.
  bool grabKeyByExtension(std::uint16_t evdevCode, std::uint16_t modifierMask);
  void ungrabKey(std::uint16_t evdevCode, std::uint16_t modifierMask);

  xcb_atom_t atom(const std::string& name);
  void setText(xcb_window_t window, const char* property, const char* type, const std::string& text);
  void setNumbers(xcb_window_t window, const char* property, const char* type,
                  const std::vector<std::uint32_t>& numbers);
  std::vector<std::uint32_t> numbers(xcb_window_t window, const char* property);
  // To the window manager, about the window.
  void askManager(xcb_window_t window, const char* type, const std::vector<std::uint32_t>& data);
  bool exists(xcb_window_t window);
  bool isViewable(xcb_window_t window);
  xcb_window_t focus();
  // The child of the root that is the window or holds it, and its place from bottom to top.
  int stackingPlace(xcb_window_t window);
  void raise(xcb_window_t window);
  void sync();

private:
  void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);

  xcb_connection_t* m_connection;
  const xcb_screen_t* m_screen;
};

} // namespace orbel::test
