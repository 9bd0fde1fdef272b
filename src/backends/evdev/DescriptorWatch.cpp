#include "backends/evdev/DescriptorWatch.h"

#include <glib-unix.h>
#include <utility>

namespace orbel::evdev {

namespace {
constexpr gint64 kAtOnce = 0;
constexpr gint64 kNever = -1;
} // namespace

DescriptorWatch::DescriptorWatch(int descriptor, Block readable)
    : m_source(g_unix_fd_source_new(descriptor, static_cast<GIOCondition>(G_IO_IN | G_IO_ERR | G_IO_HUP))) {
  const GUnixFDSourceFunc dispatch = [](gint, GIOCondition condition, gpointer data) -> gboolean {
    GSource* source = g_main_current_source();
    const Rest rest =
        (*static_cast<Block*>(data))((condition & (G_IO_HUP | G_IO_ERR)) != 0 ? State::hungUp : State::alive);
    if (!g_source_is_destroyed(source))
      g_source_set_ready_time(source, rest == Rest::some ? kAtOnce : kNever);
    return G_SOURCE_CONTINUE;
  };
  // The source owns the block: destroyed from within it, GLib releases it only after the call.
  g_source_set_callback(m_source, G_SOURCE_FUNC(dispatch), new Block(std::move(readable)),
                        [](gpointer data) { delete static_cast<Block*>(data); });
  g_source_attach(m_source, nullptr);
}

DescriptorWatch::~DescriptorWatch() {
  g_source_destroy(m_source);
  g_source_unref(m_source);
}

} // namespace orbel::evdev
