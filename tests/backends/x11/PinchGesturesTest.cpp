// The X server's own pinches, end to end, and what the touch tap makes of them.
#include "backends/x11/PinchGestures.h"

#include "backends/x11/Connection.h"
#include "backends/x11/RawPointer.h"
#include "backends/x11/X11EventTaps.h"
#include "tests/backends/x11/support/PinchServer.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orbel::test {
namespace {

using Phases = std::vector<x11::PinchPhase>;

class PinchGesturesTest : public testing::Test {
protected:
  void SetUp() override {
    ASSERT_FALSE(m_server.display().empty()) << m_server.problem();
    m_connection = x11::Connection::open(m_server.display());
    ASSERT_TRUE(m_connection);
    m_pinches = std::make_unique<x11::PinchGestures>(*m_connection);
    ASSERT_TRUE(m_pinches->isAvailable());
  }
  void TearDown() override {
    m_pinches.reset();
    m_connection.reset();
  }

  void pinchOnce() {
    m_server.beginPinch();
    m_server.pinch(1.3);
    m_server.endPinch(1.3);
  }

  PinchServer m_server;
  std::unique_ptr<x11::Connection> m_connection;
  std::unique_ptr<x11::PinchGestures> m_pinches;
  LogCapture m_log;
};

// Touches that the test makes.
struct TestTouches {
  TouchHandlers handlers;
  bool isEnabled = false;

  class Tap : public EventTap {
  public:
    explicit Tap(TestTouches& touches) : m_touches(touches) {}
    void setEnabled(bool enabled) override { m_touches.isEnabled = enabled; }
    bool isEnabled() const override { return m_touches.isEnabled; }

