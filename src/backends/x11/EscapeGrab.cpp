#include "backends/x11/EscapeGrab.h"

#include "backends/x11/PassiveKeyGrabs.h"
#include "foundation/Log.h"

#include <linux/input-event-codes.h>
#include <utility>

namespace orbel::x11 {

EscapeGrab::EscapeGrab(PassiveKeyGrabs& grabs, std::function<void()> pressed)
    : m_grabs(grabs), m_pressed(std::move(pressed)) {}

void EscapeGrab::setEnabled(bool enabled) {
  if (enabled == isEnabled()) return;
  m_grab.reset();
  if (!enabled) return;
  auto grabbed = m_grabs.grab({KEY_ESC, 0}, m_pressed);
  if (!grabbed) Log::warning(grabbed.cause());
  m_grab = std::move(grabbed).valueOr(Registration());
}

} // namespace orbel::x11
