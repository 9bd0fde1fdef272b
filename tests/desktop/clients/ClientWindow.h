// A managed top-level window of one colour that writes down the events it gets:
//
//   mapped 0x<window>          unmapped                   exposed
//   focus-in <mode>            focus-out <mode>           (mode: normal, grab, ungrab, while-grabbed)
//   button-press <n> <x> <y>   button-release <n> <x> <y>
//   key-press 0x<keysym>       key-release 0x<keysym>
//   delete-window              take-focus                 raise-itself
//   asks 0x<window>
//
// SIGUSR1 makes it raise and activate itself. It ends when it is closed politely. One that asks before
// closing shows a dialog instead, like a program with an unsaved document.
#pragma once

#include "tests/desktop/clients/ClientOptions.h"
#include "tests/desktop/clients/EventLog.h"
#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/Keymap.h"

namespace orbel::test {

class ClientWindow {
public:
  ClientWindow(const ClientOptions& options, EventLog& log);
  ~ClientWindow();
  ClientWindow(const ClientWindow&) = delete;
  ClientWindow& operator=(const ClientWindow&) = delete;

  // Maps the window and serves it until it is closed; returns early when the X server ends.
  void run();

private:
  void create();
  void setProperties();
  void setProtocols();
  void handleWaitingEvents();
  void handle(const xcb_generic_event_t& event);
  void handleProtocol(const xcb_client_message_event_t& message);
  void askBeforeClosing();
  void raiseItself();
  xcb_timestamp_t currentTime();
  void setText(const char* property, xcb_atom_t type, const std::string& text);
  void setAtoms(const char* property, const std::vector<xcb_atom_t>& atoms);

  const ClientOptions& m_options;
  EventLog& m_log;
  DisplayConnection m_display;
  Keymap m_keymap;
  xcb_window_t m_window = XCB_NONE;
  xcb_window_t m_question = XCB_NONE; // the dialog
  int m_signals = -1;
  bool m_isClosed = false;
};

} // namespace orbel::test
