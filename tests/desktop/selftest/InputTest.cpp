#include "tests/support/x11/Input.h"

#include "tests/desktop/harness/SharedDesktop.h"
#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/Waiting.h"
#include "tests/support/x11/XcbReply.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>
#include <map>
#include <xcb/xinput.h>

using namespace orbel::test;

namespace {

// Counts what a program that watches raw events sees.
class RawEvents {
public:
  explicit RawEvents(const std::string& displayName) : m_display(displayName) {
    const auto version = xcb_input_xi_query_version(m_display.get(), 2, 2);
    const XcbReply<xcb_input_xi_query_version_reply_t> reply(
        xcb_input_xi_query_version_reply(m_display.get(), version, nullptr));
    struct {
      xcb_input_event_mask_t head;
      std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                XCB_INPUT_XI_EVENT_MASK_RAW_MOTION | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    xcb_input_xi_select_events(m_display.get(), m_display.root(), 1, &selection.head);
    m_display.roundTrip();
  }

  int count(std::uint16_t kind) {
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_display.get())}) {
      if ((event->response_type & ~0x80) != XCB_GE_GENERIC) continue;
      ++m_counts[reinterpret_cast<const xcb_ge_generic_event_t*>(event.get())->event_type];
    }
    return m_counts[kind];
  }

private:
  DisplayConnection m_display;
  std::map<std::uint16_t, int> m_counts;
};

class InputTest : public testing::Test {
protected:
  SharedDesktop m_desktop{{.windowManager = WindowManagerKind::none, .bus = BusPresence::absent}};
  DesktopSession& m_session = m_desktop.session();
  Input& m_input = m_session.input();
};

TEST_F(InputTest, MovesThePointerExactlyAndWithRawMotion) {
  RawEvents raw(m_session.environment().at("DISPLAY"));
  m_input.movePointer({321, 123});
  EXPECT_EQ(m_input.pointer(), (ScreenPoint{321, 123}));
  EXPECT_TRUE(waitFor([&] { return raw.count(XCB_INPUT_RAW_MOTION) == 1; }, "one raw motion came"));
  m_input.movePointerBy(-21, 7);
  EXPECT_EQ(m_input.pointer(), (ScreenPoint{300, 130}));
  m_input.glidePointer({400, 230}, 5);
  EXPECT_EQ(m_input.pointer(), (ScreenPoint{400, 230}));
  EXPECT_TRUE(waitFor([&] { return raw.count(XCB_INPUT_RAW_MOTION) == 7; }, "each step gave a raw motion"));
  m_input.click();
  EXPECT_TRUE(waitFor([&] { return raw.count(XCB_INPUT_RAW_BUTTON_RELEASE) == 1; }, "the release came raw"));
}

TEST_F(InputTest, PressesEachButtonWhereThePointerIs) {
  const TestWindow window(m_session, {.frame = {100, 100, 300, 200}});
  m_input.clickAt({110, 120});
  m_input.clickAt({130, 140}, PointerButton::right);
  m_input.clickAt({150, 160}, PointerButton::wheelDown);
  ASSERT_TRUE(waitFor([&] { return window.log().count("button-release") == 3; }, "three clicks came"));
  EXPECT_EQ(
      window.log().linesOf("button-press"),
      (std::vector<std::string>{"button-press 1 10 20", "button-press 3 30 40", "button-press 5 50 60"}));
}

TEST_F(InputTest, DragsFromPressToRelease) {
  const TestWindow window(m_session, {.frame = {100, 100, 300, 200}});
  m_input.drag({110, 110}, {310, 210}, {.steps = 4, .betweenSteps = {}, .beforeRelease = {}});
  ASSERT_TRUE(
      waitFor([&] { return window.log().contains("button-release 1 210 110"); }, "it was released there"));
  EXPECT_TRUE(window.log().contains("button-press 1 10 10"));
}

TEST_F(InputTest, TypesWithShiftWhereTheLayoutNeedsItAndInOtherLayouts) {
  const TestWindow window(m_session, {});
  xcb_set_input_focus(m_session.display().get(), XCB_INPUT_FOCUS_PARENT, window.id(), XCB_CURRENT_TIME);
  m_session.display().roundTrip();
  m_input.typeText("aB");
  ASSERT_TRUE(waitFor([&] { return window.log().count("key-release") == 3; }, "three keys were used"));
  EXPECT_EQ(window.log().linesOf("key-press"),
            (std::vector<std::string>{"key-press 0x61", "key-press 0xffe1", "key-press 0x62"}));

  EXPECT_THROW(m_input.typeKey(XK_udiaeresis), std::runtime_error);
  m_session.setKeyboardLayout({"de"});
  m_input.typeKey(XK_udiaeresis);
  EXPECT_TRUE(waitFor([&] { return window.log().count("key-release") == 4; }, "the umlaut was typed"));
}

TEST_F(InputTest, LetsGoOfWhatIsStillHeld) {
  const TestWindow window(m_session, {.frame = {100, 100, 300, 200}});
  {
    Input hand(m_session.display());
    hand.movePointer({110, 110});
    hand.press(PointerButton::left);
    ASSERT_TRUE(waitFor([&] { return window.log().contains("button-press"); }, "the button is down"));
  }
  EXPECT_TRUE(waitFor([&] { return window.log().contains("button-release"); }, "the button is up"));
}

} // namespace
