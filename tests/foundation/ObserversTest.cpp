#include "foundation/Observers.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace orbel {
namespace {

TEST(ObserversTest, BlocksAreCalledInTheirOrderAsLongAsTheirRegistrationsLive) {
  Observers<const std::string&> observers;
  std::string told;
  auto first = observers.add([&](const std::string& text) { told += "1" + text; });
  const auto second = observers.add([&](const std::string& text) { told += "2" + text; });
  observers.notify("a");
  first.reset();
  observers.notify("b");
  EXPECT_EQ(told, "1a2a2b");
}

TEST(ObserversTest, ABlockThatEndsWithinACallIsCalledNoMoreAndANewOneWaits) {
  Observers<> observers;
  std::string told;
  Registration own, other, later;
  own = observers.add([&] {
    told += "own ";
    own.reset();
    other.reset();
    later = observers.add([&] { told += "later "; });
  });
  other = observers.add([&] { told += "other "; });
  const auto last = observers.add([&] { told += "last "; });
  observers.notify();
  EXPECT_EQ(told, "own last ");
  observers.notify();
  EXPECT_EQ(told, "own last last later ");
}

TEST(ObserversTest, ABlockMayEndWithinACallWithinACall) {
  Observers<int> observers;
  std::string told;
  Registration second;
  const auto first = observers.add([&](int depth) {
    told += "1";
    if (depth < 2) observers.notify(depth + 1);
    second.reset();
  });
  second = observers.add([&](int) { told += "2"; });
  const auto third = observers.add([&](int) { told += "3"; });
  observers.notify(0);
  EXPECT_EQ(told, "111333");
  observers.notify(2);
  EXPECT_EQ(told, "11133313");
}

TEST(ObserversTest, TheListMayGoWithinACallAndBeforeItsRegistrations) {
  auto observers = std::make_optional<Observers<>>();
  std::string told;
  const auto first = observers->add([&] {
    told += "1";
    observers.reset();
  });
  auto second = observers->add([&] { told += "2"; });
  observers->notify();
  EXPECT_EQ(told, "12") << "who is still registered hears of what was being told";
  second.reset();
  EXPECT_FALSE(observers);
}

TEST(ObserversTest, TheCountIsToldAfterABlockCameOrWent) {
  std::string counts;
  std::unique_ptr<Observers<>> observers;
  observers = std::make_unique<Observers<>>([&] { counts += observers->isEmpty() ? "empty " : "some "; });
  EXPECT_TRUE(observers->isEmpty());
  auto first = observers->add([] {});
  auto second = observers->add([] {});
  first.reset();
  second.reset();
  EXPECT_EQ(counts, "some some some empty ");
}

} // namespace
} // namespace orbel
