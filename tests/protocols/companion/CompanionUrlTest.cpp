#include "protocols/companion/CompanionUrl.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace orbel {
namespace {

bool isRefused(const std::string& url) {
  return !CompanionUrl::parse(url);
}

TEST(CompanionUrlTest, TheBareSchemeStartsTheCompanionAndTheBareVerbEndsIt) {
  const auto start = CompanionUrl::parse("orbelmenu-toolkit:");
  ASSERT_TRUE(start);
  EXPECT_TRUE(std::holds_alternative<CompanionUrl::Start>(*start));
  const auto terminate = CompanionUrl::parse("orbelmenu-toolkit:terminate");
  ASSERT_TRUE(terminate);
  EXPECT_TRUE(std::holds_alternative<CompanionUrl::Terminate>(*terminate));
}

TEST(CompanionUrlTest, AProcessIsNamedByItsNumber) {
  const auto request = CompanionUrl::parse("orbelmenu-toolkit:terminate/4711");
  ASSERT_TRUE(request);
  ASSERT_TRUE(std::holds_alternative<CompanionUrl::Quit>(*request));
  EXPECT_EQ(std::get<CompanionUrl::Quit>(*request).processIdentifier, 4711);
}

TEST(CompanionUrlTest, TheLargestNumberIsAProcessAndTheNextOneIsNot) {
  EXPECT_FALSE(isRefused("orbelmenu-toolkit:terminate/2147483647"));
  EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/2147483648"));
  EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/99999999999999999999999999"));
}

TEST(CompanionUrlTest, NumbersThatNameNoSingleProcessOfTheUserAreRefused) {
  for (const std::string number : {"0", "1", "-1", "-4711", "-2147483648"}) {
    EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/" + number)) << number;
  }
}

TEST(CompanionUrlTest, AnythingAroundOrInsteadOfTheNumberIsRefused) {
  for (const std::string text :
       {"", " 12", "12 ", "12x", "+12", "0x12", "12/", "12?x=1", "12#", "1e3", "twelve"}) {
    EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/" + text)) << text;
  }
}

TEST(CompanionUrlTest, OtherVerbsAndOtherSchemesAreRefused) {
  for (const std::string url :
       {"", "orbelmenu-toolkit", "orbelmenu-toolkit:kill/12", "orbelmenu-toolkit:Terminate/12",
        "orbelmenu-toolkit:terminated", "orbelmenu-toolkit://terminate/12", "orbelmenu-toolkit:terminate12",
        "http://example.org/terminate/12", " orbelmenu-toolkit:", "xorbelmenu-toolkit:terminate/12"}) {
    EXPECT_TRUE(isRefused(url)) << url;
  }
}

TEST(CompanionUrlTest, ComposesEachRequestAsItIsRead) {
  EXPECT_EQ(CompanionUrl::compose(CompanionUrl::Start{}), "orbelmenu-toolkit:");
  EXPECT_EQ(CompanionUrl::compose(CompanionUrl::Terminate{}), "orbelmenu-toolkit:terminate");
  EXPECT_EQ(CompanionUrl::compose(CompanionUrl::Quit{4711}), "orbelmenu-toolkit:terminate/4711");
}

TEST(CompanionUrlTest, EachRefusalSaysItsCause) {
  EXPECT_EQ(CompanionUrl::parse("http:").cause(), "it is no URL of orbelmenu-toolkit");
  EXPECT_EQ(CompanionUrl::parse("orbelmenu-toolkit:kill/12").cause(),
            "the only thing to ask for is \"terminate\"");
  EXPECT_EQ(CompanionUrl::parse("orbelmenu-toolkit:terminated").cause(),
            "the only thing to ask for is \"terminate\"");
  EXPECT_EQ(CompanionUrl::parse("orbelmenu-toolkit:terminate/x").cause(),
            "it names no process by its number");
  // As the URL of a program whose process is not known.
  EXPECT_EQ(CompanionUrl::parse(CompanionUrl::compose(CompanionUrl::Quit{-1})).cause(),
            "that process is never asked to quit");
}

TEST(CompanionUrlTest, TheDesktopGivesUrlsOfTheSchemeToTheCompanion) {
  std::ifstream entry(ORBEL_COMPANION_ENTRY);
  ASSERT_TRUE(entry);
  const std::string wanted = "MimeType=x-scheme-handler/" + std::string(CompanionUrl::kScheme) + ";";
  bool found = false;
  for (std::string line; std::getline(entry, line);)
    found = found || line == wanted;
  EXPECT_TRUE(found);
}

} // namespace
} // namespace orbel
