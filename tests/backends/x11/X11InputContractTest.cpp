// The contracts of hot keys, event taps and the keyboard layout, on the X server of these tests.
#include "backends/x11/PassiveKeyGrabs.h"
#include "backends/x11/RawPointer.h"
#include "backends/x11/X11EventTaps.h"
#include "backends/x11/X11HotKeys.h"
#include "backends/x11/X11KeyboardLayout.h"
#include "tests/backends/x11/support/X11Test.h"
#include "tests/contracts/EventTapsContract.h"
#include "tests/contracts/HotKeysContract.h"
#include "tests/contracts/KeyboardLayoutContract.h"

#include <linux/input-event-codes.h>

#include <chrono>
#include <utility>

namespace orbel::contracts {
namespace {

// The fixture of this folder without a test of its own.
class OwnServer : public test::X11Test {
public:
  OwnServer() { SetUp(); }
  ~OwnServer() override { TearDown(); }
  void TestBody() override {}
  using X11Test::connect;
  using X11Test::driver;
  using X11Test::session;
};

class X11HotKeysSubject {
public:
  HotKeys& hotKeys() { return m_hotKeys; }
  void settle() {
    m_server.driver().sync();
    m_connection->drain();
    test::iterateWhatIsPending();
    m_connection->drain();
  }
  void typeSpace(std::uint32_t modifiers) {
    std::vector<std::uint16_t> keys;
    for (const auto& [bit, key] :
         {std::pair(256U, KEY_LEFTMETA), {512U, KEY_LEFTSHIFT}, {2048U, KEY_LEFTALT}, {4096U, KEY_LEFTCTRL}})
      if (modifiers & bit) keys.push_back(static_cast<std::uint16_t>(key));
    keys.push_back(KEY_SPACE);
    m_server.driver().tapKeys(keys);
    settle();
  }
  bool otherProgramGrabsSpace(std::uint32_t modifiers) {
    settle();
    std::uint16_t mask = 0;
    for (const auto& [bit, own] : {std::pair(256U, XCB_MOD_MASK_4),
                                   {512U, XCB_MOD_MASK_SHIFT},
                                   {2048U, XCB_MOD_MASK_1},
                                   {4096U, XCB_MOD_MASK_CONTROL}})
      if (modifiers & bit) mask = static_cast<std::uint16_t>(mask | own);
    return m_server.driver().grabKey(KEY_SPACE, mask);
  }

private:
  OwnServer m_server;
  std::unique_ptr<x11::Connection> m_connection = m_server.connect();
  x11::PassiveKeyGrabs m_grabs{*m_connection};
  x11::X11HotKeys m_hotKeys{m_grabs};
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11HotKeysContract, HotKeysContract, X11HotKeysSubject);

class X11EventTapsSubject {
public:
  EventTaps& taps() { return m_taps; }
  void clickPrimaryButton() { click(kPrimary); }
  void clickSecondaryButton() { click(kSecondary); }
  void movePointer() {
    begin();
    m_server.driver().moveTo(m_x += 10, 100);
    m_taps.drain();
  }
  void dragPointer() {
    begin();
    m_server.driver().pressButton(kPrimary);
    m_server.driver().moveTo(m_x += 10, 100);
    m_server.driver().releaseButton(kPrimary);
    m_taps.drain();
  }
  void passInterval() {
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::duration<double>(EventTaps::kMovementInterval);
    EXPECT_TRUE(test::iterateUntil([&] { return std::chrono::steady_clock::now() > end; }));
  }

private:
  static constexpr std::uint8_t kPrimary = 1, kSecondary = 3;
  // What has been enabled is known to the server.
  void begin() { m_taps.drain(); }
  void click(std::uint8_t button) {
    begin();
    m_server.driver().click(button);
    m_taps.drain();
  }
  OwnServer m_server;
  std::unique_ptr<x11::Connection> m_connection = m_server.connect();
  x11::RawPointer m_pointer{*m_connection};
  x11::X11EventTaps m_taps{m_pointer};
  int m_x = 100;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11EventTapsContract, EventTapsContract, X11EventTapsSubject);

class X11KeyboardLayoutSubject {
public:
  X11KeyboardLayoutSubject() { m_server.session().setKeyboardLayout({"us"}); }
  KeyboardLayout& layout() { return m_layout; }
  void switchToGerman() { m_server.session().setKeyboardLayout({"de"}); }
  void holdShift() { m_server.driver().pressKey(KEY_LEFTSHIFT); }

private:
  OwnServer m_server;
  std::unique_ptr<x11::Connection> m_connection = m_server.connect();
  x11::X11KeyboardLayout m_layout{*m_connection};
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11KeyboardLayoutContract, KeyboardLayoutContract, X11KeyboardLayoutSubject);

} // namespace
} // namespace orbel::contracts
