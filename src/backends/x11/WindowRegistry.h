// What is known of every top-level window, in the order in which the windows were first seen. A window keeps
// its place while it exists, also while no list names it: a window manager that restarts forgets the order.
#pragma once

#include "backends/common/TopLevelWindows.h"

#include <vector>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class WindowRegistry {
public:
  explicit WindowRegistry(Connection& connection);

  // Takes over the current list: reads what is new or stale, forgets what no longer exists. Whether anything
  // changed about which windows there are and to which programs they belong.
  bool update(const std::vector<xcb_window_t>& listed);
  // A property changed. True when update() must be called for it; a new title is read when asked for.
  bool propertyChanged(xcb_window_t window, xcb_atom_t property);
  // The listed windows without our own, with their titles of now.
  std::vector<common::TopLevelWindow> windows();

private:
  struct Entry {
    common::TopLevelWindow window;
    bool isListed = false;
    bool isStale = true;
    bool isTitleStale = false;
  };
  Entry* find(xcb_window_t window);
  void takeOverList(const std::vector<xcb_window_t>& listed);
  void forgetGone();
  void readStale();
  void readStaleTitles();
  std::vector<common::TopLevelWindow> listedWindows() const;

  Connection& m_connection;
  std::vector<Entry> m_entries;
};

} // namespace orbel::x11
