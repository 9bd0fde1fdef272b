#include "backends/x11/Connection.h"

#include "tests/backends/x11/support/X11Test.h"

#include <csignal>

namespace orbel::test {
namespace {

class ConnectionTest : public X11Test {
protected:
  void SetUp() override {
    X11Test::SetUp();
    m_connection = connect();
    ASSERT_TRUE(m_connection);
  }
  void endServer() {
    session().markSpent();
    server().sendSignal(SIGKILL);
  }
  // A property of the root window, to make the server send an event.
  void changeRoot() { driver().setNumbers(driver().root(), "SOMETHING", "CARDINAL", {1}); }
  void listenToRoot() { m_connection->selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE), m_connection->flush(); }
  static bool isRootChange(const xcb_generic_event_t& event) {
    return (event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY;
  }

  std::unique_ptr<x11::Connection> m_connection;
};

TEST_F(ConnectionTest, ADisplayThatIsNotThereIsLoggedAndGivesNone) {
  EXPECT_FALSE(x11::Connection::open(":987"));
  EXPECT_TRUE(hasLogged("cannot connect to the X display \":987\""));
}

TEST_F(ConnectionTest, AnAtomIsTheServers) {
  EXPECT_EQ(m_connection->atom("_NET_WM_PID"), driver().atom("_NET_WM_PID"));
  EXPECT_EQ(m_connection->atom("WM_NAME"), xcb_atom_t{XCB_ATOM_WM_NAME});
}

TEST_F(ConnectionTest, EventsReachTheirHandlersFromTheMainLoop) {
  int count = 0;
  const auto registration =
      m_connection->observeEvents([&](const xcb_generic_event_t& event) { count += isRootChange(event); });
  listenToRoot();
  m_connection->serverTime(); // the selection is in force
  changeRoot();
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(iterateUntil([&] { return count == 1; }));
}

TEST_F(ConnectionTest, AnEventThatCameWithAnAnswerIsDispatchedThoughTheSocketIsSilent) {
  int count = 0;
  const auto registration =
      m_connection->observeEvents([&](const xcb_generic_event_t& event) { count += isRootChange(event); });
  listenToRoot();
  m_connection->serverTime();
  changeRoot();
  m_connection->atom("ANY_ROUND_TRIP"); // reads the event from the socket into xcb's queue
  EXPECT_TRUE(iterateUntil([&] { return count == 1; }));
}

TEST_F(ConnectionTest, TheServersTimeGrowsAndLosesNoEvent) {
  int count = 0;
  const auto registration =
      m_connection->observeEvents([&](const xcb_generic_event_t& event) { count += isRootChange(event); });
  listenToRoot();
  const xcb_timestamp_t first = m_connection->serverTime();
  changeRoot();
  EXPECT_TRUE(iterateUntil([&] { return x11::Connection::isLaterTime(m_connection->serverTime(), first); }));
  EXPECT_TRUE(iterateUntil([&] { return count == 1; }));
}

TEST_F(ConnectionTest, LaterIsLaterAcrossTheWrapOfTheClock) {
  EXPECT_TRUE(x11::Connection::isLaterTime(5, 0xFFFFFFF0U));
  EXPECT_FALSE(x11::Connection::isLaterTime(0xFFFFFFF0U, 5));
  EXPECT_FALSE(x11::Connection::isLaterTime(7, 7));
}

TEST_F(ConnectionTest, DrainingDispatchesWhatTheServerSentBeforeInsideTheCall) {
  int count = 0;
  const auto registration =
      m_connection->observeEvents([&](const xcb_generic_event_t& event) { count += isRootChange(event); });
  listenToRoot();
  m_connection->serverTime();
  changeRoot();
  m_connection->drain();
  EXPECT_EQ(count, 1);
}

TEST_F(ConnectionTest, PeekingShowsAnEventAndLeavesItForItsTurn) {
  int handled = 0, shown = 0;
  const auto registration =
      m_connection->observeEvents([&](const xcb_generic_event_t& event) { handled += isRootChange(event); });
  listenToRoot();
  m_connection->serverTime();
  changeRoot();
  m_connection->peek([&](const xcb_generic_event_t& event) { shown += isRootChange(event); });
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(handled, 0);
  EXPECT_TRUE(iterateUntil([&] { return handled == 1; }));
}

TEST_F(ConnectionTest, AHandlerMayEndItselfAndOthersDuringAnEvent) {
  int first = 0, second = 0;
  Registration one, other;
  one = m_connection->observeEvents([&](const xcb_generic_event_t& event) {
    if (!isRootChange(event)) return;
    ++first;
    one.reset();
    other.reset();
  });
  other =
      m_connection->observeEvents([&](const xcb_generic_event_t& event) { second += isRootChange(event); });
  listenToRoot();
  m_connection->serverTime();
  changeRoot();
  changeRoot();
  m_connection->drain();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
}

TEST_F(ConnectionTest, ARefusedRequestIsSurvivedAndAWindowThatIsGoneIsNotWorthALine) {
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(m_connection->xcb(), 0x7FFFFFF, XCB_CW_EVENT_MASK, &mask);
  m_connection->drain();
  EXPECT_TRUE(log().empty());

  xcb_free_pixmap(m_connection->xcb(), 0x7FFFFFF);
  m_connection->drain();
  EXPECT_TRUE(hasLogged("refused request 54."));
  EXPECT_NE(m_connection->serverTime(), xcb_timestamp_t{XCB_CURRENT_TIME});
}

TEST_F(ConnectionTest, ABrokenConnectionIsLoggedAndReportedOnce) {
  int lost = 0;
  const auto connection = x11::Connection::open(display(), [&] { ++lost; });
  m_connection.reset();
  endServer();
  EXPECT_TRUE(iterateUntil([&] { return lost == 1; }));
  EXPECT_TRUE(hasLogged("the desktop is gone"));
  connection->drain();
  EXPECT_EQ(connection->serverTime(), xcb_timestamp_t{XCB_CURRENT_TIME});
  EXPECT_EQ(connection->atom("AFTERWARDS"), xcb_atom_t{XCB_ATOM_NONE});
  iterateWhatIsPending();
  EXPECT_EQ(lost, 1);
}

TEST_F(ConnectionTest, WithNobodyToTellABrokenConnectionEndsTheProcessWithAFailure) {
  session().markSpent(); // what the child does to the server it does to ours
  EXPECT_EXIT(
      {
        endServer();
        (void)iterateUntil([] { return false; });
      },
      testing::ExitedWithCode(1), "");
}

} // namespace
} // namespace orbel::test
