// The shortcut is what the preferences file says, from the moment at which any program writes it there.
#include "tests/desktop/menu/MenuFixture.h"

#include "tests/desktop/harness/TestGrabber.h"
#include "tests/support/base/TextFile.h"

#include <X11/keysym.h>

using namespace orbel::test;

namespace {

constexpr ScreenPoint kPlace{640, 500};

class ShortcutPreferenceTest : public MenuFixture {
protected:
  testing::AssertionResult pressUntilMenuShown(const std::vector<xcb_keysym_t>& keys) {
    m_input.movePointer(kPlace);
    const auto pressed = [&] {
      if (!menuWindow()) m_input.typeCombination(keys);
      return menuWindow().has_value();
    };
    if (const auto result = waitFor(pressed, "the shortcut works"); !result) return result;
    return waitUntilMenuShown(kPlace);
  }
  testing::AssertionResult waitUntilFree(xcb_keysym_t key) {
    return waitFor([&] { return TestGrabber(m_session, key, kControlAltMask).isGranted(); },
                   "another program can have the combination");
  }

  const std::vector<xcb_keysym_t> m_controlAltSpace{XK_Control_L, XK_Alt_L, XK_space};
};

TEST_F(ShortcutPreferenceTest, AShortcutWrittenFromOutsideWorksAtOnceAndRemovedItIsFree) {
  startAgentAlone();
  EXPECT_TRUE(TestGrabber(m_session, XK_space, kControlAltMask).isGranted());

  m_session.preferences().setShortcut(kControlAltSpace);
  ASSERT_TRUE(pressUntilMenuShown(m_controlAltSpace));
  EXPECT_FALSE(TestGrabber(m_session, XK_space, kControlAltMask).isGranted());
  pressShortcut();
  ASSERT_TRUE(waitUntilMenuHidden());

  m_session.preferences().setShortcut({kLetterJKeyCode, kControlFlag | kOptionFlag});
  EXPECT_TRUE(waitUntilFree(XK_space));
  ASSERT_TRUE(pressUntilMenuShown({XK_Control_L, XK_Alt_L, XK_j}));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilMenuHidden());

  m_session.preferences().remove("GlobalShortcut");
  EXPECT_TRUE(waitUntilFree(XK_j));
}

TEST_F(ShortcutPreferenceTest, AFileWrittenOverInPlaceAndInTheBinaryFormIsNoticedToo) {
  m_session.preferences().setMenuItems(builtInItems());
  startAgentAlone();
  const auto list = PropertyListNode::dictionary()
                        .with("GlobalShortcut", PropertyListNode::data(kControlAltSpace.archived()))
                        .with("menuItems", StoredItem::list(builtInItems()));
  writeFile(m_session.preferences().path(), list.serialized(PropertyListFormat::binary));
  EXPECT_TRUE(pressUntilMenuShown(m_controlAltSpace));
}

TEST_F(ShortcutPreferenceTest, AShortcutThatAnotherProgramHoldsIsReportedAndTakenWhenItIsWrittenAgain) {
  auto holder = std::make_unique<TestGrabber>(m_session, XK_space, kControlAltMask);
  ASSERT_TRUE(holder->isGranted());
  startAgent();
  EXPECT_TRUE(waitForLog("another program holds Control+Alt+"));
  m_input.movePointer(kPlace);
  pressShortcut();
  EXPECT_TRUE(waitFor([&] { return holder->pressCount() == 1; }, "the other program gets it"));
  EXPECT_FALSE(menuWindow());
  holder.reset();

  m_session.preferences().remove("GlobalShortcut");
  m_session.preferences().setShortcut({kLetterJKeyCode, kControlFlag | kOptionFlag});
  ASSERT_TRUE(pressUntilMenuShown({XK_Control_L, XK_Alt_L, XK_j}));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilMenuHidden());
  m_session.preferences().setShortcut(kControlAltSpace);
  EXPECT_TRUE(pressUntilMenuShown(m_controlAltSpace));
}

TEST_F(ShortcutPreferenceTest, TheShortcutWorksWhateverLockKeysAreOn) {
  startAgent();
  m_input.movePointer(kPlace);
  for (const xcb_keysym_t lock : {XK_Num_Lock, XK_Caps_Lock}) {
    m_input.typeKey(lock);
    ASSERT_TRUE(summonAt(kPlace));
    pressShortcut();
    ASSERT_TRUE(waitUntilMenuHidden());
  }
}

} // namespace
