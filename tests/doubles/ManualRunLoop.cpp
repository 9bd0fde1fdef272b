#include "tests/doubles/ManualRunLoop.h"

#include <algorithm>
#include <utility>

namespace orbel {

void ManualRunLoop::after(double seconds, std::function<void()> block) {
  m_delays.push_back({m_clock.time + seconds, std::move(block)});
}

Registration ManualRunLoop::onEveryFrame(std::function<void()> block) {
  if (!wantsFrames()) m_nextFrame = m_clock.time + kFrameInterval;
  return m_frames.add(std::move(block));
}

void ManualRunLoop::advance(double seconds) {
  const double end = m_clock.time + seconds;
  while (true) {
    const auto earliest = std::min_element(m_delays.begin(), m_delays.end(),
                                           [](const Delay& a, const Delay& b) { return a.due < b.due; });
    const bool delayDue = earliest != m_delays.end() && earliest->due <= end;
    const bool frameDue = wantsFrames() && m_nextFrame <= end;
    if (delayDue && (!frameDue || earliest->due <= m_nextFrame)) {
      m_clock.time = std::max(m_clock.time, earliest->due);
      auto block = std::move(earliest->block);
      m_delays.erase(earliest);
      block();
    } else if (frameDue) {
      m_clock.time = std::max(m_clock.time, m_nextFrame);
      while (m_nextFrame <= m_clock.time)
        m_nextFrame += kFrameInterval;
      ++m_framesRun;
      m_frames.call();
    } else {
      break;
    }
  }
  m_clock.time = end;
}

} // namespace orbel
