#include "backends/x11/X11TopLevelWindows.h"

#include "tests/backends/x11/support/WindowsTest.h"
#include "tests/support/x11/WindowManagers.h"

#include <array>
#include <unistd.h>

namespace orbel::test {
namespace {

// With and without a window manager: what reports which programs run must not depend on it.
class X11TopLevelWindowsTest : public WindowsTest, public testing::WithParamInterface<WindowManagerKind> {
protected:
  X11TopLevelWindowsTest() : WindowsTest(GetParam()) {}
  void SetUp() override {
    WindowsTest::SetUp();
    iterateWhatIsPending();
    // The window that tested the window manager no longer exists.
    ASSERT_TRUE(iterateUntil([this] { return ids().empty(); }));
  }
};

INSTANTIATE_TEST_SUITE_P(WindowManagers, X11TopLevelWindowsTest,
                         testing::Values(WindowManagerKind::none, WindowManagerKind::openbox),
                         nameOfInstance);

TEST_P(X11TopLevelWindowsTest, AWindowIsListedWithAllThatIdentifiesIt) {
  const auto client = otherClient({"--title", "Grüße", "--class", "editor", "Editor", "--window"});
  const xcb_window_t id = client->window();
  driver().setText(id, "_GTK_APPLICATION_ID", "UTF8_STRING", "org.example.Editor");
  driver().setText(id, "_NET_STARTUP_ID", "UTF8_STRING", "editor-1_TIME5");
  ASSERT_TRUE(iterateUntil([&] { return window(id) && window(id)->startupId == "editor-1_TIME5"; }));
  const auto found = window(id);
  EXPECT_EQ(found->processIdentifier, client->processIdentifier());
  EXPECT_EQ(found->title, "Grüße");
  EXPECT_EQ(found->instanceName, "editor");
  EXPECT_EQ(found->className, "Editor");
  EXPECT_EQ(found->applicationId, "org.example.Editor");
  EXPECT_TRUE(found->isNormal);
}

TEST_P(X11TopLevelWindowsTest, WindowsThatWereThereBeforeAreKnownFromTheStart) {
  const auto first = programAt(10, 50);
  const auto second = programAt(300, 50);
  makeWindows();
  std::vector<std::uint64_t> expected = {first->window(), second->window()};
  EXPECT_EQ(ids(), expected);
}

TEST_P(X11TopLevelWindowsTest, TheOrderIsThatOfTheFirstMappingAndOutlastsRaising) {
  const auto first = programAt(10, 50);
  const auto second = programAt(300, 50);
  const auto third = programAt(600, 50);
  driver().raise(first->window());
  raiseItself(second->window());
  const auto fourth = programAt(10, 300);
  const std::vector<std::uint64_t> expected = {first->window(), second->window(), third->window(),
                                               fourth->window()};
  EXPECT_EQ(ids(), expected);
}

TEST_P(X11TopLevelWindowsTest, ComingAndGoingIsToldOncePerTurn) {
  int changes = 0;
  const auto registration = windows().observeChanges([&] { ++changes; });
  auto client = otherClient({"--window", "--at", "300", "50", "--window", "--at", "600", "50", "--window"});
  ASSERT_TRUE(iterateUntil([&] { return ids().size() == 3; }));
  iterateWhatIsPending();
  EXPECT_GE(changes, 1);
  changes = 0;
  client.reset();
  driver().sync();
  ASSERT_TRUE(iterateUntil([&] { return ids().empty(); }));
  EXPECT_GE(changes, 1);
}

TEST_P(X11TopLevelWindowsTest, SeveralPropertiesAtOnceAreOneChange) {
  const auto client = programAt(10, 50);
  iterateWhatIsPending();
  int changes = 0;
  const auto registration = windows().observeChanges([&] { ++changes; });
  driver().setText(client->window(), "_GTK_APPLICATION_ID", "UTF8_STRING", "org.example.One");
  driver().setText(client->window(), "_NET_STARTUP_ID", "UTF8_STRING", "one");
  driver().setText(client->window(), "WM_CLASS", "STRING", std::string("one\0One\0", 8));
  connection().drain();
  ASSERT_TRUE(iterateUntil([&] { return window(client->window())->className == "One"; }));
  iterateWhatIsPending();
  EXPECT_EQ(changes, 1);
}

TEST_P(X11TopLevelWindowsTest, AClassThatComesAfterTheMappingIsRead) {
  const auto client = otherClient({"--window"});
  ASSERT_TRUE(iterateUntil([&] { return isListed(client->window()); }));
  EXPECT_EQ(window(client->window())->className, "");
  int changes = 0;
  const auto registration = windows().observeChanges([&] { ++changes; });
  driver().setText(client->window(), "WM_CLASS", "STRING", std::string("late\0Late\0", 10));
  EXPECT_TRUE(iterateUntil([&] { return changes == 1; }));
  EXPECT_EQ(window(client->window())->instanceName, "late");
  EXPECT_EQ(window(client->window())->className, "Late");
}

TEST_P(X11TopLevelWindowsTest, ANewTitleIsThereWhenAskedForAndWakesNobody) {
  const auto client = programAt(10, 50);
  iterateWhatIsPending();
  int changes = 0;
  const auto registration = windows().observeChanges([&] { ++changes; });
  driver().setText(client->window(), "_NET_WM_NAME", "UTF8_STRING", "another title");
  EXPECT_TRUE(iterateUntil([&] { return window(client->window())->title == "another title"; }));
  iterateWhatIsPending();
  EXPECT_EQ(changes, 0);
}

TEST_P(X11TopLevelWindowsTest, ATitleOfOldTimesIsConvertedAndABrokenOneMended) {
  const auto client = otherClient({"--window"});
  ASSERT_TRUE(iterateUntil([&] { return isListed(client->window()); }));
  driver().setText(client->window(), "WM_NAME", "STRING",
                   "Gr\xFC\xDF"
                   "e");
  EXPECT_TRUE(iterateUntil([&] { return window(client->window())->title == "Grüße"; }));
  driver().setText(client->window(), "_NET_WM_NAME", "UTF8_STRING", "bad \xFF title");
  EXPECT_TRUE(iterateUntil([&] { return window(client->window())->title == "bad \uFFFD title"; }));
}

TEST_P(X11TopLevelWindowsTest, TheServersProcessCountsAndNotTheOneAWindowStates) {
  const auto client = otherClient({"--stated-pid", "2", "--window"}); // as from within a sandbox
  ASSERT_TRUE(iterateUntil([&] { return isListed(client->window()); }));
  EXPECT_EQ(window(client->window())->processIdentifier, client->processIdentifier());
}

TEST_P(X11TopLevelWindowsTest, AWindowFromAnotherMachineHasNoProcess) {
  const OtherClient remote("127.0.0.1" + display(),
                           {"--stated-pid", "4711", "--machine", "elsewhere.example", "--window"});
  ASSERT_TRUE(iterateUntil([&] { return isListed(remote.window()); }));
  EXPECT_EQ(window(remote.window())->processIdentifier, std::nullopt);
  EXPECT_TRUE(window(remote.window())->isNormal);
}

TEST_P(X11TopLevelWindowsTest, WhereTheServerCannotTellTheStatedProcessOfThisMachineCounts) {
  std::array<char, 256> host{};
  gethostname(host.data(), host.size() - 1);
  const OtherClient local("127.0.0.1" + display(),
                          {"--stated-pid", "4711", "--machine", host.data(), "--window"});
  ASSERT_TRUE(iterateUntil([&] { return isListed(local.window()); }));
  EXPECT_EQ(window(local.window())->processIdentifier, 4711);
}

TEST_P(X11TopLevelWindowsTest, APidThatComesAfterTheMappingIsRead) {
  std::array<char, 256> host{};
  gethostname(host.data(), host.size() - 1);
  const OtherClient local("127.0.0.1" + display(), {"--machine", host.data(), "--window"});
  ASSERT_TRUE(iterateUntil([&] { return isListed(local.window()); }));
  EXPECT_EQ(window(local.window())->processIdentifier, std::nullopt);
  driver().setNumbers(local.window(), "_NET_WM_PID", "CARDINAL", {815});
  EXPECT_TRUE(iterateUntil([&] { return window(local.window())->processIdentifier == 815; }));
}

TEST_P(X11TopLevelWindowsTest, WhatATaskbarDoesNotListIsNotNormal) {
  const auto plain = programAt(10, 50);
  // All stay to the end: a window manager that is late in handling a window's destruction erases the state of
  // the next one, which has its number.
  std::vector<std::unique_ptr<OtherClient>> clients;
  // In the end: a window manager writes the window's state anew while it takes it over.
  const auto becomesNormal = [&](const std::vector<std::string>& options, bool expected) {
    const xcb_window_t id = clients.emplace_back(otherClient(options))->window();
    return iterateUntil([&] {
      const auto found = window(id);
      return found && found->isNormal == expected;
    });
  };
  EXPECT_TRUE(becomesNormal({"--type", "_NET_WM_WINDOW_TYPE_NORMAL", "--window"}, true));
  EXPECT_TRUE(becomesNormal({"--type", "_NET_WM_WINDOW_TYPE_DIALOG", "--window"}, false));
  EXPECT_TRUE(becomesNormal({"--type", "_NET_WM_WINDOW_TYPE_DOCK", "--window"}, false));
  EXPECT_TRUE(becomesNormal({"--type", "_NET_WM_WINDOW_TYPE_UTILITY", "--window"}, false));
  EXPECT_TRUE(becomesNormal({"--skip-taskbar", "--window"}, false));
  EXPECT_TRUE(becomesNormal({"--transient-for", std::to_string(plain->window()), "--window"}, false));
}

TEST_P(X11TopLevelWindowsTest, AWindowThatLeavesTheTaskbarIsNoLongerNormal) {
  const auto client = programAt(10, 50);
  driver().setNumbers(client->window(), "_NET_WM_STATE", "ATOM",
                      {driver().atom("_NET_WM_STATE_SKIP_TASKBAR")});
  EXPECT_TRUE(iterateUntil([&] { return !window(client->window())->isNormal; }));
}

TEST_P(X11TopLevelWindowsTest, MenusAndHiddenWindowsAreNotListed) {
  const auto menu = otherClient({"--override-redirect", "--window"});
  const auto hidden = otherClient({"--unmapped", "--window"});
  const auto shown = programAt(10, 50);
  const std::vector<std::uint64_t> expected = {shown->window()};
  EXPECT_EQ(ids(), expected);
}

TEST_P(X11TopLevelWindowsTest, OurOwnWindowsAreLeftOut) {
  const xcb_window_t own = xcb_generate_id(driver().xcb());
  xcb_create_window(driver().xcb(), XCB_COPY_FROM_PARENT, own, driver().root(), 0, 0, 50, 50, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_map_window(driver().xcb(), own);
  driver().sync();
  ASSERT_TRUE(iterateUntil([&] { return driver().isViewable(own); }));
  const auto other = programAt(300, 50); // mapped later, and seen
  const std::vector<std::uint64_t> expected = {other->window()};
  EXPECT_EQ(ids(), expected);
}

TEST_P(X11TopLevelWindowsTest, AWindowThatComesBackKeepsItsPlace) {
  const auto first = otherClient({"--commands", "--at", "10", "50", "--window"});
  ASSERT_TRUE(iterateUntil([&] { return isListed(first->window()); }));
  const auto second = programAt(300, 50);
  first->program().writeLine("unmap " + std::to_string(first->window()));
  ASSERT_TRUE(iterateUntil([&] { return !isListed(first->window()); }));
  // A program may show a withdrawn window again once the window manager has taken its state away, which is
  // after it left the list.
  ASSERT_TRUE(iterateUntil([&] { return driver().numbers(first->window(), "WM_STATE").empty(); }));
  first->program().writeLine("map " + std::to_string(first->window()));
  ASSERT_TRUE(iterateUntil([&] { return isListed(first->window()); }));
  const std::vector<std::uint64_t> expected = {first->window(), second->window()};
  EXPECT_EQ(ids(), expected);
}

TEST_P(X11TopLevelWindowsTest, ANewProgramWithTheWindowNumberOfTheLastOneIsAnotherProgram) {
  auto earlier = otherClient({"--class", "old", "Old", "--window"});
  const xcb_window_t number = earlier->window();
  ASSERT_TRUE(iterateUntil([&] { return isListed(number); }));
  earlier->program().terminate();
  ASSERT_TRUE(iterateUntil([&] { return !driver().exists(number); }) &&
              iterateUntil([&] { return !isListed(number); }));
  earlier.reset();
  const auto later = otherClient({"--class", "new", "New", "--window"});
  ASSERT_EQ(later->window(), number) << "the server has changed its habits, and this test must too";
  ASSERT_TRUE(iterateUntil([&] { return isListed(number) && window(number)->className == "New"; }));
  EXPECT_EQ(window(number)->processIdentifier, later->processIdentifier());
}

TEST_P(X11TopLevelWindowsTest, AnIconOfAtLeastTheSizeIsChosenElseTheLargest) {
  const auto client = programAt(10, 50);
  std::vector<std::uint32_t> icons;
  const auto add = [&](std::uint32_t side, std::uint32_t pixel) {
    icons.insert(icons.end(), {side, side});
    icons.insert(icons.end(), std::size_t{side} * side, pixel);
  };
  add(32, 0xFF00FF00);
  add(16, 0xFFFF0000);
  add(48, 0x80FF8000);
  driver().setNumbers(client->window(), "_NET_WM_ICON", "CARDINAL", icons);
  EXPECT_EQ(windows().icon(client->window(), 16).width, 16);
  EXPECT_EQ(windows().icon(client->window(), 17).width, 32);
  EXPECT_EQ(windows().icon(client->window(), 320).width, 48);
  EXPECT_EQ(windows().icon(client->window(), 32).pixels.at(5), 0xFF00FF00U);
  EXPECT_EQ(windows().icon(client->window(), 48).pixels.at(5), 0x80804000U) << "premultiplied";
}

TEST_P(X11TopLevelWindowsTest, ABrokenIconGivesTheWholeOnesBeforeItOrNone) {
  const auto client = programAt(10, 50);
  if (GetParam() != WindowManagerKind::none) {
    // A window manager may give an icon of its own to windows that have none, and to those whose icon
    // is broken.
    EXPECT_TRUE(windows().icon(0x7FFFFFF, 32).isEmpty());
    return;
  }
  EXPECT_TRUE(windows().icon(client->window(), 32).isEmpty());
  driver().setNumbers(client->window(), "_NET_WM_ICON", "CARDINAL", {100, 100, 1, 2, 3});
  EXPECT_TRUE(windows().icon(client->window(), 32).isEmpty());
  driver().setNumbers(client->window(), "_NET_WM_ICON", "CARDINAL", {0xFFFFFFFF, 0xFFFFFFFF, 1});
  EXPECT_TRUE(windows().icon(client->window(), 32).isEmpty());
  driver().setNumbers(client->window(), "_NET_WM_ICON", "CARDINAL", {1, 1, 0xFF123456, 0, 0, 7});
  EXPECT_EQ(windows().icon(client->window(), 32).pixels, std::vector<std::uint32_t>{0xFF123456});
  EXPECT_TRUE(windows().icon(0x7FFFFFF, 32).isEmpty());
}

TEST_P(X11TopLevelWindowsTest, StartupIdentifiersDifferAndCarryTheServersTime) {
  const xcb_timestamp_t before = connection().serverTime();
  const std::string one = windows().makeStartupId("org.example.My App.desktop");
  const std::string two = windows().makeStartupId("org.example.My App.desktop");
  EXPECT_NE(one, two);
  EXPECT_TRUE(one.starts_with("org.example.My_App.desktop-" + std::to_string(getpid()) + "-")) << one;
  const std::size_t time = one.find("_TIME");
  ASSERT_NE(time, std::string::npos);
  const auto stamp = static_cast<xcb_timestamp_t>(std::stoul(one.substr(time + 5)));
  EXPECT_FALSE(x11::Connection::isLaterTime(before, stamp));
  EXPECT_FALSE(x11::Connection::isLaterTime(stamp, connection().serverTime()));
}

class WindowManagerRestartTest : public WindowsTest {
protected:
  WindowManagerRestartTest() : WindowsTest(WindowManagerKind::openbox) {}
  void startWindowManager() { session().windowManager().start(); }
  void stopWindowManager() { session().windowManager().stop(); }
};

TEST_F(WindowManagerRestartTest, WindowsKeepTheirOrderThroughIt) {
  const auto first = programAt(10, 50);
  const auto second = programAt(300, 50);
  const auto third = programAt(600, 50);
  raiseItself(first->window());
  const std::vector<std::uint64_t> expected = {first->window(), second->window(), third->window()};
  ASSERT_TRUE(iterateUntil([&] { return ids() == expected; }));

  stopWindowManager();
  // Without it, a window that comes is seen all the same.
  auto meanwhile = programAt(10, 300);
  auto withMeanwhile = expected;
  withMeanwhile.push_back(meanwhile->window());
  EXPECT_TRUE(iterateUntil([&] { return ids() == withMeanwhile; }));

  startWindowManager();
  EXPECT_TRUE(iterateUntil([&] { return ids() == withMeanwhile; }));
  const auto last = programAt(300, 300);
  withMeanwhile.push_back(last->window());
  EXPECT_TRUE(iterateUntil([&] { return ids() == withMeanwhile; }));
  EXPECT_TRUE(windows().activate(second->window()));
  EXPECT_TRUE(iterateUntil([&] { return isActive(second->window()); }));
}

TEST_F(WindowManagerRestartTest, AWindowManagerThatStartsAfterUsTakesOver) {
  stopWindowManager();
  makeWindows();
  const auto first = programAt(10, 50);
  startWindowManager();
  const auto second = programAt(300, 50);
  const std::vector<std::uint64_t> expected = {first->window(), second->window()};
  EXPECT_TRUE(iterateUntil([&] { return ids() == expected; }));
  EXPECT_TRUE(iterateUntil([&] { return isActive(second->window()); }));
}

TEST_F(WindowManagerRestartTest, UnderAWindowManagerTheScreensTooltipsWakeNobody) {
  const auto program = programAt(10, 50);
  ASSERT_TRUE(iterateUntil([&] { return isActive(program->window()); }));
  connection().drain();
  int events = 0;
  // The window manager may still be writing properties of the program's window; those are no tooltip's.
  const auto counting = connection().observeEvents([&](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) ++events;
  });
  auto tooltip = otherClient({"--override-redirect", "--window"});
  tooltip.reset();
  driver().sync();
  connection().drain();
  EXPECT_EQ(events, 0);
}

} // namespace
} // namespace orbel::test
