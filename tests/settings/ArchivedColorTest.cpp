#include "settings/ArchivedColor.h"

#include "foundation/PropertyListCoder.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <variant>
#include <vector>

namespace orbel {
namespace {

using Format = PropertyListCoder::Format;

class ArchivedColorTest : public testing::Test {
protected:
  static PropertyList::Dictionary components() {
    return {{"red", 0.25}, {"green", 0.5}, {"blue", 0.75}, {"alpha", 1.0}};
  }
  static std::optional<Color> unarchived(const PropertyList& archive, Format format = Format::binary) {
    return ArchivedColor::unarchive(PropertyListCoder::write(archive, format));
  }

  FakePlatform m_platform;
};

TEST_F(ArchivedColorTest, IsABinaryDictionaryOfFourDoubles) {
  const PropertyList::Data data = ArchivedColor::archive({0.25, 0.5, 0.75, 1});
  ASSERT_GE(data.size(), 8u);
  EXPECT_EQ(static_cast<char>(data[0]), 'b');
  const auto read = PropertyListCoder::read(data);
  ASSERT_TRUE(std::holds_alternative<PropertyList>(read));
  EXPECT_EQ(std::get<PropertyList>(read), PropertyList(components()));
}

TEST_F(ArchivedColorTest, EveryColourComesBackExactly) {
  for (const Color& color : {Color{1.0 / 3, 0.1, 0.7, 0.123456789012345678}, Color::white(1), Color::clear(),
                             Color{std::numeric_limits<double>::denorm_min(), 1 - 1e-16, 0, 1}}) {
    EXPECT_EQ(ArchivedColor::unarchive(ArchivedColor::archive(color)), color);
  }
}

TEST_F(ArchivedColorTest, WholeNumbersAndTheXmlFormAreReadToo) {
  EXPECT_EQ(unarchived(PropertyList::Dictionary{{"red", 1}, {"green", 0}, {"blue", 0.5}, {"alpha", 1}},
                       Format::xml),
            (Color{1, 0, 0.5, 1}));
}

TEST_F(ArchivedColorTest, WhatIsNoColourIsRefusedWithALogLine) {
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
    EXPECT_EQ(unarchived(refused[index]), std::nullopt) << index;
    EXPECT_EQ(m_platform.logged.size(), index + 1) << index;
  }
}

TEST_F(ArchivedColorTest, BytesThatAreNoPropertyListAreRefusedWithALogLine) {
  EXPECT_EQ(ArchivedColor::unarchive({}), std::nullopt);
  EXPECT_EQ(ArchivedColor::unarchive(PropertyList::Data(100, std::byte{0x5A})), std::nullopt);
  PropertyList::Data truncated = ArchivedColor::archive(Color::gray());
  truncated.resize(truncated.size() / 2);
  EXPECT_EQ(ArchivedColor::unarchive(truncated), std::nullopt);
  EXPECT_EQ(m_platform.logged.size(), 3u);
}

} // namespace
} // namespace orbel
