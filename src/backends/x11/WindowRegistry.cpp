#include "backends/x11/WindowRegistry.h"

#include "backends/x11/Connection.h"
#include "backends/x11/WindowIdentity.h"

#include <algorithm>
#include <iterator>
#include <unistd.h>
#include <utility>

namespace orbel::x11 {

namespace {

xcb_window_t idOf(const common::TopLevelWindow& window) {
  return static_cast<xcb_window_t>(window.id);
}

bool isSameProgramsWindow(const common::TopLevelWindow& one, const common::TopLevelWindow& other) {
  return one.id == other.id && one.processIdentifier == other.processIdentifier &&
         one.instanceName == other.instanceName && one.className == other.className &&
         one.applicationId == other.applicationId && one.startupId == other.startupId &&
         one.isNormal == other.isNormal;
}

} // namespace

WindowRegistry::WindowRegistry(Connection& connection) : m_connection(connection) {}

bool WindowRegistry::update(const std::vector<xcb_window_t>& listed) {
  const auto before = listedWindows();
  takeOverList(listed);
  forgetGone();
  readStale();
  return !std::ranges::equal(before, listedWindows(), isSameProgramsWindow);
}

void WindowRegistry::takeOverList(const std::vector<xcb_window_t>& listed) {
  for (Entry& entry : m_entries)
    entry.isListed = false;
  for (const xcb_window_t window : listed) {
    if (Entry* known = find(window)) {
      known->isListed = true;
      continue;
    }
    Entry entry;
    entry.window.id = window;
    entry.isListed = true;
    m_entries.push_back(std::move(entry));
  }
}

// A window that we are not listening to is a new one: the server gives the number of a destroyed window to
// the next program's, and both may happen between two looks at the list.
void WindowRegistry::forgetGone() {
  std::vector<xcb_get_window_attributes_cookie_t> requests;
  for (const Entry& entry : m_entries)
    requests.push_back(xcb_get_window_attributes(m_connection.xcb(), idOf(entry.window)));

  std::vector<Entry> kept;
  std::vector<Entry> reborn;
  for (std::size_t index = 0; index < m_entries.size(); ++index) {
    Entry& entry = m_entries[index];
    const auto attributes =
        ownReply(xcb_get_window_attributes_reply(m_connection.xcb(), requests[index], nullptr));
    if (!attributes) continue;
    if ((attributes->your_event_mask & XCB_EVENT_MASK_PROPERTY_CHANGE) != 0) {
      kept.push_back(std::move(entry));
      continue;
    }
    // Listening begins before reading, so that no change falls between them.
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection.xcb(), idOf(entry.window), XCB_CW_EVENT_MASK, &mask);
    entry.isStale = true;
    reborn.push_back(std::move(entry));
  }
  std::ranges::move(reborn, std::back_inserter(kept));
  m_entries = std::move(kept);
}

void WindowRegistry::readStale() {
  std::vector<std::pair<Entry*, WindowIdentity>> requests;
  for (Entry& entry : m_entries)
    if (entry.isStale) requests.emplace_back(&entry, WindowIdentity(m_connection, idOf(entry.window)));
  for (auto& [entry, identity] : requests) {
    entry->window = identity.read();
    entry->isStale = false;
    entry->isTitleStale = false;
  }
}

bool WindowRegistry::propertyChanged(xcb_window_t window, xcb_atom_t property) {
  Entry* entry = find(window);
  if (!entry) return false;
  switch (WindowIdentity::kindOfProperty(m_connection, property)) {
  case WindowIdentity::PropertyKind::identification:
    entry->isStale = true;
    return true;
  case WindowIdentity::PropertyKind::title:
    entry->isTitleStale = true;
    return false;
  case WindowIdentity::PropertyKind::other:
    return false;
  }
  return false;
}

std::vector<common::TopLevelWindow> WindowRegistry::windows() {
  readStaleTitles();
  return listedWindows();
}

void WindowRegistry::readStaleTitles() {
  std::vector<std::pair<Entry*, WindowIdentity>> requests;
  for (Entry& entry : m_entries)
    if (entry.isTitleStale) requests.emplace_back(&entry, WindowIdentity(m_connection, idOf(entry.window)));
  for (auto& [entry, identity] : requests) {
    entry->window.title = identity.read().title;
    entry->isTitleStale = false;
  }
}

std::vector<common::TopLevelWindow> WindowRegistry::listedWindows() const {
  std::vector<common::TopLevelWindow> windows;
  for (const Entry& entry : m_entries)
    if (entry.isListed && entry.window.processIdentifier != getpid()) windows.push_back(entry.window);
  return windows;
}

WindowRegistry::Entry* WindowRegistry::find(xcb_window_t window) {
  const auto entry =
      std::ranges::find_if(m_entries, [&](const Entry& one) { return one.window.id == window; });
  return entry == m_entries.end() ? nullptr : &*entry;
}

} // namespace orbel::x11
