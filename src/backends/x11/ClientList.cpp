#include "backends/x11/ClientList.h"

#include "backends/x11/Connection.h"
#include "backends/x11/PropertyRequest.h"

#include <utility>

namespace orbel::x11 {

namespace {

constexpr int kDeepestClient = 3; // below the root: frame, wrapper, client
constexpr std::uint32_t kWithdrawnState = 0;

} // namespace

ClientList::ClientList(Connection& connection) : m_connection(connection) {}

xcb_window_t ClientList::windowManager() const {
  const auto named = namedWindowManager();
  if (named == XCB_NONE) return XCB_NONE;
  // A window manager that has ended leaves the name of its window behind.
  PropertyRequest own(m_connection, named, "_NET_SUPPORTING_WM_CHECK");
  return own.number() == named ? named : XCB_NONE;
}

xcb_window_t ClientList::namedWindowManager() const {
  return PropertyRequest(m_connection, m_connection.root(), "_NET_SUPPORTING_WM_CHECK")
      .number()
      .value_or(XCB_NONE);
}

std::vector<xcb_window_t> ClientList::windows() const {
  return windowManager() != XCB_NONE ? listed("_NET_CLIENT_LIST") : windowsWithoutManager();
}

std::vector<xcb_window_t> ClientList::stackingOrder() const {
  return windowManager() != XCB_NONE ? listed("_NET_CLIENT_LIST_STACKING") : windowsWithoutManager();
}

std::vector<xcb_window_t> ClientList::listed(const char* property) const {
  PropertyRequest list(m_connection, m_connection.root(), property);
  const auto windows = list.numbers();
  return {windows.begin(), windows.end()};
}

xcb_window_t ClientList::clientWithin(xcb_window_t topLevel) const {
  std::vector<xcb_window_t> level = {topLevel};
  for (int depth = 0; depth < kDeepestClient && !level.empty(); ++depth) {
    std::vector<PropertyRequest> states;
    for (const xcb_window_t window : level)
      states.emplace_back(m_connection, window, "WM_STATE");
    for (std::size_t index = 0; index < level.size(); ++index)
      if (states[index].number().value_or(kWithdrawnState) != kWithdrawnState) return level[index];

    std::vector<xcb_window_t> below;
    for (const xcb_window_t window : level)
      for (const xcb_window_t child : children(window))
        below.push_back(child);
    level = std::move(below);
  }
  return XCB_NONE;
}

std::vector<xcb_window_t> ClientList::children(xcb_window_t window) const {
  const auto tree =
      ownReply(xcb_query_tree_reply(m_connection.xcb(), xcb_query_tree(m_connection.xcb(), window), nullptr));
  if (!tree) return {};
  const xcb_window_t* first = xcb_query_tree_children(tree.get());
  return {first, first + xcb_query_tree_children_length(tree.get())};
}

// Simple window managers leave only WM_STATE on the programs' windows; with none at all, every shown window
// that does not forbid to be managed is a program's.
std::vector<xcb_window_t> ClientList::windowsWithoutManager() const {
  const auto topLevels = children(m_connection.root());
  std::vector<xcb_get_window_attributes_cookie_t> requests;
  for (const xcb_window_t window : topLevels)
    requests.push_back(xcb_get_window_attributes(m_connection.xcb(), window));

  std::vector<xcb_window_t> windows;
  for (std::size_t index = 0; index < topLevels.size(); ++index) {
    const auto attributes =
        ownReply(xcb_get_window_attributes_reply(m_connection.xcb(), requests[index], nullptr));
    if (!attributes || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT) continue;
    const bool isPlainWindow =
        attributes->map_state == XCB_MAP_STATE_VIEWABLE && !attributes->override_redirect;
    if (const xcb_window_t client = clientWithin(topLevels[index]); client != XCB_NONE)
      windows.push_back(client);
    else if (isPlainWindow)
      windows.push_back(topLevels[index]);
  }
  return windows;
}

} // namespace orbel::x11
