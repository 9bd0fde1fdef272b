// Recognises the pointer being moved in a clockwise circle, at least about 288 degrees around within the last
// second. Positions are screen points, y up; times are seconds of one clock. The settings store feeds it
// while that gesture is chosen: for every pointer movement it asks whether a sample is due, and only then
// where the pointer is.
#pragma once

#include "foundation/Geometry.h"

#include <vector>

namespace orbel {

class PointerCircleRecognizer {
public:
  // Seconds between two samples, at the least.
  static constexpr double kSampleInterval = 0.05;
  // Seconds after which a sample is forgotten.
  static constexpr double kSampleLifetime = 1.0;

  PointerCircleRecognizer();

  bool isSampleDue(double now) const;
  // True when the samples complete a circle; they are forgotten then. Nothing happens when no sample is due.
  bool addSample(Point position, double now);

  // Oldest first, one time for each position.
  const std::vector<Point>& lastMousePositions() const { return m_positions; }
  const std::vector<double>& lastMousePositionTimestamps() const { return m_timestamps; }

private:
  void dropStaleSamples(double now);
  Point center() const;
  // None of the samples is too near the centre, and they are far enough from it on average.
  bool hasCircularRadius(Point center) const;
  bool sweepsClockwise(Point center) const;

  std::vector<Point> m_positions;
  std::vector<double> m_timestamps;
};

} // namespace orbel
