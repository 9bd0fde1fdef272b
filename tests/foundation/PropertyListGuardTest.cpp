#include "foundation/PropertyListGuard.h"

#include "foundation/PropertyListCoder.h"
#include "tests/foundation/ListBytes.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

using Builder = BinaryListBuilder;

std::string objection(const PropertyList::Data& bytes) {
  return PropertyListGuard::objection(bytes).value_or("none");
}
std::string objectionToXml(std::string_view value) {
  return objection(xmlList(value));
}

// Lists within one another, each holding the next one once or twice, and a text at the bottom.
PropertyList::Data binaryTower(std::uint16_t height, bool doubled) {
  Builder builder;
  for (std::uint16_t level = 0; level < height; ++level) {
    const auto next = static_cast<std::uint16_t>(level + 1);
    builder.add(doubled ? Builder::list({next, next}) : Builder::list({next}));
  }
  return builder.add(Builder::ascii("bottom")).bytes();
}

PropertyList::Data xmlTower(std::size_t height) {
  return xmlList(repeated("<array>", height) + "<true/>" + repeated("</array>", height));
}

TEST(PropertyListGuard, RefusesReferencesThatDoubleAtEachLevel) {
  const auto bytes = binaryTower(30, true); // stands for more than a thousand million values
  EXPECT_LT(bytes.size(), 512u);
  EXPECT_EQ(objection(bytes), "its references stand for more than 1,000,000 values");
  EXPECT_EQ(objection(binaryTower(18, true)), "none"); // 2 to the power of 19 of them
}

TEST(PropertyListGuard, RefusesAHostileListOfABinaryFormWithSmallFields) {
  // 170 bytes: 33 lists of two references of one byte to the next, and the offsets of one byte.
  std::string body = "bplist00";
  std::string offsets;
  for (int level = 0; level < 33; ++level) {
    offsets += static_cast<char>(body.size());
    body += std::string("\xA2") + std::string(2, static_cast<char>(level + 1));
  }
  offsets += static_cast<char>(body.size());
  body += '\x09';
  const auto table = static_cast<char>(body.size());
  body += offsets + std::string(6, '\0') + std::string("\x01\x01") + std::string(7, '\0') + '\x22' +
          std::string(15, '\0') + table;
  EXPECT_LT(body.size(), 180u);
  EXPECT_EQ(objection(bytesOfText(body)), "its references stand for more than 1,000,000 values");
}

TEST(PropertyListGuard, RefusesAListThatHoldsItself) {
  EXPECT_EQ(objection(Builder().add(Builder::list({0})).bytes()), "a list or dictionary holds itself");
  Builder ring;
  ring.add(Builder::list({1})).add(Builder::list({2})).add(Builder::list({0}));
  EXPECT_EQ(objection(ring.bytes()), "a list or dictionary holds itself");
}

TEST(PropertyListGuard, AcceptsAnObjectThatIsReferredToTwice) {
  Builder builder;
  builder.add(Builder::list({1, 2, 1})).add(Builder::list({2})).add(Builder::ascii("shared"));
  EXPECT_EQ(objection(builder.bytes()), "none");
}

TEST(PropertyListGuard, RefusesATextThatReferencesMultiply) {
  // One text of 1 MiB and sixty-five references to it.
  const std::string text = std::string("\x5F\x12\x00\x10\x00\x00", 6) + std::string(1 << 20, 'x');
  const auto listOf = [](std::uint8_t count) {
    std::string object = {'\xAF', '\x10', static_cast<char>(count)};
    for (int index = 0; index < count; ++index)
      object += Builder::reference(1);
    return object;
  };
  EXPECT_EQ(objection(Builder().add(listOf(64)).add(text).bytes()), "none");
  EXPECT_EQ(objection(Builder().add(listOf(65)).add(text).bytes()),
            "its references stand for more than 64 MiB");
}

TEST(PropertyListGuard, AcceptsNestingOf512AndRefuses513) {
  EXPECT_EQ(objection(binaryTower(512, false)), "none");
  EXPECT_EQ(objection(binaryTower(513, false)), "it is nested more than 512 deep");
  EXPECT_EQ(objection(xmlTower(512)), "none");
  EXPECT_EQ(objection(xmlTower(513)), "it is nested more than 512 deep");
}

TEST(PropertyListGuard, RefusesXmlAMillionLevelsDeep) {
  EXPECT_EQ(objection(xmlTower(1'000'000)), "it is nested more than 512 deep");
  EXPECT_EQ(objection(bytesOfText(repeated("<array>", 1'000'000))), "it is nested more than 512 deep");
}

