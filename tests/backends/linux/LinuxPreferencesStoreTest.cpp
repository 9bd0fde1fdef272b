#include "backends/linux/LinuxPreferencesStore.h"

#include "foundation/PropertyListCoder.h"
#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/doubles/ManualRunLoop.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/OtherUser.h"
#include "tests/support/glib/MainLoop.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <regex>
#include <thread>

namespace orbel::linux {
namespace {

std::string xml(const PropertyList::Dictionary& values) {
  const auto bytes = PropertyListCoder::write(values, PropertyListCoder::Format::xml);
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class LinuxPreferencesStoreTest : public testing::Test {
protected:
  void open() { store = std::make_unique<LinuxPreferencesStore>(path, loop); }

  PropertyList::Dictionary onDisk() const { return decoded(path); }

  static PropertyList::Dictionary decoded(const std::string& file) {
    const auto result = PropertyListCoder::read(DesktopSandbox::bytes(DesktopSandbox::read(file)));
    return result && result->dictionary() ? *result->dictionary()
                                          : PropertyList::Dictionary{{"unreadable", true}};
  }

  // The watch has notified the store of a change, and the time is over that it lets the file settle.
  void takeChange() {
    ASSERT_TRUE(test::iterateUntil([this] { return loop.pendingDelays() > 0; }));
    loop.advance(LinuxPreferencesStore::kSettleDelay);
  }

  std::vector<std::string> namesLike(const std::string& pattern) const {
    std::vector<std::string> names = DesktopSandbox::list(folder);
    std::erase_if(names,
                  [&](const std::string& name) { return !std::regex_match(name, std::regex(pattern)); });
    return names;
  }
  std::vector<std::string> unreadableNames() const {
    return namesLike(R"(preferences\.plist\.unreadable-\d{8}T\d{6})");
  }
  std::vector<std::string> datedNames() const { return namesLike(R"(preferences-\d{8}T\d{6}\.plist)"); }

  const std::string folder = DesktopSandbox::shared().makeFolder();
  const std::string path = folder + "/preferences.plist";
  const std::string backup = path + ".backup";
  test::LogCapture log;
  ManualRunLoop loop;
  std::unique_ptr<LinuxPreferencesStore> store;
};

TEST_F(LinuxPreferencesStoreTest, StartsEmptyWithoutAFileAndMakesNone) {
  open();
  EXPECT_EQ(store->object("menuItems"), nullptr);
  EXPECT_TRUE(store->synchronize());
  EXPECT_TRUE(DesktopSandbox::list(folder).empty());
  EXPECT_TRUE(log.lines.empty());
}

TEST_F(LinuxPreferencesStoreTest, MakesTheMissingFoldersOfItsFileForTheUserAlone) {
  store = std::make_unique<LinuxPreferencesStore>(folder + "/a/b/preferences.plist", loop);
  store->setObject("swiftMode", true);
  EXPECT_TRUE(store->synchronize());
  struct stat status {};
  ASSERT_EQ(::stat((folder + "/a/b").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0700u);
}

TEST_F(LinuxPreferencesStoreTest, SavesSeveralChangesTogether) {
  open();
  store->setObject("a", 1);
  store->setObject("b", 2);
  store->removeObject("a");
  EXPECT_EQ(loop.pendingDelays(), 1u);
  loop.advance(LinuxPreferencesStore::kSaveDelay);
  EXPECT_EQ(onDisk(), (PropertyList::Dictionary{{"b", 2}}));
}

TEST_F(LinuxPreferencesStoreTest, SavesWhenItEnds) {
  open();
  store->setObject("a", 1);
  store.reset();
  EXPECT_EQ(onDisk(), (PropertyList::Dictionary{{"a", 1}}));
  loop.advance(1); // the scheduled save finds no store any more
}

TEST_F(LinuxPreferencesStoreTest, ReadsBackWhatItSavedInEveryType) {
  const PropertyList::Dictionary values{{"flag", true},
                                        {"number", std::int64_t{-5}},
                                        {"real", 0.25},
                                        {"text", "grün & <rund>"},
                                        {"data", PropertyList::Data{std::byte{0}, std::byte{255}}},
                                        {"list", PropertyList::List{1, "two"}},
                                        {"dictionary", PropertyList::Dictionary{{"a", false}}}};
  open();
  for (const auto& [key, value] : values)
    store->setObject(key, value);
  store.reset();
  open();
  for (const auto& [key, value] : values) {
    ASSERT_NE(store->object(key), nullptr) << key;
    EXPECT_EQ(*store->object(key), value) << key;
  }
}

TEST_F(LinuxPreferencesStoreTest, KeepsTheFileForTheUserAlone) {
  open();
  store->setObject("a", 1);
  ASSERT_TRUE(store->synchronize());
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777u, 0600u);
  store->setObject("a", 2);
  ASSERT_TRUE(store->synchronize());
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777u, 0600u);
}

TEST_F(LinuxPreferencesStoreTest, ReplacesTheFileInOneStepAndLeavesNoTemporaryFiles) {
  open();
  store->setObject("a", 1);
  ASSERT_TRUE(store->synchronize());
  // Whoever has the old file open still reads the whole old content.
  const std::string old = folder + "/old-file";
  ASSERT_EQ(::link(path.c_str(), old.c_str()), 0);
  store->setObject("a", 2);
  ASSERT_TRUE(store->synchronize());
  EXPECT_EQ(decoded(old), (PropertyList::Dictionary{{"a", 1}}));
  EXPECT_EQ(DesktopSandbox::list(folder),
            (std::vector<std::string>{"old-file", "preferences.plist", "preferences.plist.backup"}));
}

TEST_F(LinuxPreferencesStoreTest, TellsObserversNothingOfItsOwnSaves) {
  open();
  store->setObject("a", 1);
  loop.advance(LinuxPreferencesStore::kSaveDelay);
  int calls = 0;
  const auto registration = store->observeChanges([&] { ++calls; });
  takeChange(); // the watch reports the save
  loop.advance(1);
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(loop.pendingDelays(), 0u);
}

TEST_F(LinuxPreferencesStoreTest, SeesAFileRenamedOverItsOwn) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  DesktopSandbox::write(folder + "/edited", xml({{"a", 3}}));
  std::filesystem::rename(folder + "/edited", path);
  takeChange();
  EXPECT_EQ(store->integer("a"), 3);
}

TEST_F(LinuxPreferencesStoreTest, SeesTheFileAppear) {
  open();
  DesktopSandbox::write(path, xml({{"a", 4}}));
  takeChange();
  EXPECT_EQ(store->integer("a"), 4);
}

TEST_F(LinuxPreferencesStoreTest, SeesTheFileDeleted) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  int calls = 0;
  const auto registration = store->observeChanges([&] { ++calls; });
  ::unlink(path.c_str());
  takeChange();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(store->object("a"), nullptr);
  EXPECT_TRUE(DesktopSandbox::exists(backup));
}

