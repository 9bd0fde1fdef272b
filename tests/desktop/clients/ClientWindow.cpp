#include "tests/desktop/clients/ClientWindow.h"

#include "tests/support/x11/XcbReply.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <poll.h>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>
#include <xcb/xcb_icccm.h>

namespace orbel::test {

namespace {

constexpr std::uint32_t kEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_EXPOSURE |
                                  XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_BUTTON_PRESS |
                                  XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_KEY_PRESS |
                                  XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr std::uint32_t kSourceApplication = 1;
constexpr std::uint16_t kQuestionWidth = 260; // pixels
constexpr std::uint16_t kQuestionHeight = 90;
constexpr const char* kTimeProperty = "_TEST_CLIENT_TIME";

const char* modeName(std::uint8_t mode) {
  switch (mode) {
  case XCB_NOTIFY_MODE_NORMAL:
    return "normal";
  case XCB_NOTIFY_MODE_GRAB:
    return "grab";
  case XCB_NOTIFY_MODE_UNGRAB:
    return "ungrab";
  default:
    return "while-grabbed";
  }
}

std::string hexadecimal(std::uint32_t number) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%x", number);
  return text.data();
}

std::string place(const xcb_button_press_event_t& event) {
  return std::to_string(int{event.detail}) + ' ' + std::to_string(event.event_x) + ' ' +
         std::to_string(event.event_y);
}

template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

} // namespace

ClientWindow::ClientWindow(const ClientOptions& options, EventLog& log)
    : m_options(options), m_log(log), m_keymap(m_display) {
  sigset_t signals;
  ::sigemptyset(&signals);
  ::sigaddset(&signals, SIGUSR1);
  ::sigprocmask(SIG_BLOCK, &signals, nullptr);
  m_signals = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (m_signals < 0) throw std::system_error(errno, std::generic_category(), "signalfd");
  create();
  setProperties();
  setProtocols();
}

ClientWindow::~ClientWindow() {
  ::close(m_signals);
}

void ClientWindow::create() {
  const xcb_screen_t& screen = m_display.screen();
  m_window = xcb_generate_id(m_display.get());
  const std::array<std::uint32_t, 2> values{m_options.color, kEvents};
  xcb_create_window(m_display.get(), XCB_COPY_FROM_PARENT, m_window, screen.root,
                    static_cast<std::int16_t>(m_options.x), static_cast<std::int16_t>(m_options.y),
                    static_cast<std::uint16_t>(m_options.width), static_cast<std::uint16_t>(m_options.height),
                    0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
}

void ClientWindow::setProperties() {
  const xcb_atom_t utf8 = m_display.atom("UTF8_STRING");
  setText("WM_NAME", XCB_ATOM_STRING, m_options.title);
  setText("_NET_WM_NAME", utf8, m_options.title);
  setText("WM_CLASS", XCB_ATOM_STRING, m_options.className + '\0' + m_options.className + '\0');
  if (!m_options.applicationId.empty()) setText("_GTK_APPLICATION_ID", utf8, m_options.applicationId);
  if (m_options.hasProcessId) {
    const auto process = static_cast<std::uint32_t>(::getpid());
    xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, m_window, m_display.atom("_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &process);
    std::array<char, 256> host{};
    ::gethostname(host.data(), host.size() - 1);
    setText("WM_CLIENT_MACHINE", XCB_ATOM_STRING, host.data());
  }
  xcb_size_hints_t size{};
  xcb_icccm_size_hints_set_position(&size, 1, m_options.x, m_options.y);
  xcb_icccm_size_hints_set_size(&size, 1, m_options.width, m_options.height);
  xcb_icccm_set_wm_normal_hints(m_display.get(), m_window, &size);
  xcb_icccm_wm_hints_t hints{};
  xcb_icccm_wm_hints_set_input(&hints, m_options.acceptsInput ? 1 : 0);
  xcb_icccm_wm_hints_set_normal(&hints);
  xcb_icccm_set_wm_hints(m_display.get(), m_window, &hints);
}

void ClientWindow::setProtocols() {
  std::vector<xcb_atom_t> protocols{m_display.atom("WM_DELETE_WINDOW")};
  if (m_options.takesFocus) protocols.push_back(m_display.atom("WM_TAKE_FOCUS"));
  setAtoms("WM_PROTOCOLS", protocols);
  std::vector<xcb_atom_t> states;
  if (m_options.skipsTaskbar) states.push_back(m_display.atom("_NET_WM_STATE_SKIP_TASKBAR"));
  if (m_options.isFullscreen) states.push_back(m_display.atom("_NET_WM_STATE_FULLSCREEN"));
  setAtoms("_NET_WM_STATE", states);
  setAtoms("_NET_WM_WINDOW_TYPE", {m_display.atom("_NET_WM_WINDOW_TYPE_NORMAL")});
}

void ClientWindow::run() {
  xcb_map_window(m_display.get(), m_window);
  m_display.roundTrip();
  std::array<pollfd, 2> inputs{pollfd{xcb_get_file_descriptor(m_display.get()), POLLIN, 0},
                               pollfd{m_signals, POLLIN, 0}};
  while (!m_isClosed && !xcb_connection_has_error(m_display.get())) {
    handleWaitingEvents();
    xcb_flush(m_display.get());
    if (m_isClosed || ::poll(inputs.data(), inputs.size(), -1) < 0) continue;
    signalfd_siginfo information{};
    if (::read(m_signals, &information, sizeof information) > 0) raiseItself();
  }
}

void ClientWindow::handleWaitingEvents() {
  while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_display.get())})
    handle(*event);
}

