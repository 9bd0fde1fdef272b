#include "settings/RestingFingersRecognizer.h"

#include <algorithm>
#include <cmath>

namespace orbel {

namespace {
float distance(Point from, Point to) {
  return std::hypot(static_cast<float>(to.x - from.x), static_cast<float>(to.y - from.y));
}
} // namespace

std::optional<RestingFingersRecognizer::Touches>
RestingFingersRecognizer::touchesChanged(const Touches& touches, std::int64_t fingerCount) {
  m_touchCount = static_cast<std::int64_t>(touches.size());
  m_currentTouches = touches;
  if (m_touchCount == fingerCount && m_nFingerRestPossible) {
    m_nFingerRestPossible = false;
    m_wereTooMany = false;
    return touches;
  }
  if (m_touchCount > fingerCount) {
    m_nFingerRestPossible = false;
    m_wereTooMany = true;
  }
  if (m_touchCount == 0) m_nFingerRestPossible = true;
  return std::nullopt;
}

void RestingFingersRecognizer::magnified() {
  m_touchCount = 0;
  m_currentTouches.clear();
}

bool RestingFingersRecognizer::isRest(const Touches& startTouches) const {
  const auto hasAllFingers = [this](const Touches& touches) {
    return static_cast<std::int64_t>(touches.size()) == m_touchCount;
  };
  if (m_wereTooMany || startTouches.empty() || !hasAllFingers(startTouches) ||
      !hasAllFingers(m_currentTouches))
    return false;

  float movement = 0;
  for (const Touch& start : startTouches) {
    const auto partner = std::find_if(m_currentTouches.begin(), m_currentTouches.end(),
                                      [&](const Touch& touch) { return touch.identity == start.identity; });
    if (partner == m_currentTouches.end()) return false;
    movement += distance(start.normalizedPosition, partner->normalizedPosition);
  }
  // A mean that is no number (a pad that reports nonsense) is below no limit.
  return movement / static_cast<float>(m_touchCount) < kMovementLimit;
}

} // namespace orbel
