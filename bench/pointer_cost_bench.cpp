// What it costs to watch the pointer while another program moves it a thousand times a second: the real
// agent, beside a bare client that only reads the same events. Prints one table; says which limits were
// missed and then ends with status 1.
#include "bench/desktop/MovingPointer.h"
#include "bench/desktop/ProcessCost.h"
#include "tests/desktop/harness/OrbelAgent.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <thread>

using namespace orbel;
using namespace orbel::test;
using bench::MovingPointer;
using bench::ProcessCost;

namespace {

constexpr auto kStretch = std::chrono::seconds(5);
constexpr auto kSettling = std::chrono::seconds(1);
constexpr double kLeastRate = 900; // movements a second, or the machine is too busy to measure
constexpr double kLimit = 1.5;     // times the floor
int missed = 0;

struct CostASecond {
  double milliseconds = 0;
  double wakeUps = 0;
};

// The bench is about a stretch of time; nothing is waited for here.
CostASecond costWhileMoving(DesktopSession& session, pid_t process) {
  const MovingPointer pointer(session.environment().at("DISPLAY"));
  std::this_thread::sleep_for(kSettling);
  const std::int64_t movements = pointer.movements();
  const ProcessCost before = ProcessCost::of(process);
  std::this_thread::sleep_for(kStretch);
  const ProcessCost after = ProcessCost::of(process);
  const double seconds = std::chrono::duration<double>(kStretch).count();
  const double rate = static_cast<double>(pointer.movements() - movements) / seconds;
  if (rate < kLeastRate)
    throw std::runtime_error("the pointer was moved only " + std::to_string(rate) + " times a second");
  return {(after.cpuSeconds - before.cpuSeconds) * 1000 / seconds,
          static_cast<double>(after.wakeUps - before.wakeUps) / seconds};
}

void row(const char* what, const CostASecond& cost, std::optional<CostASecond> limit) {
  const bool isMissed = limit && (cost.milliseconds > limit->milliseconds || cost.wakeUps > limit->wakeUps);
  if (isMissed) ++missed;
  std::printf("%-42s %8.2f ms %8.1f wake-ups a second", what, cost.milliseconds, cost.wakeUps);
  if (limit)
    std::printf("  limit %.2f ms, %.1f %s", limit->milliseconds, limit->wakeUps,
                isMissed ? "MISSED" : "kept");
  std::printf("\n");
  std::fflush(stdout);
}

CostASecond bareReader() {
  DesktopSession session;
  const auto program = session.start("bare", {ORBEL_BARE_MOTION_READER});
  if (!waitFor([&] { return readFile(session.logFile("bare")) == "ready\n"; }, "the bare client is ready"))
    throw std::runtime_error("the bare client does not start");
  const CostASecond cost = costWhileMoving(session, program->pid());
  program->terminate();
  return cost;
}

CostASecond agentWithGesture(int gesture) {
  DesktopSession session;
  session.preferences().setBoolean("launchedBefore", true);
  session.preferences().setInteger("gestureSettings", gesture);
  const OrbelAgent agent(session);
  const CostASecond cost = costWhileMoving(session, agent.pid());
  if (!agent.menuWindows().empty()) throw std::runtime_error("a straight line has summoned the menu");
  return cost;
}

} // namespace

int main() {
  try {
    const CostASecond floor = bareReader();
    row("floor: a bare client that reads the events", floor, {});
    row("the agent, gesture 5 (the circle)", agentWithGesture(5),
        CostASecond{kLimit * floor.milliseconds, kLimit * floor.wakeUps});
    for (int gesture = 1; gesture <= 4; ++gesture) {
      const std::string name = "the agent, gesture " + std::to_string(gesture) + " (the touchpad)";
      row(name.c_str(), agentWithGesture(gesture), CostASecond{0, 0});
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "the bench stopped: %s\n", error.what());
    return 2;
  }
  if (missed > 0) std::printf("%d limits were missed\n", missed);
  return missed > 0 ? 1 : 0;
}
