#include "tests/support/glib/MainLoop.h"

#include <array>
#include <glib.h>

namespace orbel::test {

namespace {
constexpr guint kLookAgain = 2; // milliseconds: a condition may depend on another process
}

testing::AssertionResult iterateUntil(const std::function<bool()>& condition,
                                      const std::string& description) {
  const guint wake = g_timeout_add(
      kLookAgain, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  const auto result = waitForResult([&] { return testing::AssertionResult(condition()); }, kPatience,
                                    description, [] { g_main_context_iteration(nullptr, TRUE); });
  g_source_remove(wake);
  return result;
}

void iterateWhatIsPending() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

int nextWakeUp() {
  constexpr int kNotOurs = -2; // another thread has the context
  iterateWhatIsPending();
  GMainContext* context = g_main_context_default();
  if (!g_main_context_acquire(context)) return kNotOurs;
  int priority = 0;
  int timeout = 0;
  std::array<GPollFD, 64> descriptors{};
  g_main_context_prepare(context, &priority);
  g_main_context_query(context, G_MAXINT, &timeout, descriptors.data(),
                       static_cast<gint>(descriptors.size()));
  g_main_context_release(context);
  return timeout;
}

} // namespace orbel::test
