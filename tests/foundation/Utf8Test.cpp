#include "foundation/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel {
namespace {

const std::string kReplacement = "\xEF\xBF\xBD";

TEST(Utf8, LeavesWellFormedTextAsItIs) {
  for (const std::string text : {"", "plain", "Caf\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                 "\xF4\x8F\xBF\xBF", "\xED\x9F\xBF", "\xEE\x80\x80", "\x7F", "a\tb\nc\r"}) {
    EXPECT_EQ(Utf8::repaired(text), text);
    EXPECT_EQ(Utf8::repairedForXml(text), text);
  }
}

TEST(Utf8, ReplacesEachByteOfAMalformedCharacter) {
  EXPECT_EQ(Utf8::repaired("a\xFF"
                           "b"),
            "a" + kReplacement + "b");                                // no lead byte
  EXPECT_EQ(Utf8::repaired("\x80"), kReplacement);                    // continuation alone
  EXPECT_EQ(Utf8::repaired("\xC3("), kReplacement + "(");             // continuation missing
  EXPECT_EQ(Utf8::repaired("\xE2\x82"), kReplacement + kReplacement); // cut off
  EXPECT_EQ(Utf8::repaired("\xC0\xAF"), kReplacement + kReplacement); // overlong in two bytes
  EXPECT_EQ(Utf8::repaired("\xE0\x80\xAF"), kReplacement + kReplacement + kReplacement); // overlong in three
  // Half of a surrogate pair
  EXPECT_EQ(Utf8::repaired("\xED\xA0\x80"), kReplacement + kReplacement + kReplacement);
  EXPECT_EQ(Utf8::repaired("\xF4\x90\x80\x80").size(), 4 * kReplacement.size()); // beyond U+10FFFF
}

TEST(Utf8, ReplacesWhatXmlForbidsOnlyForXml) {
  const std::string text("a\0b\x1B"
                         "c\xEF\xBF\xBE",
                         8);
  EXPECT_EQ(Utf8::repaired(text), text);
  EXPECT_EQ(Utf8::repairedForXml(text), "a" + kReplacement + "b" + kReplacement + "c" + kReplacement);
}

} // namespace
} // namespace orbel
