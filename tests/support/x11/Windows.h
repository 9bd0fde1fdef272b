// What is open on the test screen: the window manager's lists, the focus, and each window as the server knows
// it. Rectangles are in pixels of the root window, y down, without borders of a window manager. A window that
// vanishes in between counts as unmapped, unnamed, nowhere.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/ScreenGeometry.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace orbel::test {

class Windows {
public:
  explicit Windows(DisplayConnection& display);

  // The managed windows without those of the desktop's kind: bottom to top, and in the order they
  // were mapped.
  std::vector<xcb_window_t> stackingOrder() const;
  std::vector<xcb_window_t> mappingOrder() const;
  // All that lie on the root window and are viewable, frames of a window manager among them; bottom to top.
  std::vector<xcb_window_t> viewable() const;
  // Among all windows, managed or not, that are viewable; the topmost match.
  std::optional<xcb_window_t> findByTitle(std::string_view title) const;
  // Either half of WM_CLASS.
  std::optional<xcb_window_t> findByClass(std::string_view name) const;
  // Viewable override-redirect windows whose client is this process, bottom to top.
  std::vector<xcb_window_t> overrideRedirectWindowsOf(pid_t process) const;
  // The window a press there would reach: the deepest client window, in view of input shapes; nothing over
  // the root.
  std::optional<xcb_window_t> windowAt(ScreenPoint place) const;

  // What the window manager calls active; nothing for none.
  std::optional<xcb_window_t> activeWindow() const;
  // The window that receives the keys; nothing for none and for the root.
  std::optional<xcb_window_t> focusWindow() const;
  bool hasCompositor() const;

  std::string title(xcb_window_t window) const;
  // The second half of WM_CLASS.
  std::string className(xcb_window_t window) const;
  // The process of the client as the server knows it, whatever the window claims.
  std::optional<pid_t> processOf(xcb_window_t window) const;
  bool exists(xcb_window_t window) const;
  bool isViewable(xcb_window_t window) const;
  bool isOverrideRedirect(xcb_window_t window) const;
  std::optional<ScreenRect> geometry(xcb_window_t window) const;
  // _NET_WM_WINDOW_OPACITY, 0 to 1; 1 where it is not set.
  double opacity(xcb_window_t window) const;
  std::vector<ScreenRect> inputShape(xcb_window_t window) const;
  // Whether the first one's frame lies over the second one's.
  bool isAbove(xcb_window_t upper, xcb_window_t lower) const;
  bool hasState(xcb_window_t window, std::string_view state) const;

  // As a task list would: with the source "pager".
  void activate(xcb_window_t window);
  void close(xcb_window_t window);

private:
  std::vector<xcb_window_t> clients(std::string_view property) const;
  std::vector<xcb_window_t> children(xcb_window_t window) const;
  std::vector<xcb_window_t> viewableTree() const;
  xcb_window_t topLevelAncestor(xcb_window_t window) const;
  bool acceptsInputAt(xcb_window_t window, ScreenPoint place) const;

  DisplayConnection& m_display;
};

} // namespace orbel::test