TEST_F(LinuxPreferencesStoreTest, TakesADeletionWithAReplacementForOneChange) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  int calls = 0;
  bool sawItMissing = false;
  const auto registration = store->observeChanges([&] {
    ++calls;
    sawItMissing = sawItMissing || !store->object("a");
  });
  ::unlink(path.c_str());
  DesktopSandbox::write(path, xml({{"a", 2}}));
  takeChange();
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(sawItMissing);
  EXPECT_EQ(store->integer("a"), 2);
}

TEST_F(LinuxPreferencesStoreTest, MergesAChangeFromOutsideByKeyAndItsOwnUnsavedKeysWin) {
  DesktopSandbox::write(path, xml({{"ours", 1}, {"removed", 1}, {"theirs", 1}, {"gone", 1}}));
  open();
  store->setObject("ours", 2);
  store->removeObject("removed");
  DesktopSandbox::write(path, xml({{"ours", 9}, {"removed", 9}, {"theirs", 9}, {"new", 9}}));
  int calls = 0;
  const auto registration = store->observeChanges([&] { ++calls; });
  EXPECT_TRUE(store->synchronize());
  const PropertyList::Dictionary merged{{"ours", 2}, {"theirs", 9}, {"new", 9}};
  EXPECT_EQ(onDisk(), merged);
  EXPECT_EQ(store->integer("theirs"), 9);
  EXPECT_EQ(store->object("gone"), nullptr);
  EXPECT_EQ(calls, 1);
}

