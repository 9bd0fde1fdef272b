#include "tests/backends/qt/surface_DragSource.h"

#include "tests/support/x11/XcbReply.h"

#include <utility>

namespace orbel::qt {

namespace {
constexpr std::uint32_t kVersion = 5;
} // namespace

DragSource::DragSource(const std::string& displayName, std::string data,
                       const std::vector<std::string>& actions, const std::string& type)
    : m_display(displayName), m_data(std::move(data)) {
  xcb_connection_t* xcb = m_display.get();
  for (const char* name : {"XdndActionCopy", "XdndActionMove", "XdndActionLink"}) {
    m_actions.emplace_back(name, m_display.atom(name));
  }
  for (const char* name : {"XdndEnter", "XdndPosition", "XdndLeave", "XdndDrop"})
    m_display.atom(name);
  m_type = m_display.atom(type);
  m_status = m_display.atom("XdndStatus");
  m_finishedType = m_display.atom("XdndFinished");

  m_window = xcb_generate_id(xcb);
  xcb_create_window(xcb, 0, m_window, m_display.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  std::vector<xcb_atom_t> offered;
  for (const auto& action : actions)
    offered.push_back(m_display.atom(action));
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, m_display.atom("XdndActionList"), XCB_ATOM_ATOM,
                      32, static_cast<std::uint32_t>(offered.size()), offered.data());
  xcb_set_selection_owner(xcb, m_window, m_display.atom("XdndSelection"), XCB_CURRENT_TIME);
  m_display.roundTrip();
  m_actions.emplace_back("suggested", offered.front());
  m_thread = std::thread([this] { serve(); });
}

DragSource::~DragSource() {
  // Wakes the thread: a message to the own window with the type "none" ends it.
  xcb_client_message_event_t end{};
  end.response_type = XCB_CLIENT_MESSAGE;
  end.format = 32;
  end.window = m_window;
  xcb_send_event(m_display.get(), 0, m_window, 0, reinterpret_cast<const char*>(&end));
  xcb_flush(m_display.get());
  m_thread.join();
}

void DragSource::enter(xcb_window_t target) {
  m_target = target;
  send("XdndEnter", kVersion << 24, m_type, XCB_NONE, XCB_NONE);
}

void DragSource::moveTo(test::ScreenPoint place) {
  const auto packed = static_cast<std::uint32_t>(place.x) << 16 | static_cast<std::uint32_t>(place.y);
  send("XdndPosition", 0, packed, XCB_CURRENT_TIME, m_actions.back().second);
}

void DragSource::drop() {
  send("XdndDrop", 0, XCB_CURRENT_TIME, 0, 0);
}

void DragSource::leave() {
  send("XdndLeave", 0, 0, 0, 0);
}

std::string DragSource::answeredAction() const {
  return actionName(m_answeredAction);
}

std::string DragSource::finishedAction() const {
  return actionName(m_finishedAction);
}

std::string DragSource::actionName(xcb_atom_t action) const {
  for (const auto& [name, atom] : m_actions) {
    if (atom == action) return name;
  }
  return {};
}

void DragSource::send(const char* type, std::uint32_t first, std::uint32_t second, std::uint32_t third,
                      std::uint32_t fourth) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = m_target;
  message.type = m_display.atom(type);
  message.data.data32[0] = m_window;
  message.data.data32[1] = first;
  message.data.data32[2] = second;
  message.data.data32[3] = third;
  message.data.data32[4] = fourth;
  xcb_send_event(m_display.get(), 0, m_target, 0, reinterpret_cast<const char*>(&message));
  xcb_flush(m_display.get());
}

void DragSource::serve() {
  while (const auto event = test::XcbReply<xcb_generic_event_t>(xcb_wait_for_event(m_display.get()))) {
    switch (event->response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
      answerRequest(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
      break;
    case XCB_CLIENT_MESSAGE: {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
      if (message.type == XCB_NONE) return;
      if (message.type == m_status) {
        m_welcome = (message.data.data32[1] & 1) != 0;
        m_answeredAction = message.data.data32[4];
        ++m_answers;
      } else if (message.type == m_finishedType) {
        m_finishedAction = message.data.data32[2];
        m_finished = true;
      }
      break;
    }
    default:
      break;
    }
  }
}

void DragSource::answerRequest(const xcb_selection_request_event_t& request) {
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  if (request.target == m_type) {
    xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, request.requestor, request.property, m_type,
                        8, static_cast<std::uint32_t>(m_data.size()), m_data.data());
    notify.property = request.property;
  }
  xcb_send_event(m_display.get(), 0, request.requestor, 0, reinterpret_cast<const char*>(&notify));
  xcb_flush(m_display.get());
}

} // namespace orbel::qt
