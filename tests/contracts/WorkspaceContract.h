// What every Workspace, with its RunningApplications, keeps to.
//
// Subject: a desktop without applications, whose user speaks English or any language without a translation
// of the names that the tests use.
//   Workspace& workspace();
//   std::string addFile(const std::string& name);    an ordinary file of a type that nothing opens; all paths
//   std::string addFolder(const std::string& name);  lie in one empty folder of the subject's own
//   std::string missingPath(const std::string& name);  in that folder
//   void rename(const std::string& from, const std::string& to);
//   void remove(const std::string& path);
//   std::string install(const std::string& name);    an application of that name, known when it returns; its
//                                                    bundle
//   void makeDefault(const std::string& bundle, const std::string& file);  it opens files like that one, and
//                                                    the scheme "orbel-test"
//   RunningApplicationPointer start(const std::string& bundle);  a process of it opens an ordinary window;
//                                                    its record. All processes run the same executable
//   void quit(const RunningApplicationPointer&);     the process ends
//   void makeActive(const RunningApplicationPointer&);  its window
#pragma once

#include "platform/Workspace.h"
#include "tests/support/base/LogCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class WorkspaceContract : public testing::Test {
protected:
  static constexpr const char* kUnknown = "No Such Application";

  Workspace& workspace() { return subject.workspace(); }
  std::vector<std::string> runningNames() {
    std::vector<std::string> names;
    for (const auto& application : workspace().runningApplications())
      names.push_back(application->localizedName());
    return names;
  }
  // What became of it; nothing when it failed.
  std::optional<Workspace::Launch> launch(const std::string& nameOrPath) {
    const auto launched = workspace().launchApplication(nameOrPath);
    return launched ? std::optional(*launched) : std::nullopt;
  }
  // How many lines were logged since the last call.
  std::size_t newLines() {
    const std::size_t before = std::exchange(m_linesSeen, log.lines.size());
    return log.lines.size() - before;
  }

  Subject subject;
  test::LogCapture log;

private:
  std::size_t m_linesSeen = 0;
};

TYPED_TEST_SUITE_P(WorkspaceContract);

TYPED_TEST_P(WorkspaceContract, FilesFoldersAndMissingPathsAreToldApart) {
  using Kind = Workspace::FileKind;
  const auto file = this->subject.addFile("a.txt");
  EXPECT_EQ(this->workspace().fileKind(file), Kind::file);
  EXPECT_EQ(this->workspace().fileKind(this->subject.addFolder("folder")), Kind::directory);
  EXPECT_EQ(this->workspace().fileKind(this->subject.missingPath("gone")), Kind::missing);
  this->subject.remove(file);
  EXPECT_EQ(this->workspace().fileKind(file), Kind::missing);
}

TYPED_TEST_P(WorkspaceContract, APathIsShownByItsEntrysNameElseByItsFilesName) {
  EXPECT_EQ(this->workspace().displayName(this->subject.install("Paint")), "Paint");
  EXPECT_EQ(this->workspace().displayName(this->subject.addFile("a b.txt")), "a b.txt");
  const auto folder = this->subject.addFolder("folder");
  EXPECT_EQ(this->workspace().displayName(folder), "folder");
  EXPECT_EQ(this->workspace().displayName(folder + "/"), "folder");
  EXPECT_EQ(this->workspace().displayName(this->subject.missingPath("gone.txt")), "gone.txt");
  EXPECT_EQ(this->workspace().displayName("/"), "/");
}

TYPED_TEST_P(WorkspaceContract, EveryPathHasAnIcon) {
  for (const auto& path : {this->subject.addFile("a.txt"), this->subject.addFolder("folder"),
                           this->subject.missingPath("gone"), this->subject.install("Paint")}) {
    const auto icon = this->workspace().iconForFile(path);
    ASSERT_TRUE(icon) << path;
    EXPECT_EQ(icon->size(), (Size{320, 320})) << path;
    EXPECT_FALSE(icon->representation(32, 32).isEmpty()) << path;
  }
}

TYPED_TEST_P(WorkspaceContract, OnlyKnownNamesHaveAPictureOfTheProgramsOwn) {
  EXPECT_TRUE(this->workspace().imageNamed("Finder"));
  EXPECT_FALSE(this->workspace().imageNamed("Paint"));
  EXPECT_FALSE(this->workspace().imageNamed(""));
}

