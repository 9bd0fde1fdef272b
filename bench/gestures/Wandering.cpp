#include "bench/gestures/Wandering.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orbel::bench {

namespace {
constexpr double kWidth = 1920;
constexpr double kHeight = 1080;
constexpr double kRoamingShare = 0.06;    // of the movements
constexpr double kCorrectionShare = 0.25; // of the movements end beside their target
} // namespace

double Wandering::rest() {
  // Often none at all, now and then long: reading, typing.
  return std::lognormal_distribution<double>(-0.7, 1.2)(m_random);
}

Movement Wandering::next() {
  std::uniform_real_distribution<double> share(0, 1);
  if (share(m_random) < kRoamingShare) return roam();
  if (share(m_random) < kCorrectionShare) {
    std::normal_distribution<double> off(0, 25);
    return reach({m_place.x + off(m_random), m_place.y + off(m_random)});
  }
  return reach({share(m_random) * kWidth, share(m_random) * kHeight});
}

Movement Wandering::reach(Point target) {
  const Point from = m_place;
  const double distance = std::hypot(target.x - from.x, target.y - from.y);
  const double width = std::uniform_real_distribution<double>(12, 80)(m_random);
  // The farther and the smaller the target, the longer a hand takes.
  const double duration = 0.1 + 0.12 * std::log2(distance / width + 1);
  const double bend = std::normal_distribution<double>(0, 0.08)(m_random) * distance;
  const Point normal{-(target.y - from.y) / std::max(distance, 1.0),
                     (target.x - from.x) / std::max(distance, 1.0)};
  m_place = target;
  return {duration, [=](double time) {
            const double share = std::clamp(time / duration, 0.0, 1.0);
            const double way = share * share * share * (10 + share * (6 * share - 15));
            const double side = bend * std::sin(std::numbers::pi * way);
            return Point{from.x + way * (target.x - from.x) + side * normal.x,
                         from.y + way * (target.y - from.y) + side * normal.y};
          }};
}

// Aimless: the direction drifts to either side while the speed swells and sinks.
Movement Wandering::roam() {
  std::uniform_real_distribution<double> share(0, 1);
  const double duration = 0.5 + 2.5 * share(m_random);
  const double speed = 150 + 700 * share(m_random);
  const double turning = std::normal_distribution<double>(0, 2)(m_random); // radians a second
  const double swaying = 1.5 * share(m_random);
  const double start = 2 * std::numbers::pi * share(m_random);
  constexpr double kStep = 0.004;
  std::vector<Point> places = {m_place};
  for (double time = 0; time < duration; time += kStep) {
    const double direction = start + turning * time + swaying * std::sin(4 * time);
    const double length = speed * kStep * (1 + 0.5 * std::sin(3 * time));
    places.push_back(
        {places.back().x + length * std::sin(direction), places.back().y + length * std::cos(direction)});
  }
  m_place = {std::clamp(places.back().x, 0.0, kWidth), std::clamp(places.back().y, 0.0, kHeight)};
  return {duration, [places](double time) {
            const auto index = static_cast<std::size_t>(std::max(time, 0.0) / kStep);
            return places[std::min(index, places.size() - 1)];
          }};
}

} // namespace orbel::bench
