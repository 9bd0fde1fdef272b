// A pointer at everyday work: it moves from one target to the next on slightly bent ways, quick in the middle
// and slow at both ends, corrects itself, rests, and sometimes roams. Positions are screen points.
#pragma once

#include "bench/gestures/Movement.h"

namespace orbel::bench {

class Wandering {
public:
  explicit Wandering(Random& random) : m_random(random) {}

  // The next movement, after the rest that precedes it.
  Movement next();
  // Seconds of rest before the next movement.
  double rest();

private:
  Movement reach(Point target);
  Movement roam();

  Random& m_random;
  Point m_place{960, 540};
};

} // namespace orbel::bench