TYPED_TEST_P(WorkspaceContract, ABookmarkLeadsToItsFileAlsoAfterARename) {
  const auto file = this->subject.addFile("a.txt");
  const auto bookmark = this->workspace().makeBookmark(file);
  ASSERT_TRUE(bookmark) << bookmark.cause();
  ASSERT_FALSE(bookmark->empty());
  auto resolved = this->workspace().resolveBookmark(*bookmark);
  ASSERT_TRUE(resolved) << resolved.cause();
  EXPECT_EQ(resolved->path, file);
  EXPECT_FALSE(resolved->isStale);
  EXPECT_FALSE(resolved->drawback);

  const auto renamed = this->subject.missingPath("b.txt");
  this->subject.rename(file, renamed);
  resolved = this->workspace().resolveBookmark(*bookmark);
  ASSERT_TRUE(resolved) << resolved.cause();
  EXPECT_EQ(resolved->path, renamed);
  EXPECT_TRUE(resolved->isStale);
  EXPECT_FALSE(resolved->drawback);
}

TYPED_TEST_P(WorkspaceContract, ABookmarkThatLeadsNowhereSaysWhy) {
  const auto file = this->subject.addFile("a.txt");
  const auto bookmark = this->workspace().makeBookmark(file).valueOr({});
  this->subject.remove(file);
  for (const auto& data : {bookmark, PropertyList::Data(), PropertyList::Data(5, std::byte{0xA5})}) {
    const auto resolved = this->workspace().resolveBookmark(data);
    EXPECT_FALSE(resolved);
    EXPECT_FALSE(resolved.cause().empty());
  }
  EXPECT_EQ(this->newLines(), 0u) << "whoever asked logs it";
}

TYPED_TEST_P(WorkspaceContract, NoBookmarkIsMadeOfWhatIsNotThere) {
  for (const auto& path : {this->subject.missingPath("gone"), std::string("relative"), std::string()}) {
    const auto bookmark = this->workspace().makeBookmark(path);
    EXPECT_FALSE(bookmark) << path;
    EXPECT_FALSE(bookmark.cause().empty()) << path;
  }
}

TYPED_TEST_P(WorkspaceContract, WhatCannotBeOpenedOrLaunchedSaysWhy) {
  const auto file = this->subject.addFile("a.txt");
  Workspace& workspace = this->workspace();
  for (const auto& cause :
       {workspace.openFile(this->subject.missingPath("gone")).cause(),
        workspace.openFileWithApplication(file, this->kUnknown).cause(),
        workspace.openUrl("orbel-test:x").cause(), workspace.showFolder(file).cause(),
        workspace.launchApplication(this->kUnknown).cause(),
        workspace.launchApplicationAtPath(this->subject.missingPath("gone.desktop")).cause()})
    EXPECT_FALSE(cause.empty());
  EXPECT_EQ(this->newLines(), 0u) << "whoever asked logs it";
}

TYPED_TEST_P(WorkspaceContract, AnInstalledApplicationIsLaunchedByItsNameAndByItsPath) {
  const auto bundle = this->subject.install("Paint");
  EXPECT_TRUE(this->workspace().isApplicationBundle(bundle));
  EXPECT_EQ(this->launch("Paint"), Workspace::Launch::done);
  EXPECT_EQ(this->launch(bundle), Workspace::Launch::done);
  EXPECT_TRUE(this->workspace().launchApplicationAtPath(bundle));
  EXPECT_TRUE(this->workspace().openFileWithApplication(this->subject.addFile("a.txt"), bundle));
  EXPECT_EQ(this->newLines(), 0u);
}

TYPED_TEST_P(WorkspaceContract, AnExecutableThatSeveralProgramsRunDoesNotSayWhichOfThemIsMeant) {
  const auto bundle = this->subject.install("Paint");
  const auto first = this->subject.start(bundle);
  const auto second = this->subject.start(bundle);
  ASSERT_TRUE(first && second);
  ASSERT_EQ(first->executablePath(), second->executablePath());
  EXPECT_EQ(this->launch(*first->executablePath()), Workspace::Launch::ambiguous);
  EXPECT_EQ(this->launch(bundle), Workspace::Launch::done);
  EXPECT_EQ(this->launch("Paint"), Workspace::Launch::done);
  this->subject.quit(first);
  EXPECT_EQ(this->launch(*second->executablePath()), Workspace::Launch::done);
  EXPECT_EQ(this->newLines(), 0u);
}