TEST(PropertyListGuard, AcceptsAMillionValuesAndRefusesOneMore) {
  const std::string values = repeated("<true/>", 999'999);
  EXPECT_EQ(objectionToXml("<array>" + values + "</array>"), "none");
  EXPECT_EQ(objectionToXml("<array>" + values + "<true/></array>"), "it has more than 1,000,000 values");
}

TEST(PropertyListGuard, RefusesMoreThan64MiB) {
  PropertyList::Data bytes = xmlList("<string>a</string>");
  bytes.resize(PropertyListGuard::kMaximumByteCount, std::byte{' '});
  EXPECT_EQ(objection(bytes), "none");
  bytes.push_back(std::byte{' '});
  EXPECT_EQ(objection(bytes), "it is larger than 64 MiB");
}

TEST(PropertyListGuard, RefusesReferencesThatLeadNowhere) {
  EXPECT_EQ(objection(Builder().add(Builder::list({7})).bytes()), "a reference leads to no object");
}

TEST(PropertyListGuard, RefusesObjectsThatReachBeyondTheBytes) {
  const std::string cause = "an object lies outside of it or is of an unknown kind";
  EXPECT_EQ(objection(Builder().add("\x4F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF").bytes()), cause); // data
  EXPECT_EQ(objection(Builder().add(std::string("\x5F\x12\x00\x01", 4)).bytes()), cause); // its count cut off
  // Dictionary
  EXPECT_EQ(objection(Builder().add("\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF").bytes()), cause);
  EXPECT_EQ(objection(Builder().add("\xAF\x52zz").bytes()), cause); // a count of text
}

TEST(PropertyListGuard, RefusesKindsThatNoPropertyListHas) {
  const std::string cause = "an object lies outside of it or is of an unknown kind";
  for (const int marker : {0x00, 0x0F, 0x15, 0x21, 0x32, 0x70, 0x88, 0xB0, 0xC0, 0xE0, 0xF0}) {
    EXPECT_EQ(objection(Builder().add(static_cast<char>(marker) + std::string(40, '\0')).bytes()), cause)
        << marker;
  }
}

TEST(PropertyListGuard, RefusesADictionaryWhoseKeyIsNoText) {
  Builder builder;
  builder.add("\xD1" + Builder::reference(1) + Builder::reference(1)).add("\x09");
  EXPECT_EQ(objection(builder.bytes()), "a key of a dictionary is not text");
}

TEST(PropertyListGuard, RefusesATrailerThatLies) {
  const auto good = Builder().add(Builder::ascii("x")).bytes();
  EXPECT_EQ(objection(good), "none");
  // Sizes of fields, number of objects, top object, place of the table: each beyond all bounds.
  for (const std::size_t fromEnd : {26u, 25u, 24u, 16u, 8u}) {
    auto bytes = good;
    bytes[bytes.size() - fromEnd] = std::byte{0xFF};
    EXPECT_EQ(objection(bytes), "it is cut off or its table of objects lies outside of it") << fromEnd;
  }
  for (const std::size_t fromEnd : {26u, 25u, 17u}) { // a field of no size, no object at all
    auto bytes = good;
    bytes[bytes.size() - fromEnd] = std::byte{0};
    EXPECT_EQ(objection(bytes), "it is cut off or its table of objects lies outside of it") << fromEnd;
  }
}

TEST(PropertyListGuard, RefusesTagsThatDoNotMatch) {
  EXPECT_EQ(objectionToXml("<array><dict></array></dict>"), "</array> in it closes nothing");
  EXPECT_EQ(objectionToXml("<string>a<array></array></string>"), "a text in it holds <array>");
  EXPECT_EQ(objectionToXml("<array><plist></plist></array>"), "a value in it holds <plist>");
  EXPECT_EQ(objectionToXml("<array><>"), "a tag in it is malformed");
  EXPECT_EQ(objection(bytesOfText("<plist><array")), "it is cut off inside a tag");
}

TEST(PropertyListGuard, RefusesASecondValueBesideTheFirst) {
  EXPECT_EQ(objectionToXml("<array/><array></array>"), "it holds more than one value");
  EXPECT_EQ(objection(bytesOfText("<plist><true/></plist><array/>")), "it holds more than one value");
  EXPECT_EQ(objection(bytesOfText("<dict></dict><dict></dict>")), "it holds more than one value");
}

TEST(PropertyListGuard, RefusesWhatCouldHideTagsFromTheCount) {
  EXPECT_EQ(objectionToXml("<array><!--> <array/> --></array>"), "a comment in it is malformed");
  EXPECT_EQ(objectionToXml("<string><!-- </string> --></string>"), "a tag in it is hidden in a comment");
  EXPECT_EQ(objectionToXml("<array x=\">\"></array>"), "a tag in it is malformed");
  EXPECT_EQ(objectionToXml("<array><![CDATA[ > ]]></array>"),
            "character data in it stands outside of a text");
  EXPECT_EQ(objectionToXml("<!ELEMENT x><true/>"), "a declaration in it is unknown");
  EXPECT_EQ(objection(bytesOfText("<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><true/></plist>")),
            "its document type has declarations");
}

TEST(PropertyListGuard, AcceptsCommentsWithTagsBetweenValues) {
  EXPECT_EQ(objectionToXml("<array><!-- <array> --><true/></array>"), "none");
}

TEST(PropertyListGuard, RefusesXmlThatEndsEarly) {
  EXPECT_EQ(objection(bytesOfText("<plist><!-- x")), "it is cut off inside a comment");
  EXPECT_EQ(objection(bytesOfText("<?xml")), "it is cut off inside a processing instruction");
  EXPECT_EQ(objection(bytesOfText("<!DOCTYPE plist")), "it is cut off inside the document type");
  EXPECT_EQ(objection(bytesOfText("<plist><string><![CDATA[a]]")), "it is cut off inside character data");
}

} // namespace
} // namespace orbel
