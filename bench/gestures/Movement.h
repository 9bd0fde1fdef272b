// Ways on which a hand moves the pointer, as functions of time, drawn at random from a seed. Positions are
// screen points, y up; times are seconds from the start of the movement.
#pragma once

#include "foundation/Geometry.h"

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace orbel::bench {

using Random = std::mt19937_64;

struct Movement {
  double duration = 0;
  std::function<Point(double time)> position;
};

struct MovementClass {
  std::string name;
  std::function<Movement(Random&)> draw;
};

// Seconds a turn takes.
struct Pace {
  double quickest;
  double slowest;
};
inline constexpr Pace kUsual{0.6, 1.0};
inline constexpr Pace kHasty{0.4, 0.6};
inline constexpr Pace kSlow{1.0, 1.4};

// One turn (or up to a quarter more, as hands do) that begins anywhere, of a radius of 30 to 200 points.
Movement clockwiseCircle(Random& random, Pace pace = kUsual);
// The same with every reported position up to that many points off on each axis. `random` must outlive it.
Movement jittered(Movement movement, double points, Random& random);
// The same, flattened to half its height and turned by any angle.
Movement clockwiseEllipse(Random& random, Pace pace = kUsual);
Movement counterClockwise(Movement movement);
Movement straightLine(Random& random);

// What else a hand draws, for looking at how much of it is taken for a circle.
const std::vector<MovementClass>& otherMovements();

} // namespace orbel::bench
