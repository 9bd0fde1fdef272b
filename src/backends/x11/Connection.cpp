#include "backends/x11/Connection.h"

#include "backends/x11/XcbEvent.h"
#include "foundation/Log.h"

#include <cstdlib>
#include <glib-unix.h>
#include <utility>
#include <vector>

namespace orbel::x11 {

// The main loop looks at the socket; what xcb has read from it already while waiting for a reply does not
// make the socket readable again, so the queue is looked at before the loop sleeps.
class Connection::Source {
public:
  static GSource* create(Connection* connection) {
    static GSourceFuncs functions = {prepare, check, dispatch, nullptr, nullptr, nullptr};
    GSource* source = g_source_new(&functions, sizeof(Data));
    data(source).connection = connection;
    data(source).descriptor = g_source_add_unix_fd(source, xcb_get_file_descriptor(connection->m_connection),
                                                   static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    g_source_set_name(source, "X connection");
    // A modal dialog of Qt runs the loop within a handler of ours.
    g_source_set_can_recurse(source, TRUE);
    g_source_attach(source, nullptr);
    return source;
  }

private:
  struct Data {
    GSource base;
    Connection* connection;
    gpointer descriptor;
  };
  static Data& data(GSource* source) { return *reinterpret_cast<Data*>(source); }

  static gboolean prepare(GSource* source, gint* timeout) {
    *timeout = -1;
    Connection& connection = *data(source).connection;
    connection.flush();
    return connection.hasReceivedEvent() ? TRUE : FALSE;
  }
  static gboolean check(GSource* source) {
    Data& own = data(source);
    return g_source_query_unix_fd(source, own.descriptor) != 0 || own.connection->hasReceivedEvent() ? TRUE
                                                                                                     : FALSE;
  }
  static gboolean dispatch(GSource* source, GSourceFunc, gpointer) {
    Connection& connection = *data(source).connection;
    connection.dispatchPending();
    return G_SOURCE_CONTINUE;
  }
};

std::unique_ptr<Connection> Connection::open(const std::string& displayName, std::function<void()> lost) {
  int screenNumber = 0;
  xcb_connection_t* connection =
      xcb_connect(displayName.empty() ? nullptr : displayName.c_str(), &screenNumber);
  if (xcb_connection_has_error(connection) != 0) {
    xcb_disconnect(connection);
    const char* environment = std::getenv("DISPLAY");
    const std::string name = displayName.empty() && environment ? environment : displayName;
    Log::error("cannot connect to the X display \"" + name + "\"");
    return nullptr;
  }
  return std::unique_ptr<Connection>(new Connection(connection, screenNumber, std::move(lost)));
}

Connection::Connection(xcb_connection_t* connection, int screenNumber, std::function<void()> lost)
    : m_connection(connection), m_lost(std::move(lost)) {
  auto screens = xcb_setup_roots_iterator(&setup());
  for (int index = 0; index < screenNumber && screens.rem > 1; ++index)
    xcb_screen_next(&screens);
  m_screen = screens.data;

  m_timeWindow = xcb_generate_id(m_connection);
  const std::uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
  xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_timeWindow, root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  m_source = Source::create(this);
}

Connection::~Connection() {
  g_source_destroy(m_source);
  g_source_unref(m_source);
  xcb_disconnect(m_connection);
}

xcb_atom_t Connection::atom(const std::string& name) {
  if (const auto known = m_atoms.find(name); known != m_atoms.end()) return known->second;
  const char* wanted = name.c_str();
  internAtoms({&wanted, 1});
  const auto known = m_atoms.find(name);
  return known == m_atoms.end() ? xcb_atom_t{XCB_ATOM_NONE} : known->second;
}

void Connection::internAtoms(std::span<const char* const> names) {
  std::vector<std::pair<std::string, xcb_intern_atom_cookie_t>> requests;
  for (const std::string name : names) {
    if (m_atoms.contains(name)) continue;
    requests.emplace_back(
        name, xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()));
  }
  for (const auto& [name, cookie] : requests)
    if (const auto reply = ownReply(xcb_intern_atom_reply(m_connection, cookie, nullptr)))
      m_atoms[name] = reply->atom;
}

Registration Connection::observeEvents(EventHandler handler) {
  return m_handlers.add(std::move(handler));
}

bool Connection::hasReceivedEvent() {
  if (m_received.empty())
    if (auto event = ownReply(xcb_poll_for_queued_event(m_connection)))
      m_received.push_back(std::move(event));
  return !m_received.empty();
}

XcbReply<xcb_generic_event_t> Connection::nextEvent() {
  if (m_received.empty()) return ownReply(xcb_poll_for_event(m_connection));
  auto event = std::move(m_received.front());
  m_received.pop_front();
  return event;
}

void Connection::dispatchPending() {
  while (const auto event = nextEvent())
    dispatch(*event);
  checkForBreak();
}

void Connection::drain() {
  awaitServer();
  dispatchPending();
}

void Connection::peek(const EventHandler& visitor) {
  awaitServer();
  while (auto event = ownReply(xcb_poll_for_queued_event(m_connection)))
    m_received.push_back(std::move(event));
  for (const auto& event : m_received)
    if (event->response_type != 0) visitor(*event);
}

// Every event that precedes the answer to a request is in xcb's queue when the answer is there.
void Connection::awaitServer() {
  ownReply(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

void Connection::dispatch(const xcb_generic_event_t& event) {
  if (event.response_type != 0) {
    m_handlers.notify(event);
    return;
  }
  const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
  // A window of another program may be destroyed between its event and our request about it.
  if (error.error_code == XCB_WINDOW || error.error_code == XCB_DRAWABLE) return;
  Log::warning("the X server refused request " + std::to_string(error.major_code) + "." +
               std::to_string(error.minor_code) + " with error " + std::to_string(error.error_code));
}

void Connection::checkForBreak() {
  if (m_isLost || xcb_connection_has_error(m_connection) == 0) return;
  m_isLost = true;
  // The socket of a dead connection stays readable: the loop would spin.
  g_source_destroy(m_source);
  Log::error("the connection to the X server broke; the desktop is gone");
  if (!m_lost) std::exit(EXIT_FAILURE);
  const auto lost = m_lost;
  lost();
}

xcb_timestamp_t Connection::serverTime() {
  xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, m_timeWindow, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                      0, nullptr);
  awaitServer();
  while (auto event = ownReply(xcb_poll_for_queued_event(m_connection))) {
    const auto& notification = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
    if (eventType(*event) == XCB_PROPERTY_NOTIFY && notification.window == m_timeWindow)
      return notification.time;
    m_received.push_back(std::move(event)); // keeps its turn
  }
  return XCB_CURRENT_TIME; // the connection is broken
}

void Connection::selectOnRoot(std::uint32_t eventMask) {
  m_rootEventMask |= eventMask;
  xcb_change_window_attributes(m_connection, root(), XCB_CW_EVENT_MASK, &m_rootEventMask);
}

void Connection::deselectOnRoot(std::uint32_t eventMask) {
  m_rootEventMask &= ~eventMask;
  xcb_change_window_attributes(m_connection, root(), XCB_CW_EVENT_MASK, &m_rootEventMask);
}

} // namespace orbel::x11