TEST_F(LinuxPreferencesStoreTest, FollowsASymbolicLinkToItsFile) {
  const std::string elsewhere = DesktopSandbox::shared().makeFolder();
  DesktopSandbox::write(elsewhere + "/real.plist", xml({{"a", 1}}));
  ASSERT_EQ(::symlink((elsewhere + "/real.plist").c_str(), path.c_str()), 0);
  open();
  EXPECT_EQ(store->integer("a"), 1);
  store->setObject("a", 2);
  EXPECT_TRUE(store->synchronize());
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  EXPECT_EQ(decoded(elsewhere + "/real.plist"), (PropertyList::Dictionary{{"a", 2}}));
  loop.advance(1);
  test::iterateWhatIsPending();
  loop.advance(1);

  DesktopSandbox::write(elsewhere + "/real.plist", xml({{"a", 3}}));
  takeChange();
  EXPECT_EQ(store->integer("a"), 3);
}

TEST_F(LinuxPreferencesStoreTest, FollowsARelativeLinkWhoseFileDoesNotExistYet) {
  const std::string elsewhere = folder + "/dotfiles";
  std::filesystem::create_directory(elsewhere);
  ASSERT_EQ(::symlink("dotfiles/real.plist", path.c_str()), 0);
  open();
  store->setObject("a", 1);
  EXPECT_TRUE(store->synchronize());
  EXPECT_EQ(decoded(elsewhere + "/real.plist"), (PropertyList::Dictionary{{"a", 1}}));
  EXPECT_TRUE(std::filesystem::is_symlink(path));
}

struct BadFile {
  const char* name;
  std::string content;
};

// The name alone in the list of tests, instead of the bytes of the structure.
void PrintTo(const BadFile& file, std::ostream* stream) {
  *stream << file.name;
}

class BadPreferencesFileTest : public LinuxPreferencesStoreTest,
                               public testing::WithParamInterface<BadFile> {};

TEST_P(BadPreferencesFileTest, IsKeptAsideAndTheStoreStartsFromItsLastGoodCopy) {
  DesktopSandbox::write(path, GetParam().content);
  DesktopSandbox::write(backup, xml({{"a", 7}}));
  open();
  EXPECT_EQ(store->integer("a"), 7);
  ASSERT_EQ(unreadableNames().size(), 1u);
  EXPECT_EQ(DesktopSandbox::read(folder + "/" + unreadableNames()[0]), GetParam().content);
  EXPECT_EQ(onDisk(), (PropertyList::Dictionary{{"a", 7}}));
  EXPECT_EQ(log.count("cannot be read"), 1);
}

TEST_P(BadPreferencesFileTest, LeavesAnEmptyStoreWhenThereIsNoGoodCopy) {
  DesktopSandbox::write(path, GetParam().content);
  open();
  EXPECT_EQ(store->object("a"), nullptr);
  ASSERT_EQ(unreadableNames().size(), 1u);
  EXPECT_FALSE(DesktopSandbox::exists(path));
  store->setObject("a", 1);
  EXPECT_TRUE(store->synchronize());
  EXPECT_EQ(onDisk(), (PropertyList::Dictionary{{"a", 1}}));
  EXPECT_EQ(DesktopSandbox::read(folder + "/" + unreadableNames()[0]), GetParam().content);
}

