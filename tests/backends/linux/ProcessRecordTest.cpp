#include "backends/linux/ProcessRecord.h"

#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/backends/linux/IdleProgram.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace orbel::linux {
namespace {

class ProcessRecordTest : public testing::Test {
protected:
  const std::string folder = DesktopSandbox::shared().makeFolder();
};

TEST_F(ProcessRecordTest, NamesTheExecutableAndTheArguments) {
  const IdleProgram program(folder + "/strange ) name");
  const auto record = ProcessRecord::read(program.processIdentifier());
  ASSERT_TRUE(record);
  EXPECT_EQ(record->executablePath, folder + "/strange ) name");
  EXPECT_EQ(record->arguments, std::vector<std::string>{folder + "/strange ) name"});
  EXPECT_EQ(record->appImagePath, std::nullopt);
  EXPECT_EQ(record->launchedEntryPath, std::nullopt);
}

TEST_F(ProcessRecordTest, KeepsTheExecutablesPathWhenItsFileIsReplaced) {
  const IdleProgram program(folder + "/updated");
  ::unlink((folder + "/updated").c_str());
  EXPECT_EQ(ProcessRecord::read(program.processIdentifier())->executablePath, folder + "/updated");
}

TEST_F(ProcessRecordTest, TellsProcessesOfTheSameNumberApartByTheirStart) {
  const auto ours = ProcessRecord::startTimeOf(::getpid());
  ASSERT_TRUE(ours);
  EXPECT_EQ(ProcessRecord::startTimeOf(::getpid()), ours);
  const auto first = ProcessRecord::startTimeOf(1);
  ASSERT_TRUE(first);
  EXPECT_LT(*first, *ours);
}

TEST_F(ProcessRecordTest, HasNothingOfAProcessThatHasEndedEvenIfNobodyCollectedIt) {
  IdleProgram program(folder + "/ends");
  EXPECT_TRUE(ProcessRecord::startTimeOf(program.processIdentifier()));
  program.kill();
  EXPECT_TRUE(test::iterateUntil([&] { return !ProcessRecord::startTimeOf(program.processIdentifier()); }));
  EXPECT_FALSE(ProcessRecord::read(program.processIdentifier()));
  EXPECT_FALSE(ProcessRecord::read(0));
  EXPECT_FALSE(ProcessRecord::read(-1));
}

TEST_F(ProcessRecordTest, NamesTheAppImageOnlyOfTheProgramInIt) {
  const IdleProgram inside(folder + "/mount/usr/bin/paint",
                           {"APPDIR=" + folder + "/mount", "APPIMAGE=/apps/Paint.AppImage"});
  EXPECT_EQ(ProcessRecord::read(inside.processIdentifier())->appImagePath, "/apps/Paint.AppImage");
  const IdleProgram startedByIt(folder + "/elsewhere/browser",
                                {"APPDIR=" + folder + "/mount", "APPIMAGE=/apps/Paint.AppImage"});
  EXPECT_EQ(ProcessRecord::read(startedByIt.processIdentifier())->appImagePath, std::nullopt);
}

TEST_F(ProcessRecordTest, NamesTheEntryOnlyOfTheProcessThatWasStartedByIt) {
  const IdleProgram started(folder + "/a",
                            {"GIO_LAUNCHED_DESKTOP_FILE=/x/a.desktop", "GIO_LAUNCHED_DESKTOP_FILE_PID=$PID"});
  EXPECT_EQ(ProcessRecord::read(started.processIdentifier())->launchedEntryPath, "/x/a.desktop");
  const IdleProgram inherited(folder + "/b",
                              {"GIO_LAUNCHED_DESKTOP_FILE=/x/a.desktop", "GIO_LAUNCHED_DESKTOP_FILE_PID=1"});
  EXPECT_EQ(ProcessRecord::read(inherited.processIdentifier())->launchedEntryPath, std::nullopt);
}

TEST_F(ProcessRecordTest, TakesTheScriptForTheProgramThatRunsIt) {
  IdleProgram::makeIdleExecutable(folder + "/interpreter");
  const std::string script = folder + "/script";
  // The idle program copies the script to its output and ends, unless it has its standard input to read
  // as well.
  DesktopSandbox::write(script, "#!" + folder + "/interpreter -\n");
  ::chmod(script.c_str(), 0755);
  const IdleProgram program(std::vector<std::string>{script});
  ASSERT_EQ(ProcessRecord::read(program.processIdentifier())->arguments.size(), 3u);
  EXPECT_EQ(ProcessRecord::read(program.processIdentifier())->executablePath, script);
}

TEST_F(ProcessRecordTest, KnowsTheInterpreterOfAScriptThatNamesItThroughEnv) {
  const std::string interpreter = folder + "/interpreter";
  const std::string script = folder + "/script";
  IdleProgram::makeIdleExecutable(interpreter);
  for (const std::string& line :
       {interpreter, "-S " + interpreter + " -", "-S -u HOME A=1 " + interpreter + " -",
        "-vS -i --chdir=/ " + interpreter + " - "}) {
    DesktopSandbox::write(script, "#!/usr/bin/env " + line + "\n");
    ::chmod(script.c_str(), 0755);
    const IdleProgram program({interpreter, "-", script});
    EXPECT_EQ(ProcessRecord::read(program.processIdentifier())->executablePath, script) << line;
  }
}

TEST_F(ProcessRecordTest, DoesNotTakeADocumentForTheProgram) {
  const std::string document = folder + "/document";
  DesktopSandbox::write(document, "#!/bin/sh\n");
  ::chmod(document.c_str(), 0755);
  IdleProgram::makeIdleExecutable(folder + "/editor");
  const IdleProgram editor({folder + "/editor", "-", document});
  EXPECT_EQ(ProcessRecord::read(editor.processIdentifier())->executablePath, folder + "/editor");
}

} // namespace
} // namespace orbel::linux
