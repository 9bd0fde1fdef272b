#include "backends/x11/DelayedCall.h"

#include <glib.h>
#include <utility>

namespace orbel::x11 {

DelayedCall::DelayedCall(std::function<void()> block) : m_block(std::move(block)) {}

DelayedCall::~DelayedCall() {
  cancel();
}

void DelayedCall::schedule(std::chrono::milliseconds delay) {
  if (isPending()) return;
  const auto run = [](gpointer self) -> gboolean {
    auto& call = *static_cast<DelayedCall*>(self);
    call.m_source = 0; // before the block, which may schedule the next call
    call.m_block();
    return G_SOURCE_REMOVE;
  };
  // Not an idle priority: a busy window would keep the call waiting.
  m_source = delay.count() == 0 ? g_idle_add_full(G_PRIORITY_DEFAULT, run, this, nullptr)
                                : g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(delay.count()),
                                                     run, this, nullptr);
}

void DelayedCall::cancel() {
  if (m_source != 0) g_source_remove(std::exchange(m_source, 0U));
}

} // namespace orbel::x11
