#include "foundation/Lifetime.h"

#include <gtest/gtest.h>
#include <memory>
#include <utility>

using namespace orbel;

namespace {
struct Thing {
  Lifetime lifetime;
};
} // namespace

TEST(LifetimeTest, EndsWithItsObject) {
  auto thing = std::make_unique<Thing>();
  const auto life = thing->lifetime.watch();
  EXPECT_FALSE(life.hasEnded());
  thing.reset();
  EXPECT_TRUE(life.hasEnded());
}

TEST(LifetimeTest, OfACopyIsItsOwn) {
  auto thing = std::make_unique<Thing>();
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
  const Thing copy = *thing;
  const auto lifeOfCopy = copy.lifetime.watch();
  thing.reset();
  EXPECT_FALSE(lifeOfCopy.hasEnded());
}

TEST(LifetimeTest, OfAnObjectThatIsMovedFromEndsWithThatObject) {
  auto first = std::make_unique<Thing>();
  const auto life = first->lifetime.watch();
  const Thing second = std::move(*first);
  EXPECT_FALSE(life.hasEnded());
  first.reset();
  EXPECT_TRUE(life.hasEnded());
  EXPECT_FALSE(second.lifetime.watch().hasEnded());
}
