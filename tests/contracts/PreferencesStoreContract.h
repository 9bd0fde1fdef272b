// What every PreferencesStore keeps to.
//
// Subject: a store that is empty at the start, and its disk.
//   PreferencesStore& store();
//   void changeFromOutside(PropertyList::Dictionary);  another program stores exactly these values; returns
//                                                      when the store has taken notice
//   void letAMomentPass();                             the time after which a change is saved by itself
//   PropertyList::Dictionary saved();                  what a program that starts now would read
//   std::optional<PropertyList::Dictionary> datedCopy();  the newest one
//   void setDiskFails(bool);                           only while nothing has been saved yet
#pragma once

#include "platform/PreferencesStore.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel::contracts {

template <class Subject>
class PreferencesStoreContract : public testing::Test {
protected:
  PreferencesStore& store() { return subject.store(); }
  // The value, or -1 when there is none.
  std::int64_t number(const std::string& key) {
    const PropertyList* value = store().object(key);
    return value && value->integer() ? *value->integer() : -1;
  }
  Subject subject;
};

TYPED_TEST_SUITE_P(PreferencesStoreContract);

TYPED_TEST_P(PreferencesStoreContract, AKeyThatWasNeverSetOrWasRemovedHasNoValue) {
  EXPECT_EQ(this->store().object("a"), nullptr);
  this->store().setObject("a", 1);
  this->store().removeObject("a");
  EXPECT_EQ(this->store().object("a"), nullptr);
}

TYPED_TEST_P(PreferencesStoreContract, AChangeIsVisibleAtOnceAndOnDiskSoon) {
  this->store().setObject("a", 1);
  EXPECT_EQ(this->number("a"), 1);
  this->subject.letAMomentPass();
  EXPECT_EQ(this->subject.saved(), (PropertyList::Dictionary{{"a", 1}}));
}

TYPED_TEST_P(PreferencesStoreContract, SynchronizingWritesWhatIsNotOnDiskYet) {
  this->store().setObject("a", 1);
  this->store().setObject("b", "two");
  this->store().removeObject("a");
  EXPECT_TRUE(this->store().synchronize());
  EXPECT_EQ(this->subject.saved(), (PropertyList::Dictionary{{"b", "two"}}));
}

TYPED_TEST_P(PreferencesStoreContract, AFailedSaveLosesNothingAndIsTriedAgain) {
  this->subject.setDiskFails(true);
  this->store().setObject("a", 1);
  EXPECT_FALSE(this->store().synchronize());
  EXPECT_EQ(this->number("a"), 1);
  this->subject.setDiskFails(false);
  EXPECT_TRUE(this->store().synchronize());
  EXPECT_EQ(this->subject.saved(), (PropertyList::Dictionary{{"a", 1}}));
}

TYPED_TEST_P(PreferencesStoreContract, ADatedCopyHoldsWhatIsOnDiskAndNotWhatIsOnlyInMemory) {
  this->store().setObject("a", 1);
  ASSERT_TRUE(this->store().synchronize());
  this->store().setObject("a", 2);
  this->store().keepDatedCopy();
  EXPECT_EQ(this->subject.datedCopy(), (PropertyList::Dictionary{{"a", 1}}));
}

TYPED_TEST_P(PreferencesStoreContract, ObserversAreCalledAfterEachChangeAndReadTheNewValue) {
  std::string seen;
  auto observer = this->store().observeChanges([&] { seen += std::to_string(this->number("a")) + ";"; });
  this->store().setObject("a", 5);
  this->store().setObject("a", 6);
  this->store().removeObject("a");
  EXPECT_EQ(seen, "5;6;-1;");
  observer.reset();
  this->store().setObject("a", 7);
  EXPECT_EQ(seen, "5;6;-1;");
}

TYPED_TEST_P(PreferencesStoreContract, WhatChangesNothingIsNoChange) {
  this->store().setObject("a", PropertyList::List{1, "two"});
  int calls = 0;
  const auto observer = this->store().observeChanges([&] { ++calls; });
  this->store().setObject("a", PropertyList::List{1, "two"});
  this->store().removeObject("b");
  ASSERT_TRUE(this->store().synchronize());
  this->subject.letAMomentPass();
  EXPECT_EQ(calls, 0);
  this->store().setObject("a", PropertyList::List{1, 2});
  EXPECT_EQ(calls, 1);
}

