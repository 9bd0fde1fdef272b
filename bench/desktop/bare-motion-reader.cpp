// The floor of listening to the pointer: reads every raw movement and does nothing with it. Says "ready" when
// the server has taken the selection.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

int main() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection)) return EXIT_FAILURE;
  std::free(
      xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
  const struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_MOTION};
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  xcb_input_xi_select_events(connection, root, 1, &selection.head);
  std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
  std::puts("ready");
  std::fflush(stdout);
  while (xcb_generic_event_t* event = xcb_wait_for_event(connection))
    std::free(event);
  return EXIT_SUCCESS;
}
