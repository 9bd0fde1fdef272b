#include "foundation/NotificationCenter.h"

#include "foundation/SharedObjects.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orbel {
namespace {

class NotificationCenterTest : public testing::Test {
protected:
  Registration record(const std::string& label, const std::string& name, const void* observed = nullptr) {
    return center.observe(name, observed, [this, label](const Notification&) { heard.push_back(label); });
  }
  NotificationCenter center;
  std::vector<std::string> heard;
  int sender = 0;
  int otherSender = 0;
};

TEST_F(NotificationCenterTest, DeliversAtOnceInTheOrderOfRegistration) {
  const auto first = record("first", "Shown");
  const auto second = record("second", "Shown");
  center.post("Shown", nullptr);
  EXPECT_EQ(heard, (std::vector<std::string>{"first", "second"}));
}

TEST_F(NotificationCenterTest, DeliversOnlyTheObservedName) {
  const auto registration = record("shown", "Shown");
  center.post("Hidden", nullptr);
  EXPECT_TRUE(heard.empty());
}

TEST_F(NotificationCenterTest, DeliversOnlyFromTheObservedSender) {
  const auto registration = record("one", "Shown", &sender);
  center.post("Shown", &otherSender);
  center.post("Shown", nullptr);
  EXPECT_TRUE(heard.empty());
  center.post("Shown", &sender);
  EXPECT_EQ(heard.size(), 1u);
}

TEST_F(NotificationCenterTest, HandsOverNameSenderAndUserInfo) {
  Notification received;
  const auto registration =
      center.observe("Shown", nullptr, [&](const Notification& posted) { received = posted; });
  center.post("Shown", &sender, {{"ShowEventType", "ShowEventShortcut"}});
  EXPECT_EQ(received.name, "Shown");
  EXPECT_EQ(received.object, &sender);
  EXPECT_EQ(received.userInfo, (PropertyList::Dictionary{{"ShowEventType", "ShowEventShortcut"}}));
}

TEST_F(NotificationCenterTest, EndsWithTheRegistration) {
  auto registration = record("gone", "Shown");
  registration.reset();
  center.post("Shown", nullptr);
  EXPECT_TRUE(heard.empty());
}

TEST_F(NotificationCenterTest, AnObserverMayEndItselfAndOthersWhileBeingCalled) {
  Registration own;
  Registration later;
  own = center.observe("Shown", nullptr, [&](const Notification&) {
    heard.push_back("own");
    own.reset();
    later.reset();
  });
  later = record("later", "Shown");
  center.post("Shown", nullptr);
  center.post("Shown", nullptr);
  EXPECT_EQ(heard, (std::vector<std::string>{"own"}));
}

TEST_F(NotificationCenterTest, AnObserverAddedDuringAPostHearsOnlyTheNextOne) {
  std::vector<Registration> added;
  const auto registration = center.observe("Shown", nullptr, [&](const Notification&) {
    if (added.empty()) added.push_back(record("added", "Shown"));
  });
  center.post("Shown", nullptr);
  EXPECT_TRUE(heard.empty());
  center.post("Shown", nullptr);
  EXPECT_EQ(heard.size(), 1u);
}

TEST_F(NotificationCenterTest, APostFromWithinABlockIsDeliveredAtOnce) {
  const auto outer = center.observe("Outer", nullptr, [&](const Notification&) {
    heard.push_back("before");
    center.post("Inner", nullptr);
    heard.push_back("after");
  });
  const auto inner = record("inner", "Inner");
  center.post("Outer", nullptr);
  EXPECT_EQ(heard, (std::vector<std::string>{"before", "inner", "after"}));
}

TEST_F(NotificationCenterTest, ARegistrationMayOutliveItsCenter) {
  auto shortLived = std::make_unique<NotificationCenter>();
  auto registration = shortLived->observe("Shown", nullptr, [](const Notification&) {});
  shortLived.reset();
  registration.reset();
  EXPECT_FALSE(registration);
}

TEST_F(NotificationCenterTest, TheDefaultCenterIsAlwaysTheSame) {
  SharedObjects shared;
  EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}

} // namespace
} // namespace orbel
