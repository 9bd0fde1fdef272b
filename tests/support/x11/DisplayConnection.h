// One connection to an X server with the screen, an atom cache and property reads. Used by the harness and by
// the small client programs.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::test {

class DisplayConnection {
public:
  // An empty name means $DISPLAY. Throws std::runtime_error when the server cannot be reached.
  explicit DisplayConnection(const std::string& displayName = {});
  ~DisplayConnection();
  DisplayConnection(const DisplayConnection&) = delete;
  DisplayConnection& operator=(const DisplayConnection&) = delete;

  xcb_connection_t* get() const { return m_connection; }
  const xcb_screen_t& screen() const { return *m_screen; }
  xcb_window_t root() const { return m_screen->root; }

  xcb_atom_t atom(std::string_view name);
  // Absent properties and vanished windows yield nothing.
  std::optional<std::vector<std::uint32_t>> values(xcb_window_t window, std::string_view property);
  std::optional<std::uint32_t> value(xcb_window_t window, std::string_view property);
  std::optional<std::string> text(xcb_window_t window, std::string_view property);
  // The owner of a selection, XCB_NONE for none.
  xcb_window_t selectionOwner(std::string_view selection);

  // A client message to the root window, as window managers expect them.
  void sendToWindowManager(xcb_window_t window, std::string_view message,
                           const std::vector<std::uint32_t>& data);
  // Returns when the server has carried out everything sent before.
  void roundTrip();

private:
  xcb_connection_t* m_connection = nullptr;
  const xcb_screen_t* m_screen = nullptr;
  std::map<std::string, xcb_atom_t, std::less<>> m_atoms;
};

} // namespace orbel::test
