#include "foundation/PropertyListCoder.h"

#include "tests/foundation/ListBytes.h"
#include "tests/foundation/RandomPropertyList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace orbel {
namespace {

using Format = PropertyListCoder::Format;
using Dictionary = PropertyList::Dictionary;
using List = PropertyList::List;

PropertyList readValue(const PropertyList::Data& bytes) {
  const auto result = PropertyListCoder::read(bytes);
  if (!result) {
    ADD_FAILURE() << "not read: " << result.cause();
    return "not read";
  }
  return *result;
}

std::string causeOfFailure(const PropertyList::Data& bytes) {
  return PropertyListCoder::read(bytes).cause();
}

PropertyList roundTrip(const PropertyList& value, Format format) {
  return readValue(PropertyListCoder::write(value, format));
}

class BothForms : public testing::TestWithParam<Format> {};
std::string nameOfForm(const testing::TestParamInfo<Format>& form) {
  return form.param == Format::xml ? "xml" : "binary";
}
INSTANTIATE_TEST_SUITE_P(PropertyListCoder, BothForms, testing::Values(Format::xml, Format::binary),
                         nameOfForm);

TEST_P(BothForms, KeepsEveryKindOfValue) {
  const PropertyList value = Dictionary{{"boolean", true},
                                        {"other", false},
                                        {"integer", 42},
                                        {"real", 0.1},
                                        {"text", "Caf\xC3\xA9 \xF0\x9F\x98\x80 <&> \"'"},
                                        {"data", PropertyList::Data{std::byte{0}, std::byte{255}}},
                                        {"date", PropertyList::Date{730902896}},
                                        {"list", List{"a", List{}, Dictionary{}}},
                                        {"", ""},
                                        {"no data", PropertyList::Data{}}};
  EXPECT_EQ(roundTrip(value, GetParam()), value);
}

TEST_P(BothForms, KeepsTheLimitsOfIntegers) {
  for (const std::int64_t number :
       {std::int64_t{0}, std::int64_t{-1}, std::int64_t{-128}, std::int64_t{255}, std::int64_t{65536},
        std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
    EXPECT_EQ(roundTrip(List{number}, GetParam()), List{number});
  }
}

TEST_P(BothForms, KeepsDoublesToTheLastBit) {
  for (const double number : {0.0, 1.0, 1.0 / 3, -2.5e-310, 1e300, 123456789.12345679, 1e15, -1e-7}) {
    EXPECT_EQ(roundTrip(List{number}, GetParam()), List{number}) << number;
  }
}

TEST_P(BothForms, KeepsAScalarThatStandsAlone) {
  for (const PropertyList& value : {PropertyList("text"), PropertyList(-5), PropertyList(2.5),
                                    PropertyList(true), PropertyList(PropertyList::Data{std::byte{7}})}) {
    EXPECT_EQ(roundTrip(value, GetParam()), value);
  }
}

TEST_P(BothForms, KeepsAUid) {
  const PropertyList value = Dictionary{{"root", Dictionary{{"CF$UID", 300}}}};
  EXPECT_EQ(roundTrip(value, GetParam()), value);
}

TEST_P(BothForms, KeepsADictionaryThatOnlyResemblesAUid) {
  const PropertyList value = List{Dictionary{{"CF$UID", -1}}, Dictionary{{"CF$UID", "text"}},
                                  Dictionary{{"CF$UID", 1}, {"more", 2}}};
  EXPECT_EQ(roundTrip(value, GetParam()), value);
}

TEST_P(BothForms, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(roundTrip(List{"a\xFFz", "\xC3"}, GetParam()), (List{"a\xEF\xBF\xBDz", "\xEF\xBF\xBD"}));
}

TEST_P(BothForms, ReplacesANulSoThatNothingBehindItIsLost) {
  EXPECT_EQ(roundTrip(List{std::string("a\0b", 3)}, GetParam()), List{"a\xEF\xBF\xBD"
                                                                      "b"});
}

TEST_P(BothForms, CutsDatesBeyondTheLibrarysRange) {
  const PropertyList read =
      roundTrip(List{PropertyList::Date{1e300}, PropertyList::Date{-1e300}, PropertyList::Date{std::nan("")}},
                GetParam());
  EXPECT_EQ(read,
            (List{PropertyList::Date{2147483646}, PropertyList::Date{-2147483647}, PropertyList::Date{0}}));
}

TEST_P(BothForms, KeepsListsAsDeepAsMayBeRead) {
  PropertyList value = "bottom";
  for (int depth = 0; depth < 512; ++depth)
    value = List{std::move(value)};
  EXPECT_EQ(roundTrip(value, GetParam()), value);
}

TEST_P(BothForms, KeepsWhateverIsMadeByChance) {
  RandomPropertyList random(20240229);
  for (int count = 0; count < 500; ++count) {
    const PropertyList value = random.dictionary(4);
    ASSERT_EQ(roundTrip(value, GetParam()), value) << "list number " << count;
  }
}

// Whatever the damage, reading ends with a value that can be written again or with a cause.
TEST_P(BothForms, SurvivesDamageToTheBytes) {
  RandomPropertyList random(77);
  for (int count = 0; count < 4000; ++count) {
    PropertyList::Data bytes = PropertyListCoder::write(random.dictionary(3), GetParam());
    for (std::size_t damages = 1 + random.below(4); damages > 0; --damages) {
      bytes[random.below(bytes.size())] = static_cast<std::byte>(random.below(256));
    }
    if (random.below(4) == 0) bytes.resize(random.below(bytes.size()));
    const auto result = PropertyListCoder::read(bytes);
    if (!result) {
      ASSERT_FALSE(result.cause().empty());
    } else {
      const auto again = PropertyListCoder::write(*result, GetParam());
      ASSERT_TRUE(PropertyListCoder::read(again));
    }
  }
}

TEST(PropertyListCoder, KeepsFractionsOfDatesInTheBinaryFormAlone) {
  for (const double seconds : {5.5, -5.5, -0.25, 730902896.125}) {
    const List value = {PropertyList::Date{seconds}};
    EXPECT_EQ(roundTrip(value, Format::binary), value);
    EXPECT_EQ(roundTrip(value, Format::xml), List{PropertyList::Date{std::trunc(seconds)}});
  }
}

TEST(PropertyListCoder, KeepsControlCharactersInTheBinaryFormAndReplacesThemInXml) {
  const List value = {"a\x01\x1B"
                      "b\tc\nd"};
  EXPECT_EQ(roundTrip(value, Format::binary), value);
  EXPECT_EQ(roundTrip(value, Format::xml), List{"a\xEF\xBF\xBD\xEF\xBF\xBD"
                                                "b\tc\nd"});
}

TEST(PropertyListCoder, ReadsATextUpToANulInside) {
  BinaryListBuilder builder;
  builder.add(BinaryListBuilder::list({1, 2})).add(BinaryListBuilder::ascii(std::string_view("a\0b", 3)));
  builder.add(BinaryListBuilder::ascii("next"));
  EXPECT_EQ(readValue(builder.bytes()), (List{"a", "next"}));
}

TEST(PropertyListCoder, ReadsIntegersBeyondSixtyThreeBitsAsDoubles) {
  EXPECT_EQ(readValue(xmlList("<array><integer>18446744073709551615</integer><integer>-1</integer></array>")),
            (List{18446744073709551615.0, -1}));
  BinaryListBuilder builder;
  builder.add(BinaryListBuilder::list({1, 2}))
      .add("\x14" + std::string(8, '\0') + "\x80" + std::string(7, '\0'))
      .add("\x13\x80" + std::string(7, '\0'));
  EXPECT_EQ(readValue(builder.bytes()),
            (List{9223372036854775808.0, std::numeric_limits<std::int64_t>::min()}));
}

TEST(PropertyListCoder, ReadsEntitiesCharacterDataAndComments) {
  EXPECT_EQ(readValue(xmlList("<!-- a --><array><string>&#233;&#x1F600;&amp;&lt;</string>"
                              "<string><![CDATA[<b>]]></string></array>")),
            (List{"\xC3\xA9\xF0\x9F\x98\x80&<", "<b>"}));
}

TEST(PropertyListCoder, ReadsXmlBehindAByteOrderMark) {
  auto bytes = bytesOfText("\xEF\xBB\xBF");
  const auto list = xmlList("<string>x</string>");
  bytes.insert(bytes.end(), list.begin(), list.end());
  EXPECT_EQ(readValue(bytes), "x");
}

TEST(PropertyListCoder, ReadsWhatPythonsPlistlibWrote) {
  // plistlib.dumps(..., fmt=FMT_BINARY); it writes equal values once and refers to them twice.
  const auto bytes = bytesOfHex("62706c6973743030db0102030405060708090a0b0c0d0e0f101115161718195e476c6f62616c"
                                "53686f72746375745561736369695362"
                                "696755636f756e7455656d707479546c697374546e616d65536f6666526f6e55726174696f54"
                                "7768656e430001ff554f7262656c1300"
                                "0001000000000013fffffffffffffffd50a31213145161a0d06700430061006600e90020d83d"
                                "de000809233fb999999999999a3341c5"
                                "c858b8000000081f2e34383e44494e52555b60646a737c7d818384859495969f000000000000"
                                "0101000000000000001a000000000000"
                                "000000000000000000a8");
  EXPECT_EQ(readValue(bytes),
            (Dictionary{{"GlobalShortcut", PropertyList::Data{std::byte{0}, std::byte{1}, std::byte{255}}},
                        {"ascii", "Orbel"},
                        {"big", std::int64_t{1} << 40},
                        {"count", -3},
                        {"empty", ""},
                        {"list", List{"a", List{}, Dictionary{}}},
                        {"name", "Caf\xC3\xA9 \xF0\x9F\x98\x80"},
                        {"off", false},
                        {"on", true},
                        {"ratio", 0.1},
                        {"when", PropertyList::Date{730902896}}}));
}

// Python's plistlib was seen to read exactly these bytes as the same values.
TEST(PropertyListCoder, WritesWhatPythonsPlistlibReads) {
  const PropertyList value = Dictionary{{"count", -3},
                                        {"data", PropertyList::Data{std::byte{0}, std::byte{255}}},
                                        {"list", List{"a", List{}, Dictionary{}}},
                                        {"name", "Caf\xC3\xA9 \xF0\x9F\x98\x80 <&>"},
                                        {"on", true},
                                        {"ratio", 0.1},
                                        {"uid", Dictionary{{"CF$UID", 7}}},
                                        {"when", PropertyList::Date{730902896.5}}};
  EXPECT_EQ(
      PropertyListCoder::write(value, Format::binary),
      bytesOfHex(
          "62706c6973743030d80103050a0c0e10120204060b0d0f111355636f756e7413fffffffffffffffd54646174614200"
          "ff546c697374a30708095161a0d0546e616d656b00430061006600e90020d83dde000020003c0026003e526f6e0955"
          "726174696f233fb999999999999a537569648007547768656e3341c5c858b840000008191f282d3035393b3c3d4259"
          "5c5d636c7072770000000000000101000000000000001400000000000000000000000000000080"));
  EXPECT_EQ(PropertyListCoder::write("just text", Format::binary),
            bytesOfHex(
                "62706c6973743030a101596a7573742074657874080a000000000000010100000000000000020000000000000001"
                "0000000000000014"));
}

TEST(PropertyListCoder, NamesACauseForEachKindOfBadBytes) {
  EXPECT_EQ(causeOfFailure({}), "there is nothing in it");
  EXPECT_EQ(causeOfFailure(bytesOfText("hello")), "it is no property list");
  EXPECT_EQ(causeOfFailure(bytesOfText("   \n")), "it is no property list");
  EXPECT_EQ(causeOfFailure(bytesOfText("<?xml version=\"1.0\"?>")), "it is no property list");
  EXPECT_EQ(causeOfFailure(bytesOfText("bplist00")),
            "it is cut off or its table of objects lies outside of it");
  EXPECT_EQ(causeOfFailure(bytesOfText("<plist><array><string>a</string>")), "it is cut off inside <array>");
  EXPECT_EQ(causeOfFailure(xmlList("<string>&nothing;</string>")), "it is no well-formed property list");
  EXPECT_EQ(causeOfFailure(xmlList("<blob>1</blob>")), "it is no well-formed property list");
}

TEST(PropertyListCoder, RefusesEveryTruncationOfABinaryList) {
  const auto whole = PropertyListCoder::write(Dictionary{{"items", List{"one", 2, 3.0}}}, Format::binary);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_NE(causeOfFailure({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}), "")
        << length;
  }
}

TEST(PropertyListCoder, RefusesEveryTruncationOfAnXmlListBeforeItsEnd) {
  const auto whole = PropertyListCoder::write(Dictionary{{"items", List{"one", 2, 3.0}}}, Format::xml);
  const std::size_t end = whole.size() - std::string_view("/plist>\n").size();
  for (std::size_t length = 0; length <= end; ++length) {
    EXPECT_NE(causeOfFailure({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}), "")
        << length;
  }
}

} // namespace
} // namespace orbel
