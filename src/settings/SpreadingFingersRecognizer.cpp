#include "settings/SpreadingFingersRecognizer.h"

#include <cmath>
#include <limits>

namespace orbel {

namespace {
float meanDistanceFromCentroid(const std::vector<Touch>& touches) {
  const auto count = static_cast<double>(touches.size());
  Point centroid;
  for (const Touch& touch : touches) {
    centroid.x += touch.normalizedPosition.x / count;
    centroid.y += touch.normalizedPosition.y / count;
  }
  float sum = 0;
  for (const Touch& touch : touches) {
    sum += std::hypot(static_cast<float>(touch.normalizedPosition.x - centroid.x),
                      static_cast<float>(touch.normalizedPosition.y - centroid.y));
  }
  return sum / static_cast<float>(touches.size());
}
} // namespace

bool SpreadingFingersRecognizer::touchesChanged(const std::vector<Touch>& touches, std::size_t fingerCount) {
  if (touches.empty() || touches.size() != fingerCount) {
    m_magnifyStartDistance = 0;
    return false;
  }
  const float distance = meanDistanceFromCentroid(touches);
  if (m_magnifyStartDistance == 0) {
    m_magnifyStartDistance = distance;
    return false;
  }
  if (!(distance > kSpreadFactor * m_magnifyStartDistance)) return false;
  m_magnifyStartDistance = std::numeric_limits<float>::max();
  return true;
}

} // namespace orbel