TYPED_TEST_P(WorkspaceContract, TheDefaultApplicationIsAmongThoseThatOpenAFile) {
  const auto file = this->subject.addFile("a.txt");
  EXPECT_FALSE(this->workspace().defaultApplicationForFile(file));
  EXPECT_TRUE(this->workspace().applicationsForFile(file).empty());
  EXPECT_FALSE(this->workspace().applicationForUrl("orbel-test:x"));
  const auto bundle = this->subject.install("Paint");
  this->subject.makeDefault(bundle, file);
  EXPECT_EQ(this->workspace().defaultApplicationForFile(file), bundle);
  const auto all = this->workspace().applicationsForFile(file);
  EXPECT_NE(std::find(all.begin(), all.end(), bundle), all.end());
  EXPECT_EQ(this->workspace().applicationForUrl("orbel-test:x"), bundle);
  EXPECT_TRUE(this->workspace().openFile(file));
  EXPECT_TRUE(this->workspace().openUrl("orbel-test:x"));
  EXPECT_EQ(this->newLines(), 0u);
}

TYPED_TEST_P(WorkspaceContract, EntriesAndAppImagesAreApplicationsAndOtherFilesAreNot) {
  EXPECT_TRUE(this->workspace().isApplicationBundle(this->subject.addFile("Tool.AppImage")));
  EXPECT_FALSE(this->workspace().isApplicationBundle(this->subject.addFile("a.txt")));
  EXPECT_FALSE(this->workspace().isApplicationBundle(this->subject.addFolder("folder")));
}

TYPED_TEST_P(WorkspaceContract, RunningApplicationsAreListedInTheOrderOfTheirWindowsAndObserved) {
  const auto paint = this->subject.install("Paint");
  const auto mail = this->subject.install("Letters");
  EXPECT_TRUE(this->runningNames().empty());
  std::vector<std::vector<std::string>> seen;
  auto observer = this->workspace().observeRunningApplications([&] { seen.push_back(this->runningNames()); });
  const auto second = this->subject.start(paint);
  const auto first = this->subject.start(mail);
  ASSERT_TRUE(first && second);
  this->subject.quit(second);
  EXPECT_EQ(seen, (std::vector<std::vector<std::string>>{{"Paint"}, {"Paint", "Letters"}, {"Letters"}}));
  observer.reset();
  this->subject.quit(first);
  EXPECT_EQ(seen.size(), 3u);
  EXPECT_TRUE(this->runningNames().empty());
}

TYPED_TEST_P(WorkspaceContract, AnObserverThatEndsWhileOthersAreCalledIsNotCalledAnyMore) {
  int ownCalls = 0;
  int otherCalls = 0;
  Registration own;
  Registration other;
  own = this->workspace().observeRunningApplications([&] {
    ++ownCalls;
    own.reset();
    other.reset();
  });
  other = this->workspace().observeRunningApplications([&] { ++otherCalls; });
  this->subject.quit(this->subject.start(this->subject.install("Paint")));
  EXPECT_EQ(ownCalls, 1);
  EXPECT_EQ(otherCalls, 0);
}

TYPED_TEST_P(WorkspaceContract, ARecordKnowsItsProgram) {
  const auto bundle = this->subject.install("Paint");
  const auto other = this->subject.install("Letters");
  const auto record = this->subject.start(bundle);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->localizedName(), "Paint");
  EXPECT_EQ(record->bundlePath(), bundle);
  EXPECT_TRUE(record->executablePath());
  EXPECT_GT(record->processIdentifier(), 0);
  EXPECT_TRUE(record->canBeAskedToClose());
  EXPECT_EQ(record->activationPolicy(), ActivationPolicy::regular);
  EXPECT_FALSE(record->isTerminated());
  EXPECT_TRUE(this->workspace().runsBundle(*record, bundle));
  EXPECT_FALSE(this->workspace().runsBundle(*record, other));
  EXPECT_FALSE(this->workspace().playsRole(*record, "Paint")) << "no built-in name";
}

