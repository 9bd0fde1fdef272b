#include "settings/PointerCircleRecognizer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace orbel {

namespace {
constexpr std::size_t kSampleCapacity = 32; // a second of samples, with some to spare
constexpr float kSmallestRadius = 5;        // points, of every sample
constexpr float kMeanRadiusLimit = 20;      // points, to be exceeded
constexpr std::size_t kSampleCountLimit = 6;
constexpr int kStepCountLimit = 6;
constexpr double kSmallestStepLimit = 0.15; // radians, to be exceeded
constexpr double kFullTurn = 2 * std::numbers::pi;
constexpr double kSweepLimit = 1.6 * std::numbers::pi; // radians, to be exceeded
constexpr double kLastEighth = 7 * std::numbers::pi / 4;
constexpr double kFirstEighth = std::numbers::pi / 4;
constexpr double kNoStep = std::numeric_limits<float>::max();

float radius(Point center, Point position) {
  return std::hypot(static_cast<float>(position.x - center.x), static_cast<float>(position.y - center.y));
}

// From straight up, clockwise, 0 to a full turn.
double angle(Point center, Point position) {
  const double result = std::atan2(position.x - center.x, position.y - center.y);
  return result < 0 ? result + kFullTurn : result;
}

// Follows the angles of the samples as long as they only grow.
class Sweep {
public:
  explicit Sweep(double start) : m_start(start) {}

  void add(double next) {
    if (!m_previous) {
      advance(next);
    } else if (next > *m_previous) {
      m_smallestStep = std::min(m_smallestStep, next - *m_previous);
      advance(next);
    } else if (*m_previous > kLastEighth && next < kFirstEighth) {
      m_smallestStep = std::min(m_smallestStep, next + kFullTurn - *m_previous);
      advance(next);
    } else {
      // Backwards. The start stays: only what follows has to be steady.
      m_previous.reset();
      m_smallestStep = kNoStep;
      m_stepCount = 0;
    }
  }

  bool isCircle() const {
    return m_previous && m_smallestStep > kSmallestStepLimit && m_stepCount >= kStepCountLimit &&
           covered() > kSweepLimit;
  }

private:
  void advance(double next) {
    m_previous = next;
    ++m_stepCount;
  }
  double covered() const {
    const double difference = *m_previous - m_start;
    return difference < 0 ? difference + kFullTurn : difference;
  }

  double m_start;
  std::optional<double> m_previous;
  double m_smallestStep = kNoStep;
  int m_stepCount = 0;
};
} // namespace

PointerCircleRecognizer::PointerCircleRecognizer() {
  m_positions.reserve(kSampleCapacity);
  m_timestamps.reserve(kSampleCapacity);
}

bool PointerCircleRecognizer::isSampleDue(double now) const {
  return m_timestamps.empty() || now - m_timestamps.back() >= kSampleInterval;
}

bool PointerCircleRecognizer::addSample(Point position, double now) {
  if (!isSampleDue(now)) return false;
  m_positions.push_back(position);
  m_timestamps.push_back(now);
  dropStaleSamples(now);
  const Point middle = center();
  if (!hasCircularRadius(middle) || !sweepsClockwise(middle)) return false;
  m_positions.clear();
  m_timestamps.clear();
  return true;
}

void PointerCircleRecognizer::dropStaleSamples(double now) {
  const auto stale = std::find_if(m_timestamps.begin(), m_timestamps.end(),
                                  [now](double time) { return now - time <= kSampleLifetime; }) -
                     m_timestamps.begin();
  m_timestamps.erase(m_timestamps.begin(), m_timestamps.begin() + stale);
  m_positions.erase(m_positions.begin(), m_positions.begin() + stale);
}

Point PointerCircleRecognizer::center() const {
  Point sum;
  for (const Point& position : m_positions) {
    sum.x += position.x;
    sum.y += position.y;
  }
  const auto count = static_cast<double>(m_positions.size());
  return {sum.x / count, sum.y / count};
}

bool PointerCircleRecognizer::hasCircularRadius(Point center) const {
  if (m_positions.size() < kSampleCountLimit) return false;
  float sum = 0;
  for (const Point& position : m_positions) {
    const float distance = radius(center, position);
    if (distance < kSmallestRadius) return false;
    sum += distance;
  }
  return sum / static_cast<float>(m_positions.size()) > kMeanRadiusLimit;
}

bool PointerCircleRecognizer::sweepsClockwise(Point center) const {
  Sweep sweep(angle(center, m_positions.front()));
  for (const Point& position : m_positions) {
    sweep.add(angle(center, position));
    if (sweep.isCircle()) return true;
  }
  return false;
}

} // namespace orbel
