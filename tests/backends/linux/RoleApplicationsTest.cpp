#include "backends/linux/RoleApplications.h"

#include "tests/backends/linux/InstalledEntries.h"

#include <gtest/gtest.h>

namespace orbel::linux {
namespace {

class RoleApplicationsTest : public testing::Test {
protected:
  std::string pathOf(const std::string& role) const {
    const auto entry = roles.entry(role);
    return entry ? entry->path : "none";
  }
  void waitFor(const std::string& role, const std::string& path) const {
    EXPECT_TRUE(test::iterateUntil([&] { return pathOf(role) == path; })) << role << " is " << pathOf(role);
  }

  DesktopEntryIndex index;
  InstalledEntries entries{index};
  RoleApplications roles{index};
};

TEST_F(RoleApplicationsTest, KnowTheSixNamesExactly) {
  for (const char* name : {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"}) {
    EXPECT_TRUE(RoleApplications::isRole(name)) << name;
    EXPECT_EQ(pathOf(name), "none") << name;
  }
  EXPECT_FALSE(RoleApplications::isRole("app store"));
  EXPECT_FALSE(RoleApplications::isRole(""));
  EXPECT_EQ(pathOf("Paint"), "none");
}

TEST_F(RoleApplicationsTest, AreTheUsersDefaultApplications) {
  const auto files = entries.add("files.desktop", "Name=F\nExec=/bin/sh\nMimeType=inode/directory;\n");
  const auto music = entries.add("music.desktop", "Name=M\nExec=/bin/sh\nMimeType=audio/flac;\n");
  const auto web =
      entries.add("web.desktop", "Name=W\nExec=/bin/sh\nMimeType=x-scheme-handler/https;text/html;\n");
  const auto mail = entries.add("mail.desktop", "Name=L\nExec=/bin/sh\nMimeType=x-scheme-handler/mailto;\n");
  DesktopSandbox::shared().setDefaults(
      "inode/directory=files.desktop\naudio/flac=music.desktop\n"
      "x-scheme-handler/https=web.desktop\nx-scheme-handler/mailto=mail.desktop\n");
  waitFor("Finder", files);
  waitFor("iTunes", music);
  waitFor("Safari", web);
  waitFor("Mail", mail);
}

TEST_F(RoleApplicationsTest, FollowAChangeOfTheDefault) {
  const auto first =
      entries.add("first.desktop", "Name=1\nExec=/bin/sh\nMimeType=x-scheme-handler/mailto;\n");
  const auto second =
      entries.add("second.desktop", "Name=2\nExec=/bin/sh\nMimeType=x-scheme-handler/mailto;\n");
  DesktopSandbox::shared().setDefaults("x-scheme-handler/mailto=first.desktop\n");
  waitFor("Mail", first);
  DesktopSandbox::shared().setDefaults("x-scheme-handler/mailto=second.desktop\n");
  waitFor("Mail", second);
}

TEST_F(RoleApplicationsTest, AreCandidatesInTheirOrderWhereTheDesktopKnowsNoDefault) {
  const auto later = entries.add("synaptic.desktop", "Name=S\nExec=/bin/sh\n");
  waitFor("App Store", later);
  const auto earlier = entries.add("org.gnome.Software.desktop", "Name=G\nExec=/bin/sh\n");
  waitFor("App Store", earlier);
  const auto finder = entries.add("xfce4-appfinder.desktop", "Name=A\nExec=/bin/sh\n");
  waitFor("Launchpad", finder);
}

TEST_F(RoleApplicationsTest, AreOfTheRightCategoryWhenNothingElseIsKnown) {
  entries.add("a.desktop", "Name=A\nExec=/bin/sh\nCategories=Network;WebBrowser;\nNoDisplay=true\n");
  const auto shown = entries.add("b.desktop", "Name=B\nExec=/bin/sh\nCategories=Network;WebBrowser;\n");
  waitFor("Safari", shown);
  EXPECT_EQ(pathOf("Launchpad"), "none");
}

} // namespace
} // namespace orbel::linux
