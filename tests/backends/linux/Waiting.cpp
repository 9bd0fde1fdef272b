#include "tests/backends/linux/Waiting.h"

#include <glib.h>

namespace orbel::linux {

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

int nextWakeUp() {
  runReadySources();
  GMainContext* context = g_main_context_default();
  if (!g_main_context_acquire(context)) return -2;
  int priority = 0;
  int timeout = 0;
  GPollFD descriptors[64];
  g_main_context_prepare(context, &priority);
  g_main_context_query(context, G_MAXINT, &timeout, descriptors, 64);
  g_main_context_release(context);
  return timeout;
}

} // namespace orbel::linux
