#include "tests/desktop/clients/FileDragWindow.h"

#include "tests/support/x11/XcbReply.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace orbel::test {

namespace {

constexpr std::uint32_t kVersion = 5;
constexpr std::uint16_t kSide = 120;       // pixels
constexpr int kDepartureDistance = 6;      // pixels until a press becomes a drag
constexpr std::uint32_t kColor = 0xe8d090; // a folder's

std::string hexadecimal(std::uint32_t number) {
  std::ostringstream text;
  text << "0x" << std::hex << number;
  return text.str();
}

template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

} // namespace

FileDragWindow::FileDragWindow(FileDragOptions options, EventLog& log)
    : m_options(std::move(options)), m_log(log) {
  create();
}

void FileDragWindow::create() {
  xcb_connection_t* xcb = m_display.get();
  m_window = xcb_generate_id(xcb);
  const std::array<std::uint32_t, 2> values{
      kColor, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                  XCB_EVENT_MASK_BUTTON_1_MOTION};
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, m_window, m_display.root(),
                    static_cast<std::int16_t>(m_options.x), static_cast<std::int16_t>(m_options.y), kSide,
                    kSide, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, m_display.screen().root_visual,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
  const std::string title = "Files";
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(title.size()), title.data());
  // The place is the user's own choice.
  constexpr std::uint32_t kUserPosition = 1;
  std::array<std::uint32_t, 18> hints{};
  hints[0] = kUserPosition;
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS,
                      32, hints.size(), hints.data());
  std::vector<xcb_atom_t> offered;
  for (const std::string& action : m_options.actions)
    offered.push_back(m_display.atom(action));
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, m_display.atom("XdndActionList"), XCB_ATOM_ATOM,
                      32, static_cast<std::uint32_t>(offered.size()), offered.data());
}

void FileDragWindow::run() {
  xcb_map_window(m_display.get(), m_window);
  xcb_flush(m_display.get());
  while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(m_display.get())}) {
    handle(*event);
    xcb_flush(m_display.get());
  }
}

void FileDragWindow::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & ~0x80) {
  case XCB_MAP_NOTIFY:
    m_log.write("mapped " + hexadecimal(m_window));
    break;
  case XCB_BUTTON_PRESS: {
    const auto& press = as<xcb_button_press_event_t>(event);
    m_isPressed = press.detail == 1;
    m_pressX = press.root_x;
    m_pressY = press.root_y;
    break;
  }
  case XCB_MOTION_NOTIFY:
    motion(as<xcb_motion_notify_event_t>(event));
    break;
  case XCB_BUTTON_RELEASE:
    m_isPressed = false;
    if (m_isDragging) release(as<xcb_button_release_event_t>(event).time);
    break;
  case XCB_SELECTION_REQUEST:
    answerRequest(as<xcb_selection_request_event_t>(event));
    break;
  case XCB_CLIENT_MESSAGE:
    handleMessage(as<xcb_client_message_event_t>(event));
    break;
  default:
    break;
  }
}

// The press holds the pointer for this window until the release, so every motion comes here.
void FileDragWindow::motion(const xcb_motion_notify_event_t& event) {
  if (!m_isPressed) return;
  const bool isFar = std::abs(event.root_x - m_pressX) > kDepartureDistance ||
                     std::abs(event.root_y - m_pressY) > kDepartureDistance;
  if (!m_isDragging && isFar) startDrag();
  if (m_isDragging) moveTo(event.root_x, event.root_y, event.time);
}

void FileDragWindow::startDrag() {
  m_isDragging = true;
  m_isReleased = false;
  m_answer.clear();
  xcb_set_selection_owner(m_display.get(), m_window, m_display.atom("XdndSelection"), XCB_CURRENT_TIME);
  m_log.write("drag-started");
}

