#include "tests/support/x11/Windows.h"

#include "tests/support/x11/XcbReply.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <xcb/res.h>
#include <xcb/shape.h>

namespace orbel::test {

namespace {

constexpr std::uint32_t kSourcePager = 2;

// The two strings of WM_CLASS, each ended by a zero byte.
std::vector<std::string> splitAtZeros(const std::string& text) {
  std::vector<std::string> parts(1);
  for (const char character : text) {
    if (character == '\0') {
      parts.emplace_back();
    } else {
      parts.back() += character;
    }
  }
  return parts;
}

XcbReply<xcb_get_window_attributes_reply_t> attributes(const DisplayConnection& display,
                                                       xcb_window_t window) {
  const auto cookie = xcb_get_window_attributes(display.get(), window);
  return XcbReply<xcb_get_window_attributes_reply_t>(
      xcb_get_window_attributes_reply(display.get(), cookie, nullptr));
}

template <class Predicate>
std::optional<xcb_window_t> lastMatch(const std::vector<xcb_window_t>& windows, Predicate matches) {
  const auto found = std::find_if(windows.rbegin(), windows.rend(), matches);
  return found == windows.rend() ? std::nullopt : std::optional(*found);
}

} // namespace

Windows::Windows(DisplayConnection& display) : m_display(display) {
  // Process ids of clients need version 1.2.
  const auto cookie = xcb_res_query_version(display.get(), 1, 2);
  const XcbReply<xcb_res_query_version_reply_t> reply(
      xcb_res_query_version_reply(display.get(), cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server has no resource extension");
}

std::vector<xcb_window_t> Windows::stackingOrder() const {
  return clients("_NET_CLIENT_LIST_STACKING");
}

std::vector<xcb_window_t> Windows::mappingOrder() const {
  return clients("_NET_CLIENT_LIST");
}

std::vector<xcb_window_t> Windows::clients(std::string_view property) const {
  auto windows = m_display.values(m_display.root(), property).value_or(std::vector<xcb_window_t>{});
  const xcb_atom_t desktop = m_display.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
  std::erase_if(windows, [&](xcb_window_t window) {
    return m_display.value(window, "_NET_WM_WINDOW_TYPE") == desktop;
  });
  return windows;
}

std::vector<xcb_window_t> Windows::viewable() const {
  auto windows = children(m_display.root());
  std::erase_if(windows, [this](xcb_window_t window) { return !isViewable(window); });
  return windows;
}

std::optional<xcb_window_t> Windows::findByTitle(std::string_view name) const {
  return lastMatch(viewableTree(), [&](xcb_window_t window) { return title(window) == name; });
}

std::optional<xcb_window_t> Windows::findByClass(std::string_view name) const {
  return lastMatch(viewableTree(), [&](xcb_window_t window) {
    const auto text = m_display.text(window, "WM_CLASS");
    if (!text) return false;
    const auto parts = splitAtZeros(*text);
    return std::find(parts.begin(), std::prev(parts.end()), name) != std::prev(parts.end());
  });
}

std::vector<xcb_window_t> Windows::overrideRedirectWindowsOf(pid_t process) const {
  auto windows = children(m_display.root());
  std::erase_if(windows, [&](xcb_window_t window) {
    return !isViewable(window) || !isOverrideRedirect(window) || processOf(window) != process;
  });
  return windows;
}

std::optional<xcb_window_t> Windows::windowAt(ScreenPoint place) const {
  xcb_window_t window = m_display.root();
  for (;;) {
    const auto inner = lastMatch(children(window), [&](xcb_window_t child) {
      return isViewable(child) && acceptsInputAt(child, place);
    });
    if (!inner) break;
    window = *inner;
  }
  return window == m_display.root() ? std::nullopt : std::optional(window);
}

std::optional<xcb_window_t> Windows::activeWindow() const {
  const auto window = m_display.value(m_display.root(), "_NET_ACTIVE_WINDOW");
  return window && *window != XCB_NONE ? window : std::nullopt;
}

std::optional<xcb_window_t> Windows::focusWindow() const {
  const auto cookie = xcb_get_input_focus(m_display.get());
  const XcbReply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(m_display.get(), cookie, nullptr));
  const bool isWindow = reply && reply->focus != XCB_INPUT_FOCUS_NONE &&
                        reply->focus != XCB_INPUT_FOCUS_POINTER_ROOT && reply->focus != m_display.root();
  return isWindow ? std::optional(reply->focus) : std::nullopt;
}

bool Windows::hasCompositor() const {
  return m_display.selectionOwner("_NET_WM_CM_S0") != XCB_NONE;
}

std::string Windows::title(xcb_window_t window) const {
  if (const auto name = m_display.text(window, "_NET_WM_NAME")) return *name;
  return m_display.text(window, "WM_NAME").value_or("");
}

std::string Windows::className(xcb_window_t window) const {
  const auto parts = splitAtZeros(m_display.text(window, "WM_CLASS").value_or(""));
  return parts.size() > 1 ? parts[1] : "";
}

std::optional<pid_t> Windows::processOf(xcb_window_t window) const {
  const xcb_res_client_id_spec_t question{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const auto cookie = xcb_res_query_client_ids(m_display.get(), 1, &question);
  const XcbReply<xcb_res_query_client_ids_reply_t> reply(
      xcb_res_query_client_ids_reply(m_display.get(), cookie, nullptr));
  if (!reply) return std::nullopt;
  auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
  for (; ids.rem > 0; xcb_res_client_id_value_next(&ids)) {
    const bool isProcess = (ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
    if (isProcess && xcb_res_client_id_value_value_length(ids.data) > 0) {
      return static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
    }
  }
  return std::nullopt;
}

bool Windows::exists(xcb_window_t window) const {
  const auto reply = attributes(m_display, window);
  return reply != nullptr;
}

bool Windows::isViewable(xcb_window_t window) const {
  const auto reply = attributes(m_display, window);
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool Windows::isOverrideRedirect(xcb_window_t window) const {
  const auto reply = attributes(m_display, window);
  return reply && reply->override_redirect;
}

std::optional<ScreenRect> Windows::geometry(xcb_window_t window) const {
  const auto sizeCookie = xcb_get_geometry(m_display.get(), window);
  const auto placeCookie = xcb_translate_coordinates(m_display.get(), window, m_display.root(), 0, 0);
  const XcbReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(m_display.get(), sizeCookie, nullptr));
  const XcbReply<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(m_display.get(), placeCookie, nullptr));
  if (!size || !place) return std::nullopt;
  return ScreenRect{place->dst_x, place->dst_y, size->width, size->height};
}

double Windows::opacity(xcb_window_t window) const {
  const auto value = m_display.value(window, "_NET_WM_WINDOW_OPACITY");
  return value ? *value / static_cast<double>(std::numeric_limits<std::uint32_t>::max()) : 1;
}

std::vector<ScreenRect> Windows::inputShape(xcb_window_t window) const {
  const auto cookie = xcb_shape_get_rectangles(m_display.get(), window, XCB_SHAPE_SK_INPUT);
  const XcbReply<xcb_shape_get_rectangles_reply_t> reply(
      xcb_shape_get_rectangles_reply(m_display.get(), cookie, nullptr));
  const auto origin = geometry(window);
  std::vector<ScreenRect> result;
  if (!reply || !origin) return result;
  const xcb_rectangle_t* rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
  const int number = xcb_shape_get_rectangles_rectangles_length(reply.get());
  std::transform(rectangles, rectangles + number, std::back_inserter(result),
                 [&](const xcb_rectangle_t& rect) {
                   return ScreenRect{origin->x + rect.x, origin->y + rect.y, rect.width, rect.height};
                 });
  return result;
}

bool Windows::isAbove(xcb_window_t upper, xcb_window_t lower) const {
  const auto order = children(m_display.root());
  const auto upperPlace = std::find(order.begin(), order.end(), topLevelAncestor(upper));
  const auto lowerPlace = std::find(order.begin(), order.end(), topLevelAncestor(lower));
  return upperPlace != order.end() && lowerPlace != order.end() && upperPlace > lowerPlace;
}

bool Windows::hasState(xcb_window_t window, std::string_view state) const {
  const auto states = m_display.values(window, "_NET_WM_STATE").value_or(std::vector<xcb_atom_t>{});
  return std::find(states.begin(), states.end(), m_display.atom(state)) != states.end();
}

void Windows::activate(xcb_window_t window) {
  m_display.sendToWindowManager(window, "_NET_ACTIVE_WINDOW", {kSourcePager, XCB_CURRENT_TIME, XCB_NONE});
}

void Windows::close(xcb_window_t window) {
  m_display.sendToWindowManager(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, kSourcePager});
}

std::vector<xcb_window_t> Windows::children(xcb_window_t window) const {
  const auto cookie = xcb_query_tree(m_display.get(), window);
  const XcbReply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(m_display.get(), cookie, nullptr));
  if (!reply) return {};
  const xcb_window_t* first = xcb_query_tree_children(reply.get());
  return {first, first + xcb_query_tree_children_length(reply.get())};
}

// Bottom to top, parents before their children.
std::vector<xcb_window_t> Windows::viewableTree() const {
  std::vector<xcb_window_t> found;
  std::vector<xcb_window_t> waiting = children(m_display.root());
  std::reverse(waiting.begin(), waiting.end());
  while (!waiting.empty()) {
    const xcb_window_t window = waiting.back();
    waiting.pop_back();
    if (!isViewable(window)) continue;
    found.push_back(window);
    const auto inner = children(window);
    waiting.insert(waiting.end(), inner.rbegin(), inner.rend());
  }
  return found;
}

xcb_window_t Windows::topLevelAncestor(xcb_window_t window) const {
  for (;;) {
    const auto cookie = xcb_query_tree(m_display.get(), window);
    const XcbReply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(m_display.get(), cookie, nullptr));
    if (!reply || reply->parent == XCB_NONE || reply->parent == m_display.root()) return window;
    window = reply->parent;
  }
}

bool Windows::acceptsInputAt(xcb_window_t window, ScreenPoint place) const {
  const auto area = geometry(window);
  if (!area || !area->contains(place)) return false;
  const auto shape = inputShape(window);
  return std::any_of(shape.begin(), shape.end(),
                     [&](const ScreenRect& rect) { return rect.contains(place); });
}

} // namespace orbel::test
