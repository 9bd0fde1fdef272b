#include "bench/gestures/Movement.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <utility>

namespace orbel::bench {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

double between(Random& random, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(random);
}

Point anywhere(Random& random) {
  return {between(random, 200, 1720), between(random, 200, 880)};
}

Point rotated(Point point, double angle) {
  return {point.x * std::cos(angle) + point.y * std::sin(angle),
          point.y * std::cos(angle) - point.x * std::sin(angle)};
}

// Both axes as shares of a turn's radius; the second axis may be shorter.
Movement turning(Random& random, double flattening, double tilt, Pace pace) {
  const double radius = between(random, 30, 200);
  const double turns = between(random, 1, 1.25);
  const double secondsATurn = between(random, pace.quickest, pace.slowest);
  const double start = between(random, 0, kTurn);
  const Point center = anywhere(random);
  return {
      turns * secondsATurn, [=](double time) {
        const double angle = start + kTurn * time / secondsATurn;
        const Point offset = rotated({radius * std::sin(angle), flattening * radius * std::cos(angle)}, tilt);
        return Point{center.x + offset.x, center.y + offset.y};
      }};
}

// Through the points at an even speed.
Movement polyline(std::vector<Point> points, double speed) {
  std::vector<double> lengths = {0};
  for (std::size_t index = 1; index < points.size(); ++index) {
    lengths.push_back(lengths.back() + std::hypot(points[index].x - points[index - 1].x,
                                                  points[index].y - points[index - 1].y));
  }
  const double duration = lengths.back() / speed;
  return {duration, [points = std::move(points), lengths = std::move(lengths), speed](double time) {
            const double way = std::clamp(time * speed, 0.0, lengths.back());
            const auto next = std::clamp<std::ptrdiff_t>(
                std::lower_bound(lengths.begin(), lengths.end(), way) - lengths.begin(), 1,
                static_cast<std::ptrdiff_t>(lengths.size()) - 1);
            const auto index = static_cast<std::size_t>(next);
            const double share = (way - lengths[index - 1]) / (lengths[index] - lengths[index - 1]);
            const Point from = points[index - 1];
            const Point to = points[index];
            return Point{from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
          }};
}

Movement spiral(Random& random, double firstRadius, double lastRadius) {
  const double turns = between(random, 2, 4);
  const double secondsATurn = between(random, 0.4, 1.2);
  const double start = between(random, 0, kTurn);
  const Point center = anywhere(random);
  const double duration = turns * secondsATurn;
  return {duration, [=](double time) {
            const double radius = firstRadius + (lastRadius - firstRadius) * time / duration;
            const double angle = start + kTurn * time / secondsATurn;
            return Point{center.x + radius * std::sin(angle), center.y + radius * std::cos(angle)};
          }};
}

Movement zigzag(Random& random) {
  const Point start = anywhere(random);
  const double width = between(random, 20, 120);
  const double height = between(random, 60, 300);
  std::vector<Point> points;
  for (int corner = 0; corner < 12; ++corner)
    points.push_back({start.x + width * corner, start.y + (corner % 2 == 0 ? 0 : height)});
  return polyline(std::move(points), between(random, 400, 2500));
}

Movement figureEight(Random& random) {
  const double size = between(random, 40, 200);
  const double seconds = between(random, 0.8, 2);
  const double direction = between(random, 0, 1) < 0.5 ? 1 : -1;
  const double tilt = between(random, 0, kTurn);
  const double start = between(random, 0, kTurn);
  const Point center = anywhere(random);
  return {2 * seconds, [=](double time) {
            const double angle = start + direction * kTurn * time / seconds;
            const Point offset = rotated({size * std::sin(angle), size * std::sin(2 * angle) / 2}, tilt);
            return Point{center.x + offset.x, center.y + offset.y};
          }};
}

// Letters as strokes without lifting, in a box of 2 by 3.
Movement letter(Random& random) {
  static const std::vector<std::vector<Point>> kLetters = {
      {{2, 2.5}, {1.4, 3}, {0.6, 3}, {0, 2.4}, {0, 0.6}, {0.6, 0}, {1.4, 0}, {2, 0.5}}, // C
      {{0, 0}, {0, 3}, {1.2, 3}, {2, 2.2}, {2, 0.8}, {1.2, 0}, {0, 0}},                 // D
      {{2, 2.5},
       {1.4, 3},
       {0.6, 3},
       {0, 2.4},
       {0, 0.6},
       {0.6, 0},
       {1.5, 0},
       {2, 0.6},
       {2, 1.3},
       {1.2, 1.3}},                                                                                 // G
      {{0, 3}, {0, 0}, {2, 0}},                                                                     // L
      {{0, 0}, {0, 3}, {1, 1.5}, {2, 3}, {2, 0}},                                                   // M
      {{1, 3}, {0.3, 2.6}, {0, 1.5}, {0.3, 0.4}, {1, 0}, {1.7, 0.4}, {2, 1.5}, {1.7, 2.6}, {1, 3}}, // O, left
      // O, right
      {{1, 3}, {1.7, 2.6}, {2, 1.5}, {1.7, 0.4}, {1, 0}, {0.3, 0.4}, {0, 1.5}, {0.3, 2.6}, {1, 3}},
      {{0, 0}, {0, 3}, {1.4, 3}, {2, 2.3}, {1.4, 1.6}, {0, 1.6}},         // P
      {{2, 2.6}, {1, 3}, {0, 2.4}, {1, 1.6}, {2, 0.8}, {1, 0}, {0, 0.4}}, // S
      {{0, 3}, {0, 0.8}, {0.6, 0}, {1.4, 0}, {2, 0.8}, {2, 3}},           // U
      {{0, 3}, {2, 3}, {0, 0}, {2, 0}},                                   // Z
  };
  const auto& strokes = kLetters[std::uniform_int_distribution<std::size_t>(0, kLetters.size() - 1)(random)];
  const double scale = between(random, 20, 120);
  const Point origin = anywhere(random);
  std::vector<Point> points;
  for (const Point& point : strokes)
    points.push_back({origin.x + scale * point.x, origin.y + scale * point.y});
  return polyline(std::move(points), between(random, 300, 2000));
}

} // namespace

Movement clockwiseCircle(Random& random, Pace pace) {
  return turning(random, 1, 0, pace);
}

Movement clockwiseEllipse(Random& random, Pace pace) {
  return turning(random, 0.5, between(random, 0, kTurn), pace);
}

Movement jittered(Movement movement, double points, Random& random) {
  return {
      movement.duration, [=, position = std::move(movement.position), &random](double time) {
        const Point exact = position(time);
        return Point{exact.x + between(random, -points, points), exact.y + between(random, -points, points)};
      }};
}

Movement counterClockwise(Movement movement) {
  const double duration = movement.duration;
  return {duration, [position = std::move(movement.position), duration](double time) {
            return position(duration - time);
          }};
}

Movement straightLine(Random& random) {
  return polyline({anywhere(random), anywhere(random)}, between(random, 200, 3000));
}

const std::vector<MovementClass>& otherMovements() {
  static const std::vector<MovementClass> kClasses = {
      {"hasty circles, 0.4 to 0.6 s a turn", [](Random& random) { return clockwiseCircle(random, kHasty); }},
      {"hasty ellipses 2:1", [](Random& random) { return clockwiseEllipse(random, kHasty); }},
      {"slow circles, 1.0 to 1.4 s a turn", [](Random& random) { return clockwiseCircle(random, kSlow); }},
      {"spirals outwards, clockwise", [](Random& random) { return spiral(random, 10, 200); }},
      {"spirals inwards, clockwise", [](Random& random) { return spiral(random, 200, 10); }},
      {"spirals, counter-clockwise",
       [](Random& random) { return counterClockwise(spiral(random, 10, 200)); }},
      {"zigzags", zigzag},
      {"figure eights", figureEight},
      {"letters", letter},
  };
  return kClasses;
}

} // namespace orbel::bench
