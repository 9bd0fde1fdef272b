#include "backends/x11/WindowRestoration.h"

#include "backends/x11/ActiveWindow.h"
#include "backends/x11/ClickWatch.h"
#include "backends/x11/ClientList.h"
#include "backends/x11/WindowActivation.h"
#include "backends/x11/WindowRegistry.h"

#include <algorithm>
#include <utility>

namespace orbel::x11 {

namespace {
// Longer than a window manager takes to obey, shorter than a user takes to choose another window.
constexpr std::chrono::milliseconds kObeyed{100};
} // namespace

WindowRestoration::WindowRestoration(ClickWatch& clicks, const ClientList& clients,
                                     const ActiveWindow& active, WindowActivation& activation,
                                     WindowRegistry& registry)
    : m_clicks(clicks), m_clients(clients), m_active(active), m_activation(activation), m_registry(registry),
      m_confirmation([this] { confirm(); }) {}

xcb_timestamp_t WindowRestoration::mark() {
  forget();
  m_stackAtSummon = m_clients.stackingOrder();
  return m_clicks.mark();
}

bool WindowRestoration::restore(xcb_window_t window, xcb_timestamp_t summon) {
  forget();
  if (m_clicks.hasClickedElsewhereSince(summon)) return false;
  // Window managers without an active window give the focus back when ours is unmapped; asking again would
  // only raise.
  if (isInPlace(window)) return true;
  if (!m_activation.isOnShownDesktop(window)) return false;
  m_request = Request{window, summon, m_active.window()};
  if (!m_activation.activate(window)) {
    forget();
    return false;
  }
  m_confirmation.schedule(kObeyed);
  return true;
}

void WindowRestoration::forget() {
  m_request.reset();
  m_confirmation.cancel();
}

// A program that raised itself in the same moment may still have a request for the focus under way in the
// window manager, later than ours by its time stamp: then ours is refused without a word. One more comes
// after it. What else is active by now was put there since.
void WindowRestoration::confirm() {
  const auto request = std::exchange(m_request, std::nullopt);
  if (!request || isInPlace(request->window)) return;
  const auto active = m_active.window();
  if (active != request->activeBefore && active != request->window) return;
  if (m_clicks.hasClickedElsewhereSince(request->summon)) return;
  if (m_activation.isOnShownDesktop(request->window)) m_activation.activate(request->window);
}

bool WindowRestoration::isInPlace(xcb_window_t window) const {
  return m_active.window() == window && !isCoveredSinceSummon(window);
}

// A program that raises its window need not take the focus; the earlier window belongs in front of it all
// the same.
bool WindowRestoration::isCoveredSinceSummon(xcb_window_t window) const {
  const auto windowsAbove = [window](const std::vector<xcb_window_t>& stack) {
    const auto place = std::ranges::find(stack, window);
    return place == stack.end() ? stack : std::vector<xcb_window_t>(place + 1, stack.end());
  };
  const auto before = windowsAbove(m_stackAtSummon);
  const auto ofPrograms = m_registry.windows();
  return std::ranges::any_of(windowsAbove(m_clients.stackingOrder()), [&](xcb_window_t above) {
    const bool isNew = std::ranges::find(before, above) == before.end();
    return isNew && std::ranges::any_of(ofPrograms, [&](const auto& one) { return one.id == above; });
  });
}

} // namespace orbel::x11
