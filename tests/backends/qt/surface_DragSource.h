// Another program that drags something over the screen (version 5 of the drag-and-drop protocol), on a
// connection and a thread of its own: Qt waits for the dragged data without running its loop.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/ScreenGeometry.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace orbel::qt {

class DragSource {
public:
  // What it drags, by its type, and the names of the actions that it offers ("XdndActionCopy").
  DragSource(const std::string& displayName, std::string data, const std::vector<std::string>& actions,
             const std::string& type = "text/uri-list");
  ~DragSource();
  DragSource(const DragSource&) = delete;
  DragSource& operator=(const DragSource&) = delete;

  void enter(xcb_window_t target);
  void moveTo(test::ScreenPoint place);
  void drop();
  void leave();

  // The answers so far.
  bool isWelcome() const { return m_welcome; }
  int answerCount() const { return m_answers; }
  bool isFinished() const { return m_finished; }
  // Of the latest answer; empty for none.
  std::string answeredAction() const;
  std::string finishedAction() const;

private:
  void serve();
  void answerRequest(const xcb_selection_request_event_t& request);
  void send(const char* type, std::uint32_t first, std::uint32_t second, std::uint32_t third,
            std::uint32_t fourth);
  std::string actionName(xcb_atom_t action) const;

  test::DisplayConnection m_display; // made and asked for atoms before the thread starts
  std::string m_data;
  std::vector<std::pair<std::string, xcb_atom_t>> m_actions;
  xcb_window_t m_window = XCB_NONE;
  xcb_window_t m_target = XCB_NONE;
  xcb_atom_t m_type = XCB_NONE;
  xcb_atom_t m_status = XCB_NONE;
  xcb_atom_t m_finishedType = XCB_NONE;
  std::atomic<bool> m_welcome = false;
  std::atomic<int> m_answers = 0;
  std::atomic<bool> m_finished = false;
  std::atomic<xcb_atom_t> m_answeredAction = XCB_NONE;
  std::atomic<xcb_atom_t> m_finishedAction = XCB_NONE;
  std::thread m_thread;
};

} // namespace orbel::qt
