#include "settings/ArchivedColor.h"

#include "foundation/PropertyListCoder.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace orbel {
namespace {

using Format = PropertyListCoder::Format;

class ArchivedColorTest : public testing::Test {
protected:
  static PropertyList::Dictionary components() {
    return {{"red", 0.25}, {"green", 0.5}, {"blue", 0.75}, {"alpha", 1.0}};
  }
  static Result<Color> unarchived(const PropertyList& archive, Format format = Format::binary) {
    return ArchivedColor::unarchive(PropertyListCoder::write(archive, format));
  }
};

TEST_F(ArchivedColorTest, IsABinaryDictionaryOfFourDoubles) {
  const PropertyList::Data data = ArchivedColor::archive({0.25, 0.5, 0.75, 1});
  ASSERT_GE(data.size(), 8u);
  EXPECT_EQ(static_cast<char>(data[0]), 'b');
  const auto read = PropertyListCoder::read(data);
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, PropertyList(components()));
}

TEST_F(ArchivedColorTest, EveryColourComesBackExactly) {
  for (const Color& color : {Color{1.0 / 3, 0.1, 0.7, 0.123456789012345678}, Color::white(1), Color::clear(),
                             Color{std::numeric_limits<double>::denorm_min(), 1 - 1e-16, 0, 1}}) {
    const auto read = ArchivedColor::unarchive(ArchivedColor::archive(color));
    ASSERT_TRUE(read) << read.cause();
    EXPECT_EQ(*read, color);
  }
}

TEST_F(ArchivedColorTest, WholeNumbersAndTheXmlFormAreReadToo) {
  const auto read = unarchived(
      PropertyList::Dictionary{{"red", 1}, {"green", 0}, {"blue", 0.5}, {"alpha", 1}}, Format::xml);
  ASSERT_TRUE(read) << read.cause();
  EXPECT_EQ(*read, (Color{1, 0, 0.5, 1}));
}

TEST_F(ArchivedColorTest, WhatIsNoColourIsRefusedWithTheCause) {
  std::vector<PropertyList> refused = {PropertyList::List{0.1, 0.2, 0.3, 1.0}, "white",
                                       PropertyList::Dictionary{}};
  for (const char* missing : {"red", "green", "blue", "alpha"}) {
    PropertyList::Dictionary archive = components();
    archive.erase(missing);
    refused.emplace_back(archive);
    for (const PropertyList& bad :
         {PropertyList("0.5"), PropertyList(true), PropertyList(-0.001), PropertyList(1.001), PropertyList(2),
          PropertyList(std::numeric_limits<std::int64_t>::max()),
          PropertyList(std::numeric_limits<double>::infinity()),
          PropertyList(std::numeric_limits<double>::quiet_NaN())}) {
      archive.insert_or_assign(missing, bad);
      refused.emplace_back(archive);
    }
  }
  for (std::size_t index = 0; index < refused.size(); ++index) {
    EXPECT_EQ(unarchived(refused[index]).cause(),
              "a stored colour cannot be read: it has not four components between 0 and 1")
        << index;
  }
}

TEST_F(ArchivedColorTest, BytesThatAreNoPropertyListAreRefusedWithTheCause) {
  PropertyList::Data truncated = ArchivedColor::archive(Color::gray());
  truncated.resize(truncated.size() / 2);
  for (const auto& bytes : {PropertyList::Data(), PropertyList::Data(100, std::byte{0x5A}), truncated})
    EXPECT_TRUE(ArchivedColor::unarchive(bytes).cause().starts_with("a stored colour cannot be read: "));
}

} // namespace
} // namespace orbel