void FileDragWindow::moveTo(int x, int y, xcb_timestamp_t time) {
  m_x = x;
  m_y = y;
  m_time = time;
  const xcb_window_t under = awareWindowUnderPointer();
  if (under != m_target) {
    if (m_target != XCB_NONE) {
      send("XdndLeave", 0, 0, 0, 0);
      m_log.write("left " + hexadecimal(m_target));
    }
    m_target = under;
    m_isWelcome = m_awaitsStatus = false;
    if (m_target != XCB_NONE) {
      send("XdndEnter", kVersion << 24, m_display.atom("text/uri-list"), XCB_NONE, XCB_NONE);
      m_log.write("entered " + hexadecimal(m_target));
    }
  }
  m_hasMoved = true;
  if (m_target != XCB_NONE && !m_awaitsStatus) sendPosition();
}

void FileDragWindow::sendPosition() {
  const auto packed = static_cast<std::uint32_t>(m_x) << 16 | static_cast<std::uint32_t>(m_y);
  send("XdndPosition", 0, packed, m_time, m_display.atom(m_options.actions.front()));
  m_awaitsStatus = true;
  m_hasMoved = false;
}

void FileDragWindow::release(xcb_timestamp_t time) {
  m_time = time;
  m_isReleased = true;
  if (!m_awaitsStatus) finishRelease();
}

void FileDragWindow::finishRelease() {
  m_isDragging = false;
  m_isReleased = false;
  if (m_target != XCB_NONE && m_isWelcome) {
    send("XdndDrop", 0, m_time, 0, 0);
    m_log.write("dropped");
  } else {
    if (m_target != XCB_NONE) send("XdndLeave", 0, 0, 0, 0);
    m_log.write("released-outside");
  }
  m_target = XCB_NONE;
}

void FileDragWindow::handleMessage(const xcb_client_message_event_t& message) {
  if (message.type == m_display.atom("XdndStatus")) {
    if (message.data.data32[0] != m_target) return;
    m_awaitsStatus = false;
    m_isWelcome = (message.data.data32[1] & 1) != 0;
    const std::string answer = m_isWelcome ? actionName(message.data.data32[4]) : "none";
    if (answer != std::exchange(m_answer, answer)) m_log.write("status " + answer);
    if (m_hasMoved) {
      sendPosition();
    } else if (m_isReleased) {
      finishRelease();
    }
  } else if (message.type == m_display.atom("XdndFinished")) {
    const bool isAccepted = (message.data.data32[1] & 1) != 0;
    m_log.write("finished " + (isAccepted ? actionName(message.data.data32[2]) : "none"));
  }
}

void FileDragWindow::answerRequest(const xcb_selection_request_event_t& request) {
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  if (request.target == m_display.atom("text/uri-list")) {
    m_log.write("asked-for text/uri-list");
    xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        request.target, 8, static_cast<std::uint32_t>(m_options.uriList.size()),
                        m_options.uriList.data());
    notify.property = request.property;
  }
  xcb_send_event(m_display.get(), 0, request.requestor, 0, reinterpret_cast<const char*>(&notify));
}

xcb_window_t FileDragWindow::awareWindowUnderPointer() {
  xcb_window_t window = m_display.root();
  for (;;) {
    // In view of input shapes, unlike a translation of coordinates.
    const auto cookie = xcb_query_pointer(m_display.get(), window);
    const XcbReply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_display.get(), cookie, nullptr));
    if (!reply || reply->child == XCB_NONE) return XCB_NONE;
    window = reply->child;
    if (m_display.value(window, "XdndAware")) return window;
  }
}

void FileDragWindow::send(const char* type, std::uint32_t second, std::uint32_t third, std::uint32_t fourth,
                          std::uint32_t fifth) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = m_target;
  message.type = m_display.atom(type);
  message.data.data32[0] = m_window;
  message.data.data32[1] = second;
  message.data.data32[2] = third;
  message.data.data32[3] = fourth;
  message.data.data32[4] = fifth;
  xcb_send_event(m_display.get(), 0, m_target, 0, reinterpret_cast<const char*>(&message));
}

std::string FileDragWindow::actionName(xcb_atom_t action) {
  for (const char* name : {"copy", "link", "move"}) {
    std::string atom = std::string("XdndAction") + name;
    atom[sizeof "XdndAction" - 1] = static_cast<char>(std::toupper(name[0]));
    if (m_display.atom(atom) == action) return name;
  }
  return "none";
}

} // namespace orbel::test