std::string deeplyNested() {
  std::string text = "<?xml version=\"1.0\"?><plist version=\"1.0\">";
  for (int i = 0; i < 100'000; ++i)
    text += "<array>";
  return text;
}

INSTANTIATE_TEST_SUITE_P(Content, BadPreferencesFileTest,
                         testing::Values(BadFile{"Empty", ""}, BadFile{"Garbage", "nonsense\n"},
                                         BadFile{"Truncated",
                                                 "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><k"},
                                         BadFile{"ListAtTheTop", "<plist version=\"1.0\"><array/></plist>"},
                                         BadFile{"Hostile", deeplyNested()}),
                         [](const auto& file) { return file.param.name; });

TEST_F(LinuxPreferencesStoreTest, StartsEmptyWhenTheGoodCopyIsBadToo) {
  DesktopSandbox::write(path, "bad");
  DesktopSandbox::write(backup, "bad too");
  open();
  EXPECT_EQ(store->object("a"), nullptr);
  EXPECT_EQ(log.count("cannot be read either"), 1);
  EXPECT_EQ(DesktopSandbox::read(backup), "bad too");
}

TEST_F(LinuxPreferencesStoreTest, NeverOverwritesAnEarlierFileThatWasKeptAside) {
  for (int i = 0; i < 3; ++i) {
    DesktopSandbox::write(path, "bad " + std::to_string(i));
    open();
    store.reset();
  }
  EXPECT_EQ(unreadableNames().size(), 3u);
}

TEST_F(LinuxPreferencesStoreTest, KeepsItsValuesWhenTheFileBecomesUnreadableForGood) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  DesktopSandbox::write(path, "half a fi");
  takeChange();
  EXPECT_TRUE(unreadableNames().empty()) << "it may still be being written";
  loop.advance(LinuxPreferencesStore::kDoubtDelay);
  EXPECT_EQ(unreadableNames().size(), 1u);
  EXPECT_EQ(store->integer("a"), 1);
  EXPECT_EQ(onDisk(), (PropertyList::Dictionary{{"a", 1}}));
}

TEST_F(LinuxPreferencesStoreTest, WaitsForAWriterThatIsNotDoneWithTheFile) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  const std::string whole = xml({{"a", 2}});
  DesktopSandbox::write(path, whole.substr(0, whole.size() / 2));
  takeChange();
  store->setObject("b", 5);
  loop.advance(LinuxPreferencesStore::kSaveDelay);
  EXPECT_EQ(DesktopSandbox::read(path), whole.substr(0, whole.size() / 2));
  DesktopSandbox::write(path, whole);
  ASSERT_TRUE(test::iterateUntil([this] { return loop.pendingDelays() > 1; }));
  loop.advance(1);
  EXPECT_TRUE(unreadableNames().empty());
  EXPECT_EQ(store->integer("a"), 2);
  EXPECT_EQ(onDisk(), (PropertyList::Dictionary{{"a", 2}, {"b", 5}}));
}

TEST_F(LinuxPreferencesStoreTest, KeepsACopyOfEveryGoodFile) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  EXPECT_EQ(decoded(backup), (PropertyList::Dictionary{{"a", 1}}));
  store->setObject("a", 2);
  ASSERT_TRUE(store->synchronize());
  EXPECT_EQ(decoded(backup), (PropertyList::Dictionary{{"a", 2}}));
}

TEST_F(LinuxPreferencesStoreTest, KeepsADatedCopyOfTheFileAsItIsOnDisk) {
  const std::string text = xml({{"a", 1}}) + "<!-- by hand -->";
  DesktopSandbox::write(path, text);
  open();
  store->setObject("a", 2);
  store->keepDatedCopy();
  ASSERT_EQ(datedNames().size(), 1u);
  EXPECT_EQ(DesktopSandbox::read(folder + "/" + datedNames()[0]), text);
}

