#include "foundation/PropertyList.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

TEST(PropertyList, AnswersOnlyForItsOwnKind) {
  const PropertyList number = 7;
  ASSERT_TRUE(number.integer());
  EXPECT_EQ(*number.integer(), 7);
  EXPECT_FALSE(number.boolean());
  EXPECT_FALSE(number.real());
  EXPECT_FALSE(number.string());
  EXPECT_FALSE(number.data());
  EXPECT_FALSE(number.date());
  EXPECT_FALSE(number.list());
  EXPECT_FALSE(number.dictionary());
}

TEST(PropertyList, KeepsBooleansTextAndNumbersApart) {
  EXPECT_TRUE(PropertyList(true).boolean());
  EXPECT_TRUE(PropertyList("text").string());
  EXPECT_TRUE(PropertyList(1.0).real());
  EXPECT_NE(PropertyList(1), PropertyList(1.0));
  EXPECT_NE(PropertyList(1), PropertyList(true));
}

TEST(PropertyList, FindsTheValuesOfADictionary) {
  const PropertyList value = PropertyList::Dictionary{{"name", "Mail"}};
  ASSERT_TRUE(value.find("name"));
  EXPECT_EQ(*value.find("name"), "Mail");
  EXPECT_FALSE(value.find("class"));
}

TEST(PropertyList, FindsNothingInWhatIsNoDictionary) {
  EXPECT_FALSE(PropertyList("text").find("name"));
  EXPECT_FALSE(PropertyList(PropertyList::List{"name"}).find("name"));
}

} // namespace
} // namespace orbel
