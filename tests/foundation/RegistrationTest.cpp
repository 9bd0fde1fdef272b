#include "foundation/Registration.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

class RegistrationTest : public testing::Test {
protected:
  Registration make() {
    return Registration([this] { ++ended; });
  }
  int ended = 0;
};

TEST_F(RegistrationTest, EndsOnceWhenItIsDestroyed) {
  { const Registration registration = make(); }
  EXPECT_EQ(ended, 1);
}

TEST_F(RegistrationTest, ResetEndsItNowAndOnlyOnce) {
  Registration registration = make();
  EXPECT_TRUE(registration);
  registration.reset();
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(registration);
  registration.reset();
  EXPECT_EQ(ended, 1);
}

TEST_F(RegistrationTest, MovingHandsItOver) {
  Registration first = make();
  {
    const Registration second = std::move(first);
    EXPECT_TRUE(second);
    EXPECT_EQ(ended, 0);
  }
  EXPECT_EQ(ended, 1);
}

TEST_F(RegistrationTest, AssigningEndsTheOneThatWasHeld) {
  Registration registration = make();
  registration = make();
  EXPECT_EQ(ended, 1);
  EXPECT_TRUE(registration);
  registration = Registration();
  EXPECT_EQ(ended, 2);
  EXPECT_FALSE(registration);
}

TEST_F(RegistrationTest, AssigningToItselfKeepsIt) {
  Registration registration = make();
  Registration& same = registration;
  registration = std::move(same);
  EXPECT_EQ(ended, 0);
  EXPECT_TRUE(registration);
}

TEST_F(RegistrationTest, MayBeResetFromWithinItsOwnEnd) {
  Registration registration;
  registration = Registration([this, &registration] {
    ++ended;
    registration.reset();
  });
  registration.reset();
  EXPECT_EQ(ended, 1);
}

TEST_F(RegistrationTest, AnEmptyOneEndsNothing) {
  { const Registration registration; }
  EXPECT_FALSE(Registration());
  EXPECT_EQ(ended, 0);
}

} // namespace
} // namespace orbel
