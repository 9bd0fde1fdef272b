// The contracts of the key recorder, the login item, the status bar, notifications and videos, for
// their doubles.
#include "tests/contracts/KeyRecorderContract.h"
#include "tests/contracts/LoginItemContract.h"
#include "tests/contracts/StatusBarContract.h"
#include "tests/contracts/UserNotificationsContract.h"
#include "tests/contracts/VideoPlayerContract.h"
#include "tests/doubles/FakeKeyRecorder.h"
#include "tests/doubles/FakeLoginItem.h"
#include "tests/doubles/FakeStatusBar.h"
#include "tests/doubles/FakeUserNotifications.h"
#include "tests/doubles/FakeVideoPlayerFactory.h"

namespace orbel::contracts {
namespace {

class FakeKeyRecorderSubject {
public:
  KeyRecorder& recorder() { return m_recorder; }
  void typeA(std::uint64_t modifierFlags) {
    if (modifierFlags) m_recorder.holdModifiers(modifierFlags);
    if (m_recorder.type(0, modifierFlags) != FakeKeyRecorder::Delivery::swallowed) m_windowGotA = true;
    if (modifierFlags) m_recorder.holdModifiers(0);
  }
  bool windowGotA() { return std::exchange(m_windowGotA, false); }
  void loseFocus() { m_recorder.loseFocus(); }
  void letAnotherProgramHoldTheKeyboard() { m_recorder.recordSucceeds = false; }

private:
  FakeKeyRecorder m_recorder;
  bool m_windowGotA = false;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeKeyRecorderContract, KeyRecorderContract, FakeKeyRecorderSubject);

class FakeLoginItemSubject {
public:
  LoginItem& item() { return m_item; }
  void switchWithTheDesktopsTools(bool registered) {
    m_item.change(registered ? LoginItem::State::registered : LoginItem::State::notRegistered);
  }
  void makeUnreadable() {
    m_item.change(Failure{"the login item cannot be read"});
    m_item.succeeds = false;
  }
  void refuseRegistrations() { m_item.succeeds = false; }

private:
  FakeLoginItem m_item;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeLoginItemContract, LoginItemContract, FakeLoginItemSubject);

class FakeStatusBarSubject {
public:
  FakeStatusBarSubject() { removeStatusArea(); }
  StatusBar& bar() { return m_bar; }
  void addStatusArea() { m_bar.hasStatusArea = true; }
  void removeStatusArea() { m_bar.hasStatusArea = false; }
  bool shows(std::size_t icons) const { return m_bar.shown().size() == icons; }
  std::string title() const { return m_bar.shown().at(0)->title; }
  bool click(const std::function<bool()>& cameOfIt) const {
    m_bar.click();
    return cameOfIt();
  }

private:
  FakeStatusBar m_bar;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeStatusBarContract, StatusBarContract, FakeStatusBarSubject);

class FakeUserNotificationsSubject {
public:
  UserNotifications& notifications() { return m_notifications; }
  void stopShowingMessages() { m_showsMessages = false; }
  std::vector<std::string> titles() const {
    std::vector<std::string> all;
    for (const UserNotification& message : m_notifications.delivered)
      all.push_back(message.title);
    return all;
  }
  bool runUntil(const std::function<bool()>& condition) {
    while (!condition() && m_notifications.isWaiting())
      m_notifications.answer(m_showsMessages ? Result<>() : Failure{"nothing shows messages"});
    return condition();
  }

private:
  FakeUserNotifications m_notifications;
  bool m_showsMessages = true;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeUserNotificationsContract, UserNotificationsContract,
                               FakeUserNotificationsSubject);

class FakeVideoPlayerFactorySubject {
public:
  FakeVideoPlayerFactorySubject() { m_players.missing = {"Missing"}; }
  VideoPlayerFactory& players() { return m_players; }
  bool runUntil(const std::function<bool()>& condition) {
    constexpr int kFrames = 5;
    for (int frame = 0; frame < kFrames && !condition(); ++frame)
      m_players.playFrame();
    if (!condition()) m_players.playToEnd();
    return condition();
  }

private:
  FakeVideoPlayerFactory m_players;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeVideoPlayerFactoryContract, VideoPlayerContract,
                               FakeVideoPlayerFactorySubject);

} // namespace
} // namespace orbel::contracts
