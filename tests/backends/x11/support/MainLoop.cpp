#include "tests/backends/x11/support/MainLoop.h"

#include <glib.h>

namespace orbel::test {

namespace {
constexpr guint kLookAgain = 2; // milliseconds: a condition may depend on another process
} // namespace

bool iterateUntil(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
  const gint64 deadline = g_get_monotonic_time() + patience.count() * 1000;
  const guint wake = g_timeout_add(
      kLookAgain, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  bool holds = condition();
  while (!holds && g_get_monotonic_time() < deadline) {
    g_main_context_iteration(nullptr, TRUE);
    holds = condition();
  }
  g_source_remove(wake);
  return holds;
}

bool waitUntil(const std::function<bool()>& condition) {
  const gint64 deadline = g_get_monotonic_time() + std::chrono::microseconds(kPatience).count();
  while (!condition()) {
    if (g_get_monotonic_time() >= deadline) return false;
    g_usleep(500); // another process is waited for, of which no event of ours tells
  }
  return true;
}

void iterateWhatIsPending() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

} // namespace orbel::test