TYPED_TEST_P(WorkspaceContract, AProgramThatHasEndedIsNoRegularOneAnyMoreAsSoonAsItsEndIsTold) {
  const auto record = this->subject.start(this->subject.install("Paint"));
  ASSERT_TRUE(record);
  std::vector<ActivationPolicy> seen;
  const auto observer =
      this->workspace().observeRunningApplications([&] { seen.push_back(record->activationPolicy()); });
  this->subject.quit(record);
  EXPECT_EQ(seen, std::vector{ActivationPolicy::accessory});
}

TYPED_TEST_P(WorkspaceContract, RecordsAreEqualWhenTheyStandForTheSameProcess) {
  const auto bundle = this->subject.install("Paint");
  const auto first = this->subject.start(bundle);
  const auto second = this->subject.start(bundle);
  ASSERT_TRUE(first && second);
  EXPECT_TRUE(first->isEqual(*first));
  EXPECT_TRUE(first->isEqual(*this->workspace().runningApplications().at(0)));
  EXPECT_FALSE(first->isEqual(*second));
  EXPECT_FALSE(second->isEqual(*first));
  this->subject.quit(first);
  const auto third = this->subject.start(bundle);
  EXPECT_FALSE(third->isEqual(*first));
}

TYPED_TEST_P(WorkspaceContract, OnlyAProgramThatStillHasAWindowIsBroughtForward) {
  const auto record = this->subject.start(this->subject.install("Paint"));
  ASSERT_TRUE(record);
  EXPECT_TRUE(record->activate(ActivationReason::userChoice));
  EXPECT_TRUE(record->activate(ActivationReason::restore));
  this->subject.quit(record);
  EXPECT_TRUE(record->isTerminated());
  EXPECT_FALSE(record->activate(ActivationReason::userChoice));
  EXPECT_FALSE(record->activate(ActivationReason::restore));
}

TYPED_TEST_P(WorkspaceContract, TheFrontmostApplicationIsTheOneWithTheActiveWindow) {
  EXPECT_FALSE(this->workspace().frontmostApplication());
  const auto bundle = this->subject.install("Paint");
  const auto first = this->subject.start(bundle);
  const auto second = this->subject.start(bundle);
  this->subject.makeActive(second);
  ASSERT_TRUE(this->workspace().frontmostApplication());
  EXPECT_TRUE(this->workspace().frontmostApplication()->isEqual(*second));
  this->subject.makeActive(first);
  EXPECT_TRUE(this->workspace().frontmostApplication()->isEqual(*first));
}

REGISTER_TYPED_TEST_SUITE_P(
    WorkspaceContract, FilesFoldersAndMissingPathsAreToldApart, APathIsShownByItsEntrysNameElseByItsFilesName,
    EveryPathHasAnIcon, OnlyKnownNamesHaveAPictureOfTheProgramsOwn, ABookmarkLeadsToItsFileAlsoAfterARename,
    ABookmarkThatLeadsNowhereSaysWhy, NoBookmarkIsMadeOfWhatIsNotThere, WhatCannotBeOpenedOrLaunchedSaysWhy,
    AnInstalledApplicationIsLaunchedByItsNameAndByItsPath,
    AnExecutableThatSeveralProgramsRunDoesNotSayWhichOfThemIsMeant,
    TheDefaultApplicationIsAmongThoseThatOpenAFile, EntriesAndAppImagesAreApplicationsAndOtherFilesAreNot,
    RunningApplicationsAreListedInTheOrderOfTheirWindowsAndObserved,
    AnObserverThatEndsWhileOthersAreCalledIsNotCalledAnyMore, ARecordKnowsItsProgram,
    AProgramThatHasEndedIsNoRegularOneAnyMoreAsSoonAsItsEndIsTold,
    RecordsAreEqualWhenTheyStandForTheSameProcess, OnlyAProgramThatStillHasAWindowIsBroughtForward,
    TheFrontmostApplicationIsTheOneWithTheActiveWindow);

} // namespace orbel::contracts
