#include "settings/AppSettings.h"

#include "foundation/NotificationCenter.h"
#include "foundation/SharedObjects.h"
#include "settings/ArchivedColor.h"
#include "settings/Notifications.h"
#include "shortcut/MASShortcut.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace orbel {
namespace {

class AppSettingsTest : public testing::Test {
protected:
  AppSettings& settings() { return AppSettings::sharedInstance(); }
  void store(const std::string& key, PropertyList value) {
    m_platform.preferences.values.insert_or_assign(key, std::move(value));
  }

  FakePlatform m_platform;
};

// Listens to everything the settings post.
class Posts {
public:
  Posts() {
    for (const char* name :
         {kOrbelMenuMagnifySettingsChangedNotification, kOrbelMenuWindowTintSettingsChangedNotification,
          kOrbelMenuShowRunningAppsChangedNotification, kOrbelMenuMenuSizeSettingsChangedNotification,
          kOrbelMenuShouldShowNotification, kOrbelMenuShouldHideNotification}) {
      m_observations.push_back(NotificationCenter::defaultCenter().observe(
          name, nullptr, [this](const Notification& notification) { all.push_back(notification); }));
    }
  }
  std::vector<Notification> all;

private:
  std::vector<Registration> m_observations;
};

TEST_F(AppSettingsTest, AnEmptyStoreYieldsTheDefaults) {
  EXPECT_EQ(settings().gestureSettings(), 1);
  EXPECT_TRUE(settings().magnifySettings());
  EXPECT_EQ(settings().windowTintColor(), Color::white(1));
  EXPECT_TRUE(settings().showRunningApps());
  EXPECT_EQ(settings().menuSizeSettings(), 1);
  EXPECT_FALSE(settings().swiftMode());
  EXPECT_FALSE(settings().launchAtLogin());
  EXPECT_EQ(m_platform.preferences.writes, 0) << "reading stores nothing";
  EXPECT_TRUE(m_platform.logged.empty());
}

TEST_F(AppSettingsTest, TheNotificationsHaveTheirNames) {
  EXPECT_STREQ(kOrbelMenuMagnifySettingsChangedNotification, "OrbelMenuMagnifySettingsChangedNotification");
  EXPECT_STREQ(kOrbelMenuWindowTintSettingsChangedNotification,
               "OrbelMenuWindowTintSettingsChangedNotification");
  EXPECT_STREQ(kOrbelMenuShowRunningAppsChangedNotification, "OrbelMenuShowRunningAppsChangedNotification");
  EXPECT_STREQ(kOrbelMenuMenuSizeSettingsChangedNotification, "OrbelMenuMenuSizeSettingsChangedNotification");
  EXPECT_STREQ(kOrbelMenuShouldShowNotification, "OrbelMenuShouldShowNotification");
  EXPECT_STREQ(kOrbelMenuShouldHideNotification, "OrbelMenuShouldHideNotification");
}

TEST_F(AppSettingsTest, AnUnreadableTintIsLoggedOnceUntilItChanges) {
  store("windowTintColor", "no colour");
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(settings().windowTintColor(), Color::white(1));
  EXPECT_EQ(m_platform.logged.size(), 1u);
  store("windowTintColor", PropertyList::Data(3, std::byte{1}));
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(settings().windowTintColor(), Color::white(1));
  EXPECT_EQ(m_platform.logged.size(), 2u);
  store("windowTintColor", ArchivedColor::archive({1, 0, 0, 1}));
  EXPECT_EQ(settings().windowTintColor(), (Color{1, 0, 0, 1}));
  EXPECT_EQ(m_platform.logged.size(), 2u);
}

TEST_F(AppSettingsTest, GesturesOneToFiveAreReadAndEverythingElseIsOne) {
  for (const std::int64_t gesture : {1, 2, 3, 4, 5}) {
    store("gestureSettings", gesture);
    EXPECT_EQ(settings().gestureSettings(), gesture);
  }
  for (const PropertyList& bad :
       {PropertyList(0), PropertyList(6), PropertyList(-1),
        PropertyList(std::numeric_limits<std::int64_t>::max()),
        PropertyList(std::numeric_limits<std::int64_t>::min()), PropertyList(1e300), PropertyList(-0.5),
        PropertyList(std::numeric_limits<double>::quiet_NaN()), PropertyList("five"),
        PropertyList(PropertyList::List{3}), PropertyList(PropertyList::Data{std::byte{3}}),
        PropertyList(PropertyList::Date{3})}) {
    store("gestureSettings", bad);
    EXPECT_EQ(settings().gestureSettings(), 1);
  }
}

TEST_F(AppSettingsTest, AnInvalidStoredValueIsLeftAsItIs) {
  store("gestureSettings", 6);
  store("menuSizeSettings", 4);
  settings().gestureSettings();
  settings().menuSizeSettings();
  EXPECT_EQ(*m_platform.preferences.object("gestureSettings"), PropertyList(6));
  EXPECT_EQ(*m_platform.preferences.object("menuSizeSettings"), PropertyList(4));
}

TEST_F(AppSettingsTest, MenuSizesOneToThreeAreReadAndEverythingElseIsOne) {
  for (const std::int64_t size : {1, 2, 3}) {
    store("menuSizeSettings", size);
    EXPECT_EQ(settings().menuSizeSettings(), size);
  }
  for (const PropertyList& bad :
       {PropertyList(4), PropertyList(0), PropertyList(-3), PropertyList("2"),
        PropertyList(std::numeric_limits<std::int64_t>::max()), PropertyList(4.5)}) {
    store("menuSizeSettings", bad);
    EXPECT_EQ(settings().menuSizeSettings(), 1);
  }
}

TEST_F(AppSettingsTest, AWholeNumberStoredAsADoubleIsReadAsThatNumber) {
  store("gestureSettings", 3.0);
  store("menuSizeSettings", 2.0);
  EXPECT_EQ(settings().gestureSettings(), 3);
  EXPECT_EQ(settings().menuSizeSettings(), 2);
}

TEST_F(AppSettingsTest, SwitchesThatAreOnByDefaultCanBeStoredAsOff) {
  store("magnifySettings", false);
  store("showRunningApps", false);
  EXPECT_FALSE(settings().magnifySettings());
  EXPECT_FALSE(settings().showRunningApps());
  store("magnifySettings", 0);
  EXPECT_FALSE(settings().magnifySettings());
  store("magnifySettings", 1);
  EXPECT_TRUE(settings().magnifySettings());
}

TEST_F(AppSettingsTest, SwitchesThatHoldNoBooleanReadAsOff) {
  for (const char* key : {"magnifySettings", "showRunningApps", "swiftMode", "launchAtLogin"}) {
    store(key, PropertyList::List{true});
  }
  EXPECT_FALSE(settings().magnifySettings());
  EXPECT_FALSE(settings().showRunningApps());
  EXPECT_FALSE(settings().swiftMode());
  EXPECT_FALSE(settings().launchAtLogin());
}

TEST_F(AppSettingsTest, EverySetterWritesItsKey) {
  settings().setGestureSettings(4);
  settings().setMagnifySettings(false);
  settings().setWindowTintColor({0.1, 0.2, 0.3, 0.4});
  settings().setShowRunningApps(false);
  settings().setMenuSizeSettings(3);
  settings().setSwiftMode(true);
  settings().setLaunchAtLogin(true);
  const auto& values = m_platform.preferences.values;
  EXPECT_EQ(values.at("gestureSettings"), PropertyList(4));
  EXPECT_EQ(values.at("magnifySettings"), PropertyList(false));
  EXPECT_EQ(values.at("windowTintColor"), PropertyList(ArchivedColor::archive({0.1, 0.2, 0.3, 0.4})));
  EXPECT_EQ(values.at("showRunningApps"), PropertyList(false));
  EXPECT_EQ(values.at("menuSizeSettings"), PropertyList(3));
  EXPECT_EQ(values.at("swiftMode"), PropertyList(true));
  EXPECT_EQ(values.at("launchAtLogin"), PropertyList(true));
  EXPECT_EQ(values.size(), 7u);
  EXPECT_EQ(settings().gestureSettings(), 4);
  EXPECT_FALSE(settings().magnifySettings());
  EXPECT_EQ(settings().windowTintColor(), (Color{0.1, 0.2, 0.3, 0.4}));
  EXPECT_FALSE(settings().showRunningApps());
  EXPECT_EQ(settings().menuSizeSettings(), 3);
  EXPECT_TRUE(settings().swiftMode());
  EXPECT_TRUE(settings().launchAtLogin());
}

TEST_F(AppSettingsTest, SettersOfWhatTheMenuShowsPostTheirNotificationFromTheSettings) {
  const std::vector<std::pair<std::string, std::function<void()>>> setters = {
      {"OrbelMenuMagnifySettingsChangedNotification", [this] { settings().setMagnifySettings(true); }},
      {"OrbelMenuWindowTintSettingsChangedNotification",
       [this] { settings().setWindowTintColor(Color::gray()); }},
      {"OrbelMenuShowRunningAppsChangedNotification", [this] { settings().setShowRunningApps(true); }},
      {"OrbelMenuMenuSizeSettingsChangedNotification", [this] { settings().setMenuSizeSettings(2); }},
  };
  for (const auto& [name, set] : setters) {
    Posts posts;
    set();
    ASSERT_EQ(posts.all.size(), 1u) << name;
    EXPECT_EQ(posts.all[0].name, name);
    EXPECT_EQ(posts.all[0].object, &settings());
    EXPECT_TRUE(posts.all[0].userInfo.empty());
  }
}

TEST_F(AppSettingsTest, TheStoreHoldsTheNewValueWhenTheNotificationComes) {
  auto& center = NotificationCenter::defaultCenter();
  std::vector<bool> seen;
  const Registration observations[] = {
      center.observe(kOrbelMenuMagnifySettingsChangedNotification, nullptr,
                     [&](const Notification&) { seen.push_back(!settings().magnifySettings()); }),
      center.observe(
          kOrbelMenuWindowTintSettingsChangedNotification, nullptr,
          [&](const Notification&) { seen.push_back(settings().windowTintColor() == Color::gray()); }),
      center.observe(kOrbelMenuShowRunningAppsChangedNotification, nullptr,
                     [&](const Notification&) { seen.push_back(!settings().showRunningApps()); }),
      center.observe(kOrbelMenuMenuSizeSettingsChangedNotification, nullptr,
                     [&](const Notification&) { seen.push_back(settings().menuSizeSettings() == 3); }),
  };
  settings().setMagnifySettings(false);
  settings().setWindowTintColor(Color::gray());
  settings().setShowRunningApps(false);
  settings().setMenuSizeSettings(3);
  EXPECT_EQ(seen, (std::vector<bool>{true, true, true, true}));
}

TEST_F(AppSettingsTest, GestureSwiftModeAndLaunchAtLoginPostNothing) {
  Posts posts;
  settings().setGestureSettings(2);
  settings().setSwiftMode(true);
  settings().setLaunchAtLogin(true);
  EXPECT_TRUE(posts.all.empty());
}

TEST_F(AppSettingsTest, AnUnreadableTintIsWhiteAndLogged) {
  const std::vector<PropertyList> bad = {PropertyList::Data(50, std::byte{0xEE}), PropertyList::Data{},
                                         "white", 7, PropertyList::Dictionary{{"red", 0.5}}};
  for (std::size_t index = 0; index < bad.size(); ++index) {
    store("windowTintColor", bad[index]);
    EXPECT_EQ(settings().windowTintColor(), Color::white(1)) << index;
    EXPECT_EQ(m_platform.logged.size(), index + 1) << index;
    EXPECT_EQ(*m_platform.preferences.object("windowTintColor"), bad[index]) << "nothing is thrown away";
  }
}

TEST_F(AppSettingsTest, AResetWritesGestureOneAndMagnificationAndTellsNobody) {
  settings().setGestureSettings(5);
  settings().setMagnifySettings(false);
  settings().setMenuSizeSettings(3);
  Posts posts;
  settings().reset();
  EXPECT_EQ(m_platform.preferences.values.at("gestureSettings"), PropertyList(1));
  EXPECT_EQ(m_platform.preferences.values.at("magnifySettings"), PropertyList(true));
  EXPECT_EQ(settings().menuSizeSettings(), 3);
  EXPECT_TRUE(posts.all.empty());
  EXPECT_TRUE(settings().mouseMovedEventTap().isEnabled()) << "the triggers are not restarted";
}

TEST_F(AppSettingsTest, ThereIsOneInstanceUntilItIsDestroyed) {
  EXPECT_EQ(&settings(), &settings());
  EXPECT_EQ(m_platform.eventTaps.taps.size(), 3u);
  SharedObjects::current().destroy<AppSettings>();
  for (const auto& tap : m_platform.eventTaps.taps)
    EXPECT_FALSE(tap->alive);
  SharedObjects::current().destroy<AppSettings>();
  settings();
  EXPECT_EQ(m_platform.eventTaps.taps.size(), 6u);
}

// What another program, or the user with an editor, does to the store.
class SettingsFromOutsideTest : public AppSettingsTest {
protected:
  SettingsFromOutsideTest() { settings(); }
  void change(const std::string& key, PropertyList value) {
    auto values = m_platform.preferences.values;
    values.insert_or_assign(key, std::move(value));
    m_platform.preferences.changeFromOutside(std::move(values));
  }
  std::vector<std::string> posted() {
    std::vector<std::string> names;
    for (const Notification& notification : m_posts.all)
      names.push_back(notification.name);
    return names;
  }

private:
  Posts m_posts;
};

TEST_F(SettingsFromOutsideTest, EachSettingThatAnOpenMenuShowsIsAnnouncedOnce) {
  change("magnifySettings", false);
  change("showRunningApps", false);
  change("menuSizeSettings", 3);
  change("windowTintColor", ArchivedColor::archive({1, 0, 0, 1}));
  EXPECT_EQ(posted(), (std::vector<std::string>{kOrbelMenuMagnifySettingsChangedNotification,
                                                kOrbelMenuShowRunningAppsChangedNotification,
                                                kOrbelMenuMenuSizeSettingsChangedNotification,
                                                kOrbelMenuWindowTintSettingsChangedNotification}));
}

TEST_F(SettingsFromOutsideTest, TheNewValueCanBeReadWhenItIsAnnounced) {
  std::int64_t seen = 0;
  const auto observation = NotificationCenter::defaultCenter().observe(
      kOrbelMenuMenuSizeSettingsChangedNotification, &settings(),
      [&](const Notification&) { seen = settings().menuSizeSettings(); });
  change("menuSizeSettings", 2);
  EXPECT_EQ(seen, 2);
}

TEST_F(SettingsFromOutsideTest, WhatStaysAsItWasIsNotAnnounced) {
  change("magnifySettings", false);
  change("menuItems", PropertyList::List{});
  change("swiftMode", true);
  change("magnifySettings", false);
  EXPECT_EQ(posted(), std::vector<std::string>{kOrbelMenuMagnifySettingsChangedNotification});
}

TEST_F(SettingsFromOutsideTest, ARemovedSettingIsAChangeToItsDefault) {
  settings().setMagnifySettings(false);
  m_platform.preferences.changeFromOutside({});
  EXPECT_EQ(posted(), (std::vector<std::string>(2, kOrbelMenuMagnifySettingsChangedNotification)));
  EXPECT_TRUE(settings().magnifySettings());
}

TEST_F(SettingsFromOutsideTest, WhatWeWriteOurselvesIsAnnouncedOnce) {
  settings().setMenuSizeSettings(2);
  settings().setMenuSizeSettings(2);
  EXPECT_EQ(posted().size(), 2u);
  settings().reset();
  EXPECT_EQ(posted().size(), 2u);
}

TEST_F(SettingsFromOutsideTest, ValuesThatMakeNoSenseFallBackAndLeaveTheOthersAlone) {
  change("swiftMode", true);
  change("menuSizeSettings", 99);
  change("windowTintColor", "no colour at all");
  change("gestureSettings", -7);
  EXPECT_EQ(settings().menuSizeSettings(), 1);
  EXPECT_EQ(settings().windowTintColor(), Color::white(1));
  EXPECT_EQ(settings().gestureSettings(), 1);
  EXPECT_TRUE(settings().swiftMode());
  EXPECT_EQ(m_platform.preferences.integer("menuSizeSettings"), 99);
}

TEST_F(SettingsFromOutsideTest, AnotherGestureEnablesItsTapWhileTheHandlersRun) {
  settings().startHandlers();
  change("gestureSettings", 5);
  EXPECT_TRUE(m_platform.eventTaps.isEnabled("mouseMoved"));
  EXPECT_FALSE(m_platform.eventTaps.isEnabled("touch"));
  EXPECT_TRUE(m_platform.eventTaps.isEnabled("mouseUp"));
}

TEST_F(SettingsFromOutsideTest, AnotherGestureDoesNotStartHandlersThatAreStopped) {
  change("gestureSettings", 5);
  EXPECT_FALSE(m_platform.eventTaps.isEnabled("mouseMoved"));
  EXPECT_FALSE(m_platform.eventTaps.isEnabled("mouseUp"));
}

} // namespace
} // namespace orbel