TEST_F(LinuxPreferencesStoreTest, KeepsTheNewestFiveDatedCopiesAndNothingElseGoes) {
  DesktopSandbox::write(folder + "/preferences-mine.plist", "x");
  for (const char* stamp : {"20200101T000000", "20210101T000000"}) {
    DesktopSandbox::write(folder + "/preferences-" + stamp + ".plist", stamp);
  }
  open();
  for (int i = 0; i < 6; ++i) {
    store->setObject("a", i);
    ASSERT_TRUE(store->synchronize());
    store->keepDatedCopy();
  }
  ASSERT_EQ(datedNames().size(), LinuxPreferencesStore::kDatedCopies);
  EXPECT_EQ(decoded(folder + "/" + datedNames().front()), (PropertyList::Dictionary{{"a", 1}}));
  EXPECT_EQ(decoded(folder + "/" + datedNames().back()), (PropertyList::Dictionary{{"a", 5}}));
  EXPECT_TRUE(DesktopSandbox::exists(folder + "/preferences-mine.plist"));
}

TEST_F(LinuxPreferencesStoreTest, KeepsTheCopyItJustMadeAlsoWhenOthersAreDatedLater) {
  const auto later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
  for (const char* stamp :
       {"29990101T000000", "29990101T000001", "29990101T000002", "29990101T000003", "29990101T000004"}) {
    const std::string name = folder + "/preferences-" + stamp + ".plist";
    DesktopSandbox::write(name, stamp);
    std::filesystem::last_write_time(name, later);
  }
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  store->keepDatedCopy();
  const auto names = datedNames();
  ASSERT_EQ(names.size(), LinuxPreferencesStore::kDatedCopies);
  EXPECT_EQ(decoded(folder + "/" + names.front()), (PropertyList::Dictionary{{"a", 1}}));
  EXPECT_EQ(names.at(1), "preferences-29990101T000001.plist") << "the oldest of the others went";
  EXPECT_EQ(log.count("is kept as " + folder + "/" + names.front()), 1);
}

TEST_F(LinuxPreferencesStoreTest, KeepsTheCopiesThatWereWrittenLastAlsoWhenTheClockWasPutBack) {
  const auto now = std::filesystem::file_time_type::clock::now();
  for (int i = 0; i < 5; ++i) {
    const std::string name = folder + "/preferences-20300101T00000" + std::to_string(5 - i) + ".plist";
    DesktopSandbox::write(name, "x");
    std::filesystem::last_write_time(name, now - std::chrono::hours(10 - i));
  }
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  store->keepDatedCopy();
  EXPECT_EQ(datedNames().size(), LinuxPreferencesStore::kDatedCopies);
  EXPECT_FALSE(DesktopSandbox::exists(folder + "/preferences-20300101T000005.plist"));
  EXPECT_TRUE(DesktopSandbox::exists(folder + "/preferences-20300101T000001.plist"));
}

TEST_F(LinuxPreferencesStoreTest, KeepsADatedCopyInAFolderThatCannotBeListed) {
  EXPECT_TRUE(test::passesAsOtherUser([this] {
    const std::string own = folder + "/own";
    ASSERT_EQ(::mkdir(own.c_str(), 0700), 0);
    DesktopSandbox::write(own + "/preferences.plist", xml({{"a", 1}}));
    ASSERT_EQ(::chmod(own.c_str(), 0300), 0);
    LinuxPreferencesStore closed(own + "/preferences.plist", loop);
    closed.keepDatedCopy();
    ASSERT_EQ(::chmod(own.c_str(), 0700), 0);
    const auto names = DesktopSandbox::list(own);
    EXPECT_EQ(std::count_if(names.begin(), names.end(),
                            [](const auto& name) { return name.starts_with("preferences-"); }),
              1);
    EXPECT_EQ(log.count("a copy of the preferences is kept as " + own + "/preferences-"), 1);
  }));
}

