#include "backends/linux/DesktopEntry.h"

#include "tests/backends/linux/DesktopSandbox.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace orbel::linux {
namespace {

class DesktopEntryTest : public testing::Test {
protected:
  Result<DesktopEntry> read(const std::string& lines, const std::string& head = "Type=Application\n") {
    DesktopSandbox::write(path, "[Desktop Entry]\n" + head + lines);
    return DesktopEntry::read(path);
  }
  DesktopEntry entry(const std::string& lines) {
    const auto result = read(lines);
    EXPECT_TRUE(result) << result.cause();
    return result ? *result : DesktopEntry();
  }

  const std::string folder = DesktopSandbox::shared().makeFolder();
  const std::string path = folder + "/org.example.Paint.desktop";
};

TEST_F(DesktopEntryTest, ReadsWhatNamesDrawsAndMatchesTheProgram) {
  const auto paint = entry("Name=Paint\nName[de]=Malen\nIcon=org.example.Paint\nExec=/bin/sh %U\n"
                           "StartupWMClass=PaintWindow\nCategories=Graphics;2DGraphics;\n");
  EXPECT_EQ(paint.identifier, "org.example.Paint.desktop");
  EXPECT_EQ(paint.path, path);
  EXPECT_EQ(paint.name, "Malen");
  EXPECT_EQ(paint.icon, "org.example.Paint");
  EXPECT_EQ(paint.startupWindowClass, "PaintWindow");
  EXPECT_EQ(paint.categories, (std::vector<std::string>{"Graphics", "2DGraphics"}));
  EXPECT_FALSE(paint.hasOwnArguments);
  EXPECT_TRUE(paint.isShown);
  EXPECT_TRUE(paint.checkLaunch());
}

TEST_F(DesktopEntryTest, FollowsLinksToTheProgramAndLooksThroughEnv) {
  const std::string real = DesktopSandbox::shared().installProgram("real-paint", "");
  ASSERT_EQ(::symlink(real.c_str(), (folder + "/paint").c_str()), 0);
  EXPECT_EQ(entry("Name=P\nExec=" + folder + "/paint %f\n").executable, real);
  EXPECT_EQ(entry("Name=P\nExec=env LANG=C MODE=1 real-paint %f\n").executable, real);
  EXPECT_EQ(entry("Name=P\nExec=\"" + folder + "/paint\" -- %f\n").executable, real);
}

TEST_F(DesktopEntryTest, LooksThroughTheOptionsOfEnv) {
  const std::string real = DesktopSandbox::shared().installProgram("real-paint", "");
  for (const std::string options : {"-i", "-", "-u LANG", "-uLANG", "--unset=LANG", "--unset LANG -v",
                                    "--ignore-environment A=1", "-iu LANG -C /tmp", "--", "-S -i"}) {
    const auto found = entry("Name=P\nExec=env " + options + " real-paint %f\n");
    EXPECT_EQ(found.executable, real) << options;
    EXPECT_EQ(found.program, "real-paint") << options;
    EXPECT_TRUE(found.checkLaunch()) << options;
    EXPECT_FALSE(found.hasOwnArguments) << options;
  }
  EXPECT_EQ(entry("Name=P\nExec=env -u LANG\n").checkLaunch().cause(), path + " names no program to start");
  EXPECT_EQ(entry("Name=P\nExec=env -i no-such-program-here\n").checkLaunch().cause(),
            "the program no-such-program-here of " + path + " is not installed or may not be executed");
}

TEST_F(DesktopEntryTest, LooksForAProgramWithARelativePathInTheFolderThatItIsStartedIn) {
  const std::string real = DesktopSandbox::shared().installProgram("real-paint", "");
  ASSERT_EQ(::symlink(real.c_str(), (folder + "/start").c_str()), 0);
  EXPECT_EQ(entry("Name=P\nPath=" + folder + "\nExec=./start %f\n").executable, real);
  EXPECT_EQ(entry("Name=P\nPath=" + folder + "\nExec=env A=1 ./start\n").executable, real);
  EXPECT_EQ(entry("Name=P\nExec=env -C " + folder + " ./start\n").executable, real);
  const std::string name = folder.substr(folder.rfind('/') + 1);
  const std::string above = folder.substr(0, folder.rfind('/'));
  EXPECT_EQ(entry("Name=P\nPath=" + above + "\nExec=env --chdir=" + name + " ./start\n").executable, real);
  EXPECT_EQ(entry("Name=P\nPath=/tmp\nExec=" + folder + "/start\n").executable, real);
  EXPECT_EQ(entry("Name=P\nPath=" + folder + "\nExec=real-paint\n").executable, real);
  EXPECT_EQ(entry("Name=P\nPath=" + folder + "\nExec=./missing\n").checkLaunch().cause(),
            "the program " + folder + "/./missing of " + path + " is not installed or may not be executed");
}

TEST_F(DesktopEntryTest, TellsArgumentsOfItsOwnFromTheFilesToOpen) {
  EXPECT_TRUE(entry("Name=P\nExec=/bin/sh --writer %U\n").hasOwnArguments);
  EXPECT_FALSE(entry("Name=P\nExec=/bin/sh -- %F\n").hasOwnArguments);
}

TEST_F(DesktopEntryTest, TakesTheFilesNameWhereThereIsNoName) {
  EXPECT_EQ(entry("Exec=/bin/sh\n").name, "org.example.Paint.desktop");
}

TEST_F(DesktopEntryTest, SaysWhyAnEntryCannotBeStarted) {
  EXPECT_EQ(entry("Name=P\n").checkLaunch().cause(), path + " names no program to start");
  EXPECT_EQ(entry("Name=P\nExec=no-such-program-here %U\n").checkLaunch().cause(),
            "the program no-such-program-here of " + path + " is not installed or may not be executed");
  EXPECT_EQ(entry("Name=P\nExec=/bin/sh\nTryExec=also-not-here\n").checkLaunch().cause(),
            "the program also-not-here of " + path + " is not installed or may not be executed");
  EXPECT_TRUE(entry("Name=P\nDBusActivatable=true\n").checkLaunch());
}

TEST_F(DesktopEntryTest, RefusesWhatIsNoApplicationsEntry) {
  EXPECT_FALSE(DesktopEntry::read(folder + "/missing.desktop"));
  EXPECT_FALSE(DesktopEntry::read(folder));
  EXPECT_FALSE(read("URL=https://example.org\n", "Type=Link\n"));
  DesktopSandbox::write(path, std::string("\x7f"
                                          "ELF\0\0",
                                          6));
  EXPECT_FALSE(DesktopEntry::read(path));
  DesktopSandbox::write(path, "");
  EXPECT_FALSE(DesktopEntry::read(path));
  DesktopSandbox::write(path, "[Desktop Entry]\nType=Application\n" + std::string(2 * 1024 * 1024, '#'));
  EXPECT_FALSE(DesktopEntry::read(path));
}

TEST_F(DesktopEntryTest, IsNotShownWhenTheEntrySaysSo) {
  EXPECT_FALSE(entry("Name=P\nExec=/bin/sh\nNoDisplay=true\n").isShown);
  EXPECT_FALSE(entry("Name=P\nExec=/bin/sh\nHidden=true\n").isShown);
}

} // namespace
} // namespace orbel::linux