void ClientWindow::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & ~0x80) {
  case XCB_MAP_NOTIFY:
    m_log.write("mapped " + hexadecimal(m_window));
    break;
  case XCB_UNMAP_NOTIFY:
    m_log.write("unmapped");
    break;
  case XCB_EXPOSE:
    m_log.write("exposed");
    break;
  case XCB_FOCUS_IN:
  case XCB_FOCUS_OUT: {
    const auto& focus = as<xcb_focus_in_event_t>(event);
    // The pointer's own kind reports the root's focus passing by, not ours.
    if (focus.detail == XCB_NOTIFY_DETAIL_POINTER) break;
    const bool isIn = (event.response_type & ~0x80) == XCB_FOCUS_IN;
    m_log.write(std::string(isIn ? "focus-in " : "focus-out ") + modeName(focus.mode));
    break;
  }
  case XCB_BUTTON_PRESS:
    m_log.write("button-press " + place(as<xcb_button_press_event_t>(event)));
    break;
  case XCB_BUTTON_RELEASE:
    m_log.write("button-release " + place(as<xcb_button_press_event_t>(event)));
    break;
  case XCB_KEY_PRESS:
    m_log.write("key-press " + hexadecimal(m_keymap.keysym(as<xcb_key_press_event_t>(event).detail)));
    break;
  case XCB_KEY_RELEASE:
    m_log.write("key-release " + hexadecimal(m_keymap.keysym(as<xcb_key_press_event_t>(event).detail)));
    break;
  case XCB_CLIENT_MESSAGE:
    handleProtocol(as<xcb_client_message_event_t>(event));
    break;
  default:
    break;
  }
}

void ClientWindow::handleProtocol(const xcb_client_message_event_t& message) {
  if (message.type != m_display.atom("WM_PROTOCOLS")) return;
  const xcb_atom_t protocol = message.data.data32[0];
  if (protocol == m_display.atom("WM_DELETE_WINDOW")) {
    m_log.write("delete-window");
    if (m_options.asksBeforeClosing) {
      askBeforeClosing();
    } else {
      m_isClosed = true;
    }
  } else if (protocol == m_display.atom("WM_TAKE_FOCUS")) {
    m_log.write("take-focus");
    xcb_set_input_focus(m_display.get(), XCB_INPUT_FOCUS_PARENT, m_window, message.data.data32[1]);
  }
}

void ClientWindow::askBeforeClosing() {
  if (m_question != XCB_NONE) return;
  xcb_connection_t* xcb = m_display.get();
  m_question = xcb_generate_id(xcb);
  const xcb_screen_t& screen = m_display.screen();
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, m_question, screen.root, 0, 0, kQuestionWidth, kQuestionHeight,
                    0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_BACK_PIXEL,
                    &screen.white_pixel);
  const std::string title = "Save the changes?";
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_question, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(title.size()), title.data());
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_question, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32,
                      1, &m_window);
  xcb_map_window(xcb, m_question);
  m_log.write("asks " + hexadecimal(m_question));
}

void ClientWindow::raiseItself() {
  m_log.write("raise-itself");
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(m_display.get(), m_window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  // With the present time: without one, focus-stealing prevention takes the request for a stale one.
  const xcb_timestamp_t now = currentTime();
  xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, m_window, m_display.atom("_NET_WM_USER_TIME"),
                      XCB_ATOM_CARDINAL, 32, 1, &now);
  m_display.sendToWindowManager(m_window, "_NET_ACTIVE_WINDOW", {kSourceApplication, now, XCB_NONE});
}

// The server reports its time with the event of a property change.
xcb_timestamp_t ClientWindow::currentTime() {
  const xcb_atom_t property = m_display.atom(kTimeProperty);
  xcb_change_property(m_display.get(), XCB_PROP_MODE_APPEND, m_window, property, XCB_ATOM_CARDINAL, 32, 0,
                      nullptr);
  xcb_flush(m_display.get());
  while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(m_display.get())}) {
    if ((event->response_type & ~0x80) == XCB_PROPERTY_NOTIFY) {
      const auto& notice = as<xcb_property_notify_event_t>(*event);
      if (notice.atom == property) return notice.time;
    }
    handle(*event);
  }
  return XCB_CURRENT_TIME;
}

void ClientWindow::setText(const char* property, xcb_atom_t type, const std::string& text) {
  xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, m_window, m_display.atom(property), type, 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
}

void ClientWindow::setAtoms(const char* property, const std::vector<xcb_atom_t>& atoms) {
  xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, m_window, m_display.atom(property),
                      XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

} // namespace orbel::test
