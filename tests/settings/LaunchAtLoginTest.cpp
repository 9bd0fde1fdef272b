// The setting and the desktop's login item, which follow each other.
#include "settings/AppSettings.h"
#include "settings/SettingsKeys.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

using State = LoginItem::State;

class LaunchAtLoginTest : public testing::Test {
protected:
  static AppSettings& settings() { return AppSettings::sharedInstance(); }
  void store(bool launch) { platform.preferences.setObject(kLaunchAtLoginKey, launch); }

  FakePlatform platform;
};

TEST_F(LaunchAtLoginTest, TurningItOnAndOffRegistersAndRemovesTheItem) {
  settings().setLaunchAtLogin(true);
  EXPECT_EQ(*platform.loginItem.current, State::registered);
  EXPECT_TRUE(settings().launchAtLogin());
  settings().setLaunchAtLogin(false);
  EXPECT_EQ(*platform.loginItem.current, State::notRegistered);
  EXPECT_FALSE(settings().launchAtLogin());
}

TEST_F(LaunchAtLoginTest, WhereRegisteringFailsTheSettingReadsAsOff) {
  platform.loginItem.succeeds = false;
  settings().setLaunchAtLogin(true);
  EXPECT_FALSE(settings().launchAtLogin());
  EXPECT_EQ(*platform.preferences.object(kLaunchAtLoginKey), PropertyList(false));
  EXPECT_EQ(platform.logged, std::vector<std::string>{"the login item cannot be changed"});
}

TEST_F(LaunchAtLoginTest, WhereRemovingFailsTheSettingStaysOn) {
  settings().setLaunchAtLogin(true);
  platform.loginItem.succeeds = false;
  settings().setLaunchAtLogin(false);
  EXPECT_TRUE(settings().launchAtLogin());
}

TEST_F(LaunchAtLoginTest, TheFirstStartAsksForNothingAndStoresNothing) {
  EXPECT_FALSE(settings().launchAtLogin());
  EXPECT_EQ(platform.loginItem.requests, 0);
  EXPECT_EQ(platform.preferences.object(kLaunchAtLoginKey), nullptr);
}

TEST_F(LaunchAtLoginTest, AtTheStartARegisteredItemIsBroughtUpToDate) {
  store(true);
  platform.loginItem.current = State::registered;
  EXPECT_TRUE(settings().launchAtLogin());
  EXPECT_EQ(platform.loginItem.requests, 1);
}

TEST_F(LaunchAtLoginTest, AnItemThatCannotBeBroughtUpToDateIsStillOn) {
  store(true);
  platform.loginItem.current = State::registered;
  platform.loginItem.succeeds = false;
  EXPECT_TRUE(settings().launchAtLogin());
}

TEST_F(LaunchAtLoginTest, ASettingThatComesFromAnotherMachineIsCarriedOut) {
  store(true);
  EXPECT_TRUE(settings().launchAtLogin());
  EXPECT_EQ(*platform.loginItem.current, State::registered);
}

TEST_F(LaunchAtLoginTest, ASettingThatComesFromAnotherMachineAndCannotBeCarriedOutIsOff) {
  store(true);
  platform.loginItem.succeeds = false;
  EXPECT_FALSE(settings().launchAtLogin());
}

TEST_F(LaunchAtLoginTest, AnItemThatWasRemovedFromOutsideIsOffAndNotRegisteredAgain) {
  store(true);
  platform.loginItem.current = State::notRegistered;
  EXPECT_FALSE(settings().launchAtLogin());
  EXPECT_EQ(platform.loginItem.requests, 0);
  EXPECT_EQ(platform.logged.size(), 1u);
}

TEST_F(LaunchAtLoginTest, AnItemThatWasAddedFromOutsideIsOn) {
  platform.loginItem.current = State::registered;
  EXPECT_TRUE(settings().launchAtLogin());
}

TEST_F(LaunchAtLoginTest, ChangesFromOutsideAreTakenOverWhileItRuns) {
  settings().setLaunchAtLogin(true);
  platform.loginItem.change(State::notRegistered);
  EXPECT_FALSE(settings().launchAtLogin());
  platform.loginItem.change(State::registered);
  EXPECT_TRUE(settings().launchAtLogin());
}

TEST_F(LaunchAtLoginTest, ASettingThatIsWrittenFromOutsideTakesEffect) {
  EXPECT_FALSE(settings().launchAtLogin());
  platform.preferences.changeFromOutside({{kLaunchAtLoginKey, true}});
  EXPECT_EQ(*platform.loginItem.current, State::registered);
  platform.preferences.changeFromOutside({});
  EXPECT_EQ(*platform.loginItem.current, State::notRegistered);
}

TEST_F(LaunchAtLoginTest, AnUnreadableItemChangesNothing) {
  store(true);
  const Failure unreadable{"the login item cannot be read"};
  platform.loginItem.current = unreadable;
  EXPECT_TRUE(settings().launchAtLogin());
  EXPECT_EQ(platform.loginItem.requests, 1) << "it is brought up to date as far as that is possible";
  platform.loginItem.change(unreadable);
  EXPECT_TRUE(settings().launchAtLogin());
}

} // namespace
} // namespace orbel
