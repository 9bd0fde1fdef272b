#include "backends/linux/GlibRunLoop.h"

#include <glib.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace orbel::linux {

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

// One source for all delays: of several sources that are ready in one turn GLib runs the oldest first, not
// the one that is due first.
struct GlibRunLoop::Delays {
  struct Delay {
    std::function<void()> block;
    std::uint64_t number;
  };
  std::multimap<std::int64_t, Delay> pending; // by the time when they are due, in microseconds
  std::uint64_t asked = 0;
  GSource* source = nullptr;

  static std::shared_ptr<Delays> make() {
    auto delays = std::make_shared<Delays>();
    delays->source = makeSource("orbel delays", G_PRIORITY_DEFAULT);
    // A block may start a loop of its own, in which the others still run.
    g_source_set_can_recurse(delays->source, TRUE);
    g_source_set_callback(
        delays->source,
        [](gpointer self) -> gboolean {
          (*static_cast<std::shared_ptr<Delays>*>(self))->run();
          return G_SOURCE_CONTINUE;
        },
        new std::shared_ptr<Delays>(delays),
        [](gpointer self) { delete static_cast<std::shared_ptr<Delays>*>(self); });
    g_source_attach(delays->source, nullptr);
    return delays;
  }

  void end() {
    g_source_destroy(source);
    g_source_unref(std::exchange(source, nullptr));
    const auto dropped = std::exchange(pending, {});
  }

  void add(std::int64_t due, std::function<void()> block) {
    pending.emplace(due, Delay{std::move(block), asked++});
    schedule();
  }

  void schedule() const { g_source_set_ready_time(source, pending.empty() ? -1 : pending.begin()->first); }

  void run() {
    const std::int64_t now = g_get_monotonic_time();
    const std::uint64_t firstOfNextTurn = asked;
    while (!pending.empty()) {
      const auto next = pending.begin();
      if (next->first > now || next->second.number >= firstOfNextTurn) break;
      const auto block = std::move(next->second.block);
      pending.erase(next);
      schedule();
      block();
    }
  }
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
    : m_clock(std::make_unique<MonotonicClock>()), m_delays(Delays::make()),
      m_frames(std::make_unique<Frames>()) {}

GlibRunLoop::~GlibRunLoop() {
  m_delays->end();
}

void GlibRunLoop::dropPending() {
  const auto dropped = std::exchange(m_delays->pending, {});
  m_delays->schedule();
}

const Clock& GlibRunLoop::clock() const {
  return *m_clock;
}

void GlibRunLoop::after(double seconds, std::function<void()> block) {
  const double wait = seconds > 0 ? std::min(seconds, kLongestDelay) : 0;
  m_delays->add(g_get_monotonic_time() + static_cast<std::int64_t>(wait * kMicroseconds), std::move(block));
}

Registration GlibRunLoop::onEveryFrame(std::function<void()> block) {
  auto entry = std::make_shared<std::function<void()>>(std::move(block));
  m_frames->blocks.push_back(entry);
  if (m_frames->living++ == 0) m_frames->begin();
  return Registration([this, life = m_lifetime.watch(), entry] {
    if (!life.hasEnded()) m_frames->end(entry);
  });
}

} // namespace orbel::linux
