#include "backends/evdev/PinchDetector.h"

#include <cmath>

namespace orbel::evdev {

namespace {
constexpr std::size_t kFewestFingers = 2;

double meanDistanceFromMiddle(const std::vector<Touch>& touches) {
  const auto count = static_cast<double>(touches.size());
  Point middle;
  for (const Touch& touch : touches) {
    middle.x += touch.normalizedPosition.x / count;
    middle.y += touch.normalizedPosition.y / count;
  }
  double sum = 0;
  for (const Touch& touch : touches)
    sum += std::hypot(touch.normalizedPosition.x - middle.x, touch.normalizedPosition.y - middle.y);
  return sum / count;
}
} // namespace

bool PinchDetector::touchesChanged(const std::vector<Touch>& touches) {
  if (touches.size() < kFewestFingers) {
    m_fingerCount = touches.size();
    m_isPinching = false;
    return false;
  }
  const double spread = meanDistanceFromMiddle(touches);
  if (touches.size() != m_fingerCount) {
    m_fingerCount = touches.size();
    m_startSpread = spread;
    m_isPinching = false;
    return false;
  }
  const double change = std::abs(spread - m_startSpread);
  m_isPinching = m_isPinching || (change > kSpreadChange * m_startSpread && change > kSmallestChange);
  return m_isPinching;
}

} // namespace orbel::evdev
