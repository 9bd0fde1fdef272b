// A managed window out of which a list of files is dragged with the left button, as out of a file manager
// (version 5 of the drag-and-drop protocol). It writes down how the program under the pointer takes it:
//
//   mapped 0x<window>     drag-started          entered 0x<window>    left 0x<window>
//   status <action>       (copy, link, move, none: each change of the answer)
//   dropped               released-outside      (over nothing that is welcome)
//   asked-for <type>      finished <action>     (none where the drop was refused)
#pragma once

#include "tests/desktop/clients/EventLog.h"
#include "tests/support/x11/DisplayConnection.h"

#include <string>
#include <vector>

namespace orbel::test {

struct FileDragOptions {
  int x = 0;
  int y = 0;
  std::string uriList;                                                                    // as it is sent
  std::vector<std::string> actions{"XdndActionCopy", "XdndActionLink", "XdndActionMove"}; // offered
};

class FileDragWindow {
public:
  FileDragWindow(FileDragOptions options, EventLog& log);
  // Serves drags until the X server ends.
  void run();

private:
  void create();
  void handle(const xcb_generic_event_t& event);
  void motion(const xcb_motion_notify_event_t& event);
  void startDrag();
  void moveTo(int x, int y, xcb_timestamp_t time);
  void sendPosition();
  void release(xcb_timestamp_t time);
  void finishRelease();
  void answerRequest(const xcb_selection_request_event_t& request);
  void handleMessage(const xcb_client_message_event_t& message);
  xcb_window_t awareWindowUnderPointer();
  void send(const char* type, std::uint32_t second, std::uint32_t third, std::uint32_t fourth,
            std::uint32_t fifth);
  std::string actionName(xcb_atom_t action);

  FileDragOptions m_options;
  EventLog& m_log;
  DisplayConnection m_display;
  xcb_window_t m_window = XCB_NONE;
  bool m_isPressed = false;
  bool m_isDragging = false;
  bool m_isReleased = false;
  int m_pressX = 0;
  int m_pressY = 0;
  int m_x = 0; // of the root window
  int m_y = 0;
  xcb_timestamp_t m_time = XCB_CURRENT_TIME;
  xcb_window_t m_target = XCB_NONE;
  bool m_awaitsStatus = false;
  bool m_hasMoved = false; // since the last position was sent
  bool m_isWelcome = false;
  std::string m_answer; // the last one written down
};

} // namespace orbel::test