TEST_F(LinuxPreferencesStoreTest, KeepsNoSecondDatedCopyOfTheSameContent) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  open();
  store->keepDatedCopy();
  store->keepDatedCopy();
  EXPECT_EQ(datedNames().size(), 1u);
}

TEST_F(LinuxPreferencesStoreTest, KeepsNoDatedCopyWithoutAFile) {
  open();
  store->keepDatedCopy();
  EXPECT_TRUE(DesktopSandbox::list(folder).empty());
}

TEST_F(LinuxPreferencesStoreTest, LeavesSomethingThatIsNoOrdinaryFileAlone) {
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  open();
  store->setObject("a", 1);
  EXPECT_FALSE(store->synchronize());
  EXPECT_EQ(store->integer("a"), 1);
  EXPECT_TRUE(std::filesystem::is_fifo(path));
  EXPECT_EQ(log.count("cannot be read"), 1);
}

TEST_F(LinuxPreferencesStoreTest, WorksInMemoryInAReadOnlyFolderAndSavesWhenThatIsPossibleAgain) {
  DesktopSandbox::write(path, xml({{"a", 1}}));
  ::chmod(path.c_str(), 0666);
  EXPECT_TRUE(test::passesAsOtherUser([this] {
    ::umask(0);
    const std::string own = folder + "/own";
    ASSERT_EQ(::mkdir(own.c_str(), 0755), 0);
    const std::string file = own + "/preferences.plist";
    DesktopSandbox::write(file, xml({{"a", 1}}));
    ASSERT_EQ(::chmod(own.c_str(), 0555), 0);
    LinuxPreferencesStore readOnly(file, loop);
    EXPECT_EQ(readOnly.integer("a"), 1);
    readOnly.setObject("a", 2);
    loop.advance(1);
    readOnly.setObject("a", 3);
    EXPECT_EQ(readOnly.synchronize().cause(), "Permission denied");
    EXPECT_EQ(readOnly.integer("a"), 3);
    EXPECT_EQ(decoded(file), (PropertyList::Dictionary{{"a", 1}}));
    EXPECT_EQ(log.count("could not be saved"), 1);

    ASSERT_EQ(::chmod(own.c_str(), 0755), 0);
    EXPECT_TRUE(readOnly.synchronize());
    EXPECT_EQ(decoded(file), (PropertyList::Dictionary{{"a", 3}}));
  }));
}

TEST_F(LinuxPreferencesStoreTest, ASaveNeverLosesWhatAnotherProgramWritesInThatMoment) {
  open();
  for (std::int64_t round = 0; round < 200; ++round) {
    std::thread other([&] {
      const std::string temporary = folder + "/other";
      DesktopSandbox::write(temporary, xml({{"outside", round}}));
      std::filesystem::rename(temporary, path);
    });
    store->setObject("ours", round);
    static_cast<void>(store->synchronize()); // may be overtaken
    other.join();
    store->setObject("later", round);
    ASSERT_TRUE(store->synchronize());
    const auto values = onDisk();
    ASSERT_EQ(values.count("outside"), 1U) << "round " << round;
    ASSERT_EQ(values.at("outside"), PropertyList(round));
  }
}

TEST_F(LinuxPreferencesStoreTest, RetriesAFailedSaveWithTheNextChange) {
  EXPECT_TRUE(test::passesAsOtherUser([this] {
    const std::string own = folder + "/own";
    ASSERT_EQ(::mkdir(own.c_str(), 0555), 0);
    LinuxPreferencesStore stored(own + "/preferences.plist", loop);
    stored.setObject("a", 1);
    loop.advance(1);
    EXPECT_EQ(loop.pendingDelays(), 0u) << "no attempts without need";
    ASSERT_EQ(::chmod(own.c_str(), 0755), 0);
    stored.setObject("b", 2);
    loop.advance(1);
    EXPECT_EQ(decoded(own + "/preferences.plist"), (PropertyList::Dictionary{{"a", 1}, {"b", 2}}));
  }));
}

