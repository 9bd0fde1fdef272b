// How well the pointer's circle is recognised, under manual time: prints one table. Says which shares
// are missed and then ends with status 1. Everything is drawn from fixed seeds, so that every run prints
// the same.
#include "bench/gestures/Movement.h"
#include "bench/gestures/Wandering.h"
#include "settings/PointerCircleRecognizer.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

using namespace orbel;
using namespace orbel::bench;

namespace {

constexpr int kMovements = 1000;
constexpr int kRates[] = {30, 60, 125, 250, 500, 1000}; // events a second
constexpr double kJitter = 3;                           // points
constexpr double kWanderingHours = 10;
constexpr double kLeastShare = 97; // of a hundred
int missed = 0;

// As the settings do: each event asks whether a sample is due, and only then for the position.
int countCircles(PointerCircleRecognizer& recognizer, const Movement& movement, double& now, int rate) {
  int circles = 0;
  const double start = now;
  const double end = now + movement.duration;
  for (std::int64_t event = 1; now < end; ++event) {
    now = start + static_cast<double>(event) / rate;
    if (recognizer.isSampleDue(now) && recognizer.addSample(movement.position(now - start), now)) ++circles;
  }
  return circles;
}

// In a hundred; each movement follows a rest.
double recognizedShare(const std::function<Movement(Random&)>& draw, int rate) {
  Random random(2024);
  int recognized = 0;
  for (int index = 0; index < kMovements; ++index) {
    PointerCircleRecognizer recognizer;
    double now = 0;
    if (countCircles(recognizer, draw(random), now, rate) > 0) ++recognized;
  }
  return 100.0 * recognized / kMovements;
}

enum class Limit { none, atLeast, zero };

void printRow(const std::string& name, const std::function<Movement(Random&)>& draw, Limit limit) {
  std::printf("| %s |", name.c_str());
  bool isMissed = false;
  for (const int rate : kRates) {
    const double share = recognizedShare(draw, rate);
    isMissed =
        isMissed || (limit == Limit::atLeast && share < kLeastShare) || (limit == Limit::zero && share > 0);
    std::printf(" %.1f |", share);
  }
  const char* wanted = limit == Limit::atLeast ? "at least 97" : limit == Limit::zero ? "0" : "none";
  std::printf(" %s%s |\n", wanted, isMissed ? ", MISSED" : "");
  if (isMissed) ++missed;
}

void printWandering() {
  std::printf("| ten hours of wandering, circles an hour |");
  for (const int rate : kRates) {
    Random random(77);
    Wandering wandering(random);
    PointerCircleRecognizer recognizer;
    double now = 0;
    int circles = 0;
    while (now < kWanderingHours * 3600) {
      now += wandering.rest();
      circles += countCircles(recognizer, wandering.next(), now, rate);
    }
    std::printf(" %.1f |", circles / kWanderingHours);
  }
  std::printf(" none |\n");
}

} // namespace

int main() {
  std::printf("| of 1,000 movements each, recognised in %% |");
  for (const int rate : kRates)
    std::printf(" %d/s |", rate);
  std::printf(" limit |\n|---|");
  for ([[maybe_unused]] const int rate : kRates)
    std::printf("---|");
  std::printf("---|\n");
  printRow(
      "clean circles", [](Random& random) { return clockwiseCircle(random); }, Limit::atLeast);
  printRow(
      "circles with 3 points of jitter",
      [](Random& random) { return jittered(clockwiseCircle(random), kJitter, random); }, Limit::atLeast);
  printRow(
      "ellipses 2:1", [](Random& random) { return clockwiseEllipse(random); }, Limit::atLeast);
  printRow(
      "counter-clockwise circles", [](Random& random) { return counterClockwise(clockwiseCircle(random)); },
      Limit::zero);
  printRow("straight lines", straightLine, Limit::zero);
  for (const MovementClass& movements : otherMovements())
    printRow(movements.name, movements.draw, Limit::none);
  printWandering();
  if (missed > 0) std::printf("\n%d limits were missed\n", missed);
  return missed > 0 ? 1 : 0;
}
