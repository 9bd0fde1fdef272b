#include "foundation/SharedObjects.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orbel {
namespace {

std::vector<std::string> events;

template <int number>
struct Thing {
  Thing() { events.push_back("made " + std::to_string(number)); }
  ~Thing() { events.push_back("destroyed " + std::to_string(number)); }
  int value = 0;
};

// Uses the first thing as long as it lives.
struct Dependent {
  Dependent() {
    events.push_back("begun");
    SharedObjects::current().get<Thing<1>>().value = 1;
  }
  ~Dependent() { events.push_back("ended with " + std::to_string(thing().value)); }
  static Thing<1>& thing() { return SharedObjects::current().get<Thing<1>>(); }
};

// Asks too late for what it has never used.
struct LateComer {
  ~LateComer() { SharedObjects::current().get<Thing<2>>(); }
};

class HiddenThing {
public:
  int value = 0;

private:
  friend SharedObjects;
  HiddenThing() = default;
};

class SharedObjectsTest : public testing::Test {
protected:
  SharedObjectsTest() { events.clear(); }
};

TEST_F(SharedObjectsTest, AnObjectIsMadeAtItsFirstUseAndStaysTheSame) {
  SharedObjects objects;
  EXPECT_TRUE(events.empty());
  SharedObjects::current().get<Thing<1>>().value = 7;
  EXPECT_EQ(SharedObjects::current().get<Thing<1>>().value, 7);
  EXPECT_EQ(objects.get<Thing<2>>().value, 0);
  EXPECT_EQ(events, (std::vector<std::string>{"made 1", "made 2"}));
}

TEST_F(SharedObjectsTest, AllEndWithTheirOwnerTheLastMadeFirst) {
  {
    SharedObjects objects;
    objects.get<Thing<1>>();
    objects.get<Thing<2>>();
    events.clear();
  }
  EXPECT_EQ(events, (std::vector<std::string>{"destroyed 2", "destroyed 1"}));
}

TEST_F(SharedObjectsTest, WhatAConstructorAsksForOutlivesItsUser) {
  {
    SharedObjects objects;
    objects.get<Dependent>();
  }
  EXPECT_EQ(events, (std::vector<std::string>{"begun", "made 1", "ended with 1", "destroyed 1"}));
}

TEST_F(SharedObjectsTest, WhatADestructorAsksForTooLateIsDestroyedAsWell) {
  {
    SharedObjects objects;
    objects.get<LateComer>();
  }
  EXPECT_EQ(events, (std::vector<std::string>{"made 2", "destroyed 2"}));
}

TEST_F(SharedObjectsTest, OneObjectCanBeEndedAloneAndIsThenMadeAnew) {
  SharedObjects objects;
  objects.get<Thing<1>>().value = 7;
  objects.get<Thing<2>>();
  objects.destroy<Thing<1>>();
  objects.destroy<Thing<1>>();
  EXPECT_EQ(events, (std::vector<std::string>{"made 1", "made 2", "destroyed 1"}));
  EXPECT_EQ(objects.get<Thing<1>>().value, 0);
}

TEST_F(SharedObjectsTest, AnEarlierOwnerIsTheProcesssAgainWhenALaterOneEnds) {
  SharedObjects outer;
  outer.get<HiddenThing>().value = 7;
  {
    SharedObjects inner;
    EXPECT_EQ(&SharedObjects::current(), &inner);
    EXPECT_EQ(SharedObjects::current().get<HiddenThing>().value, 0);
  }
  EXPECT_EQ(SharedObjects::current().get<HiddenThing>().value, 7);
}

TEST(SharedObjectsDeathTest, AskingWithoutAnOwnerEndsTheProgram) {
  EXPECT_DEATH(SharedObjects::current(), "before its owner was set up");
}

} // namespace
} // namespace orbel
