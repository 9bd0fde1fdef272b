#include "Waiting.h"

#include <glib.h>

namespace orbel {

namespace {
constexpr gint64 kDeadline = 10'000'000; // microseconds
constexpr guint kCheckInterval = 5; // milliseconds; a condition on a file or process wakes nobody by itself
} // namespace

bool waitUntil(const std::function<bool()>& condition) {
  const gint64 end = g_get_monotonic_time() + kDeadline;
  GSource* ticks = g_timeout_source_new(kCheckInterval);
  g_source_set_callback(
      ticks, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
  g_source_attach(ticks, nullptr);
  bool holds = condition();
  while (!holds && g_get_monotonic_time() < end) {
    g_main_context_iteration(nullptr, TRUE);
    holds = condition();
  }
  g_source_destroy(ticks);
  g_source_unref(ticks);
  return holds;
}

void runReadySources() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

} // namespace orbel
