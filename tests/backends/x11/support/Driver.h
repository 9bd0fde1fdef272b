// The hand, the eye and the other programs of these tests, over a connection apart from those under test.
// Key codes are the kernel's, as the code under test sees them; screen positions are pixels with the y axis
// pointing down. What is still held is released with the object, and its windows and grabs end.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/Input.h"
#include "tests/support/x11/Windows.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::test {

class Driver {
public:
  explicit Driver(const std::string& display);

  xcb_connection_t* xcb() const { return m_display.get(); }
  xcb_window_t root() const { return m_display.root(); }

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

  xcb_atom_t atom(const std::string& name) { return m_display.atom(name); }
  void setText(xcb_window_t window, const char* property, const char* type, const std::string& text);
  void setNumbers(xcb_window_t window, const char* property, const char* type,
                  const std::vector<std::uint32_t>& numbers);
  std::vector<std::uint32_t> numbers(xcb_window_t window, const char* property);
  // To the window manager, about the window.
  void askManager(xcb_window_t window, const char* type, const std::vector<std::uint32_t>& data);
  bool exists(xcb_window_t window) const { return m_windows.exists(window); }
  bool isViewable(xcb_window_t window) const { return m_windows.isViewable(window); }
  xcb_window_t focus();
  // The child of the root that is the window or holds it, and its place from bottom to top.
  int stackingPlace(xcb_window_t window);
  void raise(xcb_window_t window);
  void sync() { m_display.roundTrip(); }

private:
  DisplayConnection m_display;
  Input m_input{m_display};
  Windows m_windows{m_display};
};

} // namespace orbel::test
