// Another program, for tests: makes windows as its command line asks, says on standard output what
// happens to them, and stays until its windows are closed or it is ended.
//
//   --title TEXT  --class INSTANCE CLASS  --at X Y  --stated-pid N  --machine NAME  --type ATOM
//   --transient-for ID
//   --skip-taskbar  --override-redirect  --ignores-close  --no-input  --unmapped    describe the next window
//   --window                                                                        makes it
//   --grab-pointer  --grab-keyboard                                                 once the windows are
//   there
//   --commands   reads lines: "map ID", "unmap ID", "destroy ID"
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <poll.h>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

struct Description {
  std::string title, instanceName, className, machine, type;
  std::int16_t x = 0, y = 0;
  std::uint32_t statedPid = 0, transientFor = 0;
  bool skipsTaskbar = false, overridesRedirect = false, takesClose = true, takesInput = true, isMapped = true;
};

class Client {
public:
  Client() : m_connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(m_connection)) {
      std::fprintf(stderr, "no display\n");
      std::exit(EXIT_FAILURE);
    }
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
  }

  ~Client() { xcb_disconnect(m_connection); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  int run(int count, char** words) {
    bool readsCommands = false, grabsPointer = false, grabsKeyboard = false;
    Description description;
    for (int index = 1; index < count; ++index) {
      const std::string word = words[index];
      const auto next = [&] { return std::string(index + 1 < count ? words[++index] : ""); };
      if (word == "--title") description.title = next();
      if (word == "--class") description.instanceName = next(), description.className = next();
      if (word == "--at") description.x = coordinate(next()), description.y = coordinate(next());
      if (word == "--stated-pid") description.statedPid = number(next());
      if (word == "--machine") description.machine = next();
      if (word == "--type") description.type = next();
      if (word == "--transient-for") description.transientFor = number(next());
      if (word == "--skip-taskbar") description.skipsTaskbar = true;
      if (word == "--override-redirect") description.overridesRedirect = true;
      if (word == "--ignores-close") description.takesClose = false;
      if (word == "--no-input") description.takesInput = false;
      if (word == "--unmapped") description.isMapped = false;
      if (word == "--window") makeWindow(description), description = {};
      if (word == "--commands") readsCommands = true;
      if (word == "--grab-pointer") grabsPointer = true;
      if (word == "--grab-keyboard") grabsKeyboard = true;
    }
    sync();
    if (grabsPointer) grabPointer();
    if (grabsKeyboard) grabKeyboard();
    say("ready");
    return loop(readsCommands);
  }

private:
  static std::uint32_t number(const std::string& text) {
    return static_cast<std::uint32_t>(std::strtoul(text.c_str(), nullptr, 0));
  }
  static std::int16_t coordinate(const std::string& text) {
    return static_cast<std::int16_t>(std::strtol(text.c_str(), nullptr, 0));
  }
  static void say(const std::string& line) { std::cout << line << std::endl; }

  void sync() {
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
  }

  xcb_atom_t atom(const std::string& name) {
    auto* reply = xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr);
    const xcb_atom_t result = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    std::free(reply);
    return result;
  }
  void setText(xcb_window_t window, const char* property, const char* type, const std::string& text) {
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
  }
  void setNumber(xcb_window_t window, const char* property, const char* type, std::uint32_t value) {
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32, 1,
                        &value);
  }

  void makeWindow(const Description& description) {
    const xcb_window_t window = xcb_generate_id(m_connection);
    const std::uint32_t values[] = {m_screen->white_pixel, description.overridesRedirect ? 1U : 0U,
                                    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_BUTTON_PRESS |
                                        XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_screen->root, description.x,
                      description.y, 200, 150, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    // The place was chosen by the user, so that no window manager chooses another.
    const std::uint32_t placed[18] = {1, 0, 0, 0, 0};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, 18, placed);
    if (!description.title.empty()) setText(window, "_NET_WM_NAME", "UTF8_STRING", description.title);
    if (!description.className.empty())
      setText(window, "WM_CLASS", "STRING",
              description.instanceName + '\0' + description.className + std::string(1, '\0'));
    if (!description.machine.empty()) setText(window, "WM_CLIENT_MACHINE", "STRING", description.machine);
    if (description.statedPid != 0) setNumber(window, "_NET_WM_PID", "CARDINAL", description.statedPid);
    if (!description.type.empty()) setNumber(window, "_NET_WM_WINDOW_TYPE", "ATOM", atom(description.type));
    if (description.transientFor != 0)
      setNumber(window, "WM_TRANSIENT_FOR", "WINDOW", description.transientFor);
    if (description.skipsTaskbar)
      setNumber(window, "_NET_WM_STATE", "ATOM", atom("_NET_WM_STATE_SKIP_TASKBAR"));
    if (description.takesClose) setNumber(window, "WM_PROTOCOLS", "ATOM", atom("WM_DELETE_WINDOW"));
    const std::uint32_t hints[9] = {1, description.takesInput ? 1U : 0U};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32,
                        9, hints);
    if (description.isMapped) xcb_map_window(m_connection, window);
    m_windows.insert(window);
    say("window " + std::to_string(window));
  }

  void grabPointer() {
    auto* reply = xcb_grab_pointer_reply(
        m_connection,
        xcb_grab_pointer(m_connection, 0, m_screen->root,
                         XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr);
    say(reply && reply->status == XCB_GRAB_STATUS_SUCCESS ? "pointer grabbed" : "pointer not grabbed");
    std::free(reply);
  }
  void grabKeyboard() {
    auto* reply = xcb_grab_keyboard_reply(m_connection,
                                          xcb_grab_keyboard(m_connection, 0, m_screen->root, XCB_CURRENT_TIME,
                                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                          nullptr);
    say(reply && reply->status == XCB_GRAB_STATUS_SUCCESS ? "keyboard grabbed" : "keyboard not grabbed");
    std::free(reply);
  }

  int loop(bool readsCommands) {
    const xcb_atom_t closeRequest = atom("WM_DELETE_WINDOW");
    while (!m_windows.empty() || readsCommands) {
      // First, since an answer that was waited for may have brought events along, of which poll
      // knows nothing.
      while (auto* event = xcb_poll_for_event(m_connection)) {
        handle(*event, closeRequest);
        std::free(event);
      }
      if (xcb_connection_has_error(m_connection)) return EXIT_FAILURE;
      if (m_windows.empty() && !readsCommands) break;
      pollfd sources[] = {{xcb_get_file_descriptor(m_connection), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
      xcb_flush(m_connection);
      poll(sources, readsCommands ? 2 : 1, -1);
      if (readsCommands && sources[1].revents != 0 && !obey()) return EXIT_SUCCESS;
    }
    return EXIT_SUCCESS;
  }

  void handle(const xcb_generic_event_t& event, xcb_atom_t closeRequest) {
    switch (event.response_type & 0x7F) {
    case XCB_CLIENT_MESSAGE: {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
      if (message.data.data32[0] == closeRequest) destroy(message.window, "closed ");
      return;
    }
    case XCB_BUTTON_PRESS:
      say("press " + std::to_string(reinterpret_cast<const xcb_button_press_event_t&>(event).detail));
      return;
    case XCB_BUTTON_RELEASE:
      say("release " + std::to_string(reinterpret_cast<const xcb_button_release_event_t&>(event).detail));
      return;
    case XCB_KEY_PRESS:
      say("key " + std::to_string(reinterpret_cast<const xcb_key_press_event_t&>(event).detail));
      return;
    case XCB_FOCUS_IN:
      say("focus " + std::to_string(reinterpret_cast<const xcb_focus_in_event_t&>(event).event));
      return;
    default:
      return;
    }
  }

  bool obey() {
    std::string line;
    if (!std::getline(std::cin, line)) return false;
    std::istringstream words(line);
    std::string verb;
    xcb_window_t window = XCB_NONE;
    words >> verb >> window;
    if (verb == "map") xcb_map_window(m_connection, window);
    if (verb == "unmap") xcb_unmap_window(m_connection, window);
    if (verb == "destroy") destroy(window, "destroyed ");
    sync();
    return true;
  }

  void destroy(xcb_window_t window, const char* how) {
    xcb_destroy_window(m_connection, window);
    m_windows.erase(window);
    sync();
    say(how + std::to_string(window));
  }

  xcb_connection_t* m_connection;
  xcb_screen_t* m_screen = nullptr;
  std::set<xcb_window_t> m_windows;
};

} // namespace

int main(int count, char** words) {
  return Client().run(count, words);
}