TYPED_TEST_P(PreferencesStoreContract, AChangeFromOutsideIsToldOnceAndCanThenBeRead) {
  this->store().setObject("a", 1);
  this->store().setObject("b", 1);
  ASSERT_TRUE(this->store().synchronize());
  std::string seen;
  const auto observer = this->store().observeChanges(
      [&] { seen += std::to_string(this->number("a")) + std::to_string(this->number("b")) + ";"; });
  this->subject.changeFromOutside({{"a", 2}});
  EXPECT_EQ(seen, "2-1;");
}

TYPED_TEST_P(PreferencesStoreContract, ARewriteFromOutsideWithTheSameValuesIsNoChange) {
  this->store().setObject("a", 1);
  ASSERT_TRUE(this->store().synchronize());
  int calls = 0;
  const auto observer = this->store().observeChanges([&] { ++calls; });
  this->subject.changeFromOutside({{"a", 1}});
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(this->number("a"), 1);
}

TYPED_TEST_P(PreferencesStoreContract, AnObserverThatEndsWhileOthersAreCalledIsNotCalledAnyMore) {
  int ownCalls = 0;
  int otherCalls = 0;
  int laterCalls = 0;
  Registration own;
  Registration other;
  Registration later;
  own = this->store().observeChanges([&] {
    ++ownCalls;
    own.reset();
    other.reset();
    later = this->store().observeChanges([&] { ++laterCalls; });
  });
  other = this->store().observeChanges([&] { ++otherCalls; });
  this->store().setObject("a", 1);
  EXPECT_EQ(ownCalls, 1);
  EXPECT_EQ(otherCalls, 0);
  EXPECT_EQ(laterCalls, 0);
  this->store().setObject("a", 2);
  EXPECT_EQ(ownCalls, 1);
  EXPECT_EQ(laterCalls, 1);
}

TYPED_TEST_P(PreferencesStoreContract, AnObserverMayChangeTheStore) {
  int calls = 0;
  const auto observer = this->store().observeChanges([&] {
    ++calls;
    if (this->number("a") > 3) this->store().setObject("a", 3);
  });
  this->store().setObject("a", 9);
  EXPECT_EQ(this->number("a"), 3);
  EXPECT_EQ(calls, 2);
}

TYPED_TEST_P(PreferencesStoreContract, ValuesAreReadLeniently) {
  PreferencesStore& store = this->store();
  EXPECT_FALSE(store.boolean("absent"));
  EXPECT_EQ(store.integer("absent"), 0);
  store.setObject("flag", true);
  EXPECT_TRUE(store.boolean("flag"));
  EXPECT_EQ(store.integer("flag"), 1);
  store.setObject("number", -2);
  EXPECT_TRUE(store.boolean("number"));
  EXPECT_EQ(store.integer("number"), -2);
  store.setObject("real", 2.75);
  EXPECT_FALSE(store.boolean("real"));
  EXPECT_EQ(store.integer("real"), 2);
  store.setObject("huge", 1e300);
  EXPECT_EQ(store.integer("huge"), 0);
  store.setObject("text", "1");
  EXPECT_FALSE(store.boolean("text"));
  EXPECT_EQ(store.integer("text"), 0);
}

REGISTER_TYPED_TEST_SUITE_P(PreferencesStoreContract, AKeyThatWasNeverSetOrWasRemovedHasNoValue,
                            AChangeIsVisibleAtOnceAndOnDiskSoon, SynchronizingWritesWhatIsNotOnDiskYet,
                            AFailedSaveLosesNothingAndIsTriedAgain,
                            ADatedCopyHoldsWhatIsOnDiskAndNotWhatIsOnlyInMemory,
                            ObserversAreCalledAfterEachChangeAndReadTheNewValue, WhatChangesNothingIsNoChange,
                            AChangeFromOutsideIsToldOnceAndCanThenBeRead,
                            ARewriteFromOutsideWithTheSameValuesIsNoChange,
                            AnObserverThatEndsWhileOthersAreCalledIsNotCalledAnyMore,
                            AnObserverMayChangeTheStore, ValuesAreReadLeniently);

} // namespace orbel::contracts