  private:
    TestTouches& m_touches;
  };
};

TEST_F(PinchGesturesTest, APinchIsToldFromItsBeginToItsEnd) {
  Phases phases;
  const auto observation = m_pinches->observe([&](x11::PinchPhase phase) { phases.push_back(phase); });
  pinchOnce();
  EXPECT_TRUE(iterateUntil([&] { return phases.size() == 3; }));
  EXPECT_EQ(phases, (Phases{x11::PinchPhase::began, x11::PinchPhase::changed, x11::PinchPhase::ended}));
}

TEST_F(PinchGesturesTest, NothingComesFromTheServerWhileNobodyObserves) {
  int events = 0;
  const auto counting = m_connection->observeEvents([&](const xcb_generic_event_t&) { ++events; });
  pinchOnce();
  m_connection->drain();
  EXPECT_EQ(events, 0);
  auto observation = m_pinches->observe([](x11::PinchPhase) {});
  pinchOnce();
  m_connection->drain();
  EXPECT_EQ(events, 3);
  observation.reset();
  m_connection->drain();
  pinchOnce();
  m_connection->drain();
  EXPECT_EQ(events, 3);
}

TEST_F(PinchGesturesTest, AnotherProgramThatListensAlreadyKeepsThePinches) {
  const auto otherConnection = x11::Connection::open(m_server.display());
  x11::PinchGestures others(*otherConnection);
  int ofOthers = 0;
  const auto first = others.observe([&](x11::PinchPhase) { ++ofOthers; });
  int ours = 0;
  const auto second = m_pinches->observe([&](x11::PinchPhase) { ++ours; });
  ASSERT_EQ(m_log.lines.size(), 1U);
  EXPECT_TRUE(m_log.has("another program listens"));
  pinchOnce();
  EXPECT_TRUE(iterateUntil([&] { return ofOthers == 3; }));
  m_connection->drain();
  EXPECT_EQ(ours, 0);
}

TEST_F(PinchGesturesTest, WhileAPinchLastsEveryReportOfTouchesIsFollowedByOneOfAPinch) {
  x11::RawPointer pointer(*m_connection);
  TestTouches touches;
  const auto makeTap = [&](TouchHandlers handlers) -> std::unique_ptr<EventTap> {
    touches.handlers = std::move(handlers);
    return std::make_unique<TestTouches::Tap>(touches);
  };
  x11::X11EventTaps taps(pointer, {.makeTap = makeTap, .checkAccess = {}}, m_pinches.get());
  std::string told;
  const auto tap = taps.makeTouchTap({[&](const std::vector<Touch>&) { told += 't'; }, [&] { told += 'p'; }});
  const std::vector<Touch> fingers = {{1, {0.4, 0.5}}, {2, {0.6, 0.5}}};

  pinchOnce();
  m_connection->drain();
  EXPECT_EQ(told, "") << "the tap is disabled";
  tap->setEnabled(true);
  EXPECT_TRUE(touches.isEnabled);
  touches.handlers.touchesChanged(fingers);
  EXPECT_EQ(told, "t");
  m_server.beginPinch();
  EXPECT_TRUE(iterateUntil([&] { return told == "tp"; }));
  touches.handlers.touchesChanged(fingers);
  EXPECT_EQ(told, "tptp");
  m_server.endPinch(1.2);
  EXPECT_TRUE(iterateUntil([&] { return told == "tptpp"; }));
  touches.handlers.touchesChanged(fingers);
  EXPECT_EQ(told, "tptppt");
  touches.handlers.magnified();
  EXPECT_EQ(told, "tptpptp") << "the source's own pinches are told, too";
  tap->setEnabled(false);
  EXPECT_FALSE(touches.isEnabled);
}

TEST_F(PinchGesturesTest, AFloodOfTouchesDuringAPinchIsToldWholeAndEndsWithIt) {
  constexpr int kReports = 100'000;
  x11::RawPointer pointer(*m_connection);
  TestTouches touches;
  const auto makeTap = [&](TouchHandlers handlers) -> std::unique_ptr<EventTap> {
    touches.handlers = std::move(handlers);
    return std::make_unique<TestTouches::Tap>(touches);
  };
  x11::X11EventTaps taps(pointer, {.makeTap = makeTap, .checkAccess = {}}, m_pinches.get());
  int changes = 0;
  int pinches = 0;
  const auto tap = taps.makeTouchTap({[&](const std::vector<Touch>&) { ++changes; }, [&] { ++pinches; }});
  tap->setEnabled(true);
  const auto flood = [&] {
    for (int report = 0; report < kReports; ++report)
      touches.handlers.touchesChanged({{1, {0.4, 0.5}}, {2, {0.6, 0.00001 * report}}});
  };
  flood();
  EXPECT_EQ(changes, kReports);
  EXPECT_EQ(pinches, 0);
  m_server.beginPinch();
  ASSERT_TRUE(iterateUntil([&] { return pinches == 1; }));
  flood();
  EXPECT_EQ(changes, 2 * kReports);
  EXPECT_EQ(pinches, 1 + kReports);
  m_server.endPinch(1.2);
  ASSERT_TRUE(iterateUntil([&] { return pinches == 2 + kReports; }));
  flood();
  EXPECT_EQ(changes, 3 * kReports);
  EXPECT_EQ(pinches, 2 + kReports);
}

TEST_F(PinchGesturesTest, TheEndOfAPinchIsNotWaitedForWhenAllFingersAreLifted) {
  x11::RawPointer pointer(*m_connection);
  TestTouches touches;
  const auto makeTap = [&](TouchHandlers handlers) -> std::unique_ptr<EventTap> {
    touches.handlers = std::move(handlers);
    return std::make_unique<TestTouches::Tap>(touches);
  };
  x11::X11EventTaps taps(pointer, {.makeTap = makeTap, .checkAccess = {}}, m_pinches.get());
  std::string told;
  const auto tap = taps.makeTouchTap({[&](const std::vector<Touch>&) { told += 't'; }, [&] { told += 'p'; }});
  tap->setEnabled(true);
  m_server.beginPinch();
  EXPECT_TRUE(iterateUntil([&] { return told == "p"; }));
  touches.handlers.touchesChanged({});
  touches.handlers.touchesChanged({{3, {0.5, 0.5}}});
  EXPECT_EQ(told, "ptt");
}

} // namespace
} // namespace orbel::test