TEST_F(LinuxPreferencesStoreTest, DoesNotReplaceAFileThatIsWriteProtected) {
  EXPECT_TRUE(test::passesAsOtherUser([this] {
    const std::string file = folder + "/protected.plist";
    DesktopSandbox::write(file, xml({{"a", 1}}));
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    LinuxPreferencesStore stored(file, loop);
    stored.setObject("a", 2);
    EXPECT_FALSE(stored.synchronize());
    EXPECT_EQ(stored.integer("a"), 2);
    EXPECT_EQ(decoded(file), (PropertyList::Dictionary{{"a", 1}}));
  }));
}

TEST_F(LinuxPreferencesStoreTest, NeitherMovesNorReplacesAFileThatItMayNotRead) {
  EXPECT_TRUE(test::passesAsOtherUser([this] {
    const std::string own = folder + "/own";
    ASSERT_EQ(::mkdir(own.c_str(), 0755), 0);
    const std::string file = own + "/preferences.plist";
    DesktopSandbox::write(file, xml({{"a", 1}}));
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    LinuxPreferencesStore stored(file, loop);
    EXPECT_EQ(log.count("cannot be read"), 1);
    stored.setObject("b", 2);
    EXPECT_FALSE(stored.synchronize());
    EXPECT_EQ(stored.integer("b"), 2);
    EXPECT_EQ(DesktopSandbox::list(own), std::vector<std::string>{"preferences.plist"});

    // Given back, it is read, and what was changed meanwhile joins it.
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    EXPECT_TRUE(stored.synchronize());
    EXPECT_EQ(stored.integer("a"), 1);
    EXPECT_EQ(decoded(file), (PropertyList::Dictionary{{"a", 1}, {"b", 2}}));
  }));
}

TEST_F(LinuxPreferencesStoreTest, LeavesABadFileThatItCannotMoveAsideAndLogsItOnce) {
  EXPECT_TRUE(test::passesAsOtherUser([this] {
    const std::string own = folder + "/own";
    ASSERT_EQ(::mkdir(own.c_str(), 0755), 0);
    const std::string file = own + "/preferences.plist";
    DesktopSandbox::write(file, "bad");
    ASSERT_EQ(::chmod(own.c_str(), 0555), 0);
    LinuxPreferencesStore stored(file, loop);
    stored.setObject("a", 1);
    EXPECT_FALSE(stored.synchronize());
    stored.setObject("a", 2);
    EXPECT_FALSE(stored.synchronize());
    EXPECT_EQ(DesktopSandbox::read(file), "bad");
    EXPECT_EQ(log.count("cannot be read"), 1);
    ::chmod(own.c_str(), 0755);
  }));
}

TEST_F(LinuxPreferencesStoreTest, SavesAgainAfterItsFolderWasRemoved) {
  store = std::make_unique<LinuxPreferencesStore>(folder + "/sub/preferences.plist", loop);
  store->setObject("a", 1);
  ASSERT_TRUE(store->synchronize());
  std::filesystem::remove_all(folder + "/sub");
  EXPECT_TRUE(test::iterateUntil([this] {
    loop.advance(LinuxPreferencesStore::kSettleDelay);
    return store->object("a") == nullptr;
  }));
  store->setObject("b", 2);
  EXPECT_TRUE(store->synchronize());
  EXPECT_EQ(decoded(folder + "/sub/preferences.plist"), (PropertyList::Dictionary{{"b", 2}}));
  test::iterateWhatIsPending();
  loop.advance(1);
  DesktopSandbox::write(folder + "/sub/preferences.plist", xml({{"b", 3}}));
  takeChange();
  EXPECT_EQ(store->integer("b"), 3);
}

} // namespace
} // namespace orbel::linux
