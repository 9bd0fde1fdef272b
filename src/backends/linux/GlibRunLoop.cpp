#include "backends/linux/GlibRunLoop.h"

#include <glib.h>

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <utility>
#include <vector>

namespace orbel {

namespace {

constexpr std::int64_t kMicroseconds = 1'000'000;
constexpr double kLongestDelay = 1e9; // seconds; keeps the sum with the clock far from overflow

class MonotonicClock : public Clock {
public:
  double now() const override {
    return static_cast<double>(g_get_monotonic_time()) / static_cast<double>(kMicroseconds);
  }
};

gboolean dispatch(GSource*, GSourceFunc callback, gpointer data) {
  return callback(data);
}

// Without prepare and check functions a source is ready by its ready time alone, which counts microseconds
// where GLib's own time-outs count milliseconds.
GSourceFuncs& readyTimeFunctions() {
  static GSourceFuncs functions{nullptr, nullptr, dispatch, nullptr, nullptr, nullptr};
  return functions;
}

GSource* makeSource(const char* name, int priority) {
  GSource* source = g_source_new(&readyTimeFunctions(), sizeof(GSource));
  g_source_set_name(source, name);
  g_source_set_priority(source, priority);
  return source;
}

} // namespace

struct GlibRunLoop::Delays {
  std::unordered_set<GSource*> pending;
};

struct GlibRunLoop::Frames {
  using Block = std::shared_ptr<std::function<void()>>;

  std::vector<Block> blocks; // an ended one is empty until no dispatch is under way
  std::size_t living = 0;
  int dispatchDepth = 0;
  GSource* source = nullptr;
  std::int64_t start = 0; // microseconds; frame n falls due at start + n / kFramesPerSecond
  std::int64_t index = 0;

  ~Frames() { stop(); }

  void begin() {
    start = g_get_monotonic_time();
    index = 0;
    // Above the default priority: a burst of pointer events must not hold a frame back.
    source = makeSource("orbel frames", G_PRIORITY_HIGH);
    g_source_set_can_recurse(source, TRUE);
    g_source_set_callback(
        source, [](gpointer self) { return static_cast<Frames*>(self)->run(); }, this, nullptr);
    schedule();
    g_source_attach(source, nullptr);
  }

  void stop() {
    if (!source) return;
    g_source_destroy(source);
    g_source_unref(std::exchange(source, nullptr));
  }

  // The next frame of the raster that still lies ahead. Always ahead, so that slow frames leave room for
  // other events.
  void schedule() {
    const std::int64_t elapsed = g_get_monotonic_time() - start;
    constexpr auto kRate = static_cast<std::int64_t>(kFramesPerSecond);
    index = std::max(index, elapsed * kRate / kMicroseconds + 1);
    // Rounded up: a frame just before its place in the raster would be followed by another one at once.
    g_source_set_ready_time(source, start + (index * kMicroseconds + kRate - 1) / kRate);
  }

  gboolean run() {
    schedule(); // before the blocks: one of them may start a loop of its own
    ++dispatchDepth;
    const std::size_t count = blocks.size();
    for (std::size_t i = 0; i < count && i < blocks.size(); ++i) {
      if (const Block block = blocks[i]) (*block)();
    }
    --dispatchDepth;
    if (dispatchDepth == 0) std::erase(blocks, nullptr);
    if (source) schedule();
    return G_SOURCE_CONTINUE;
  }

  void end(const Block& block) {
    const auto place = std::find(blocks.begin(), blocks.end(), block);
    if (place == blocks.end()) return;
    if (dispatchDepth > 0) {
      place->reset();
    } else {
      blocks.erase(place);
    }
    if (--living == 0) stop();
  }
};

GlibRunLoop::GlibRunLoop()
    : m_clock(std::make_unique<MonotonicClock>()), m_delays(std::make_shared<Delays>()),
      m_frames(std::make_shared<Frames>()) {}

GlibRunLoop::~GlibRunLoop() {
  dropPending();
}

void GlibRunLoop::dropPending() {
  for (GSource* source : std::exchange(m_delays->pending, {}))
    g_source_destroy(source);
}

const Clock& GlibRunLoop::clock() const {
  return *m_clock;
}

void GlibRunLoop::after(double seconds, std::function<void()> block) {
  struct Delay {
    GSource* source;
    std::shared_ptr<Delays> delays;
    std::function<void()> block;
  };
  GSource* source = makeSource("orbel delay", G_PRIORITY_DEFAULT);
  const double wait = seconds > 0 ? std::min(seconds, kLongestDelay) : 0;
  g_source_set_ready_time(source, g_get_monotonic_time() + static_cast<std::int64_t>(wait * kMicroseconds));
  m_delays->pending.insert(source);
  g_source_set_callback(
      source,
      [](gpointer data) -> gboolean {
        auto* delay = static_cast<Delay*>(data);
        delay->delays->pending.erase(delay->source);
        const auto run = std::move(delay->block);
        run();
        return G_SOURCE_REMOVE;
      },
      new Delay{source, m_delays, std::move(block)}, [](gpointer data) { delete static_cast<Delay*>(data); });
  g_source_attach(source, nullptr);
  g_source_unref(source);
}

Registration GlibRunLoop::onEveryFrame(std::function<void()> block) {
  auto entry = std::make_shared<std::function<void()>>(std::move(block));
  m_frames->blocks.push_back(entry);
  if (m_frames->living++ == 0) m_frames->begin();
  return Registration([entry, frames = std::weak_ptr(m_frames)] {
    if (const auto living = frames.lock()) living->end(entry);
  });
}

} // namespace orbel
