// Two thousand edits made by chance, the same ones for the same seed. Before each the menu is written down
// and the edit carried out on paper; afterwards the menu, its view and what is stored must say the same.
#include "tests/controllers/ControllerFixture.h"

#include "foundation/PropertyListCoder.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <random>

namespace orbel {
namespace {

constexpr int kEdits = 1000;             // for each of two seeds
constexpr std::size_t kManyEntries = 20; // from here on removals prevail
constexpr double kFlagDelay = 0.51;      // the context menu counts as open for so long
constexpr double kReloadDelay = 0.31;    // after a collection's menu was closed
constexpr double kFade = 0.2;

struct Entry {
  std::string kind;
  std::string name;
  std::vector<Entry> members;
  friend bool operator==(const Entry&, const Entry&) = default;
};
using Entries = std::vector<Entry>;

std::ostream& operator<<(std::ostream& stream, const Entry& entry) {
  stream << entry.kind << ' ' << entry.name;
  for (const Entry& member : entry.members)
    stream << " {" << member << '}';
  return stream;
}

// Every item by its name, whatever it is in.
std::map<std::string, int> census(const Entries& entries) {
  std::map<std::string, int> counts;
  for (const Entry& entry : entries) {
    ++counts[entry.kind + ' ' + entry.name];
    for (const auto& [name, count] : census(entry.members))
      counts[name] += count;
  }
  return counts;
}

class RandomEditsTest : public ControllerTest, public testing::WithParamInterface<std::uint32_t> {
protected:
  RandomEditsTest() : m_random(GetParam()) {
    platform.workspace.urlHandlers["orbelmenu-toolkit"] = "/toolkit.desktop";
  }

  std::size_t below(std::size_t count) { return count == 0 ? 0 : m_random() % count; }
  bool chance(int percent) { return static_cast<int>(m_random() % 100) < percent; }
  std::string freshName(const std::string& prefix) { return prefix + std::to_string(++m_counter); }

  // ---- Writing down ----

  static Entry written(const PropertyList& stored) {
    Entry entry{*stored.find("class")->string(), *stored.find("name")->string(), {}};
    if (const PropertyList* members = stored.find("subitems")) {
      for (const PropertyList& member : *members->list())
        entry.members.push_back(written(member));
    }
    return entry;
  }
  static Entries written(const MenuItemList& items) {
    Entries entries;
    for (const auto& item : items) {
      if (const auto stored = item->dictionaryRepresentation()) {
        entries.push_back(written(*stored));
      } else {
        entries.push_back({"running", *item->name(), {}});
      }
    }
    return entries;
  }
  static Entries ofTheUser(Entries entries) {
    std::erase_if(entries, [](const Entry& entry) { return entry.kind == "running"; });
    return entries;
  }
  Entries shownEntries() { return written(controller().menuItems()); }
  // As another program would find it, from the bytes.
  Entries storedEntries() {
    const auto bytes =
        PropertyListCoder::write(platform.preferences.values["menuItems"], PropertyListCoder::Format::xml);
    const auto read = PropertyListCoder::read(bytes);
    EXPECT_TRUE(read) << read.cause();
    Entries entries;
    for (const PropertyList& element : *read->list())
      entries.push_back(written(element));
    return entries;
  }
  std::vector<std::size_t> placesOf(const std::string& kind) {
    std::vector<std::size_t> places;
    const Entries entries = shownEntries();
    for (std::size_t place = 0; place < entries.size(); ++place) {
      if (entries[place].kind == kind) places.push_back(place);
    }
    return places;
  }

  // ---- Checks ----

  void expectNow(const Entries& expected, const char* edit) {
    ASSERT_EQ(ofTheUser(shownEntries()), expected) << edit;
    // With the last item removed, the defaults are shown, and nothing is stored yet.
    if (storedEntries().empty()) {
      ASSERT_EQ(expected.size(), 6u) << edit;
      ASSERT_EQ(expected[0].name, "Finder") << edit;
    } else {
      ASSERT_EQ(storedEntries(), expected) << edit;
    }
    expectViewToAgree(edit);
  }
  void expectViewToAgree(const char* edit) {
    std::vector<std::string> titles;
    controller().orbelView().sections().forEach(
        [&](const OrbelItem& item, ItemPath) { titles.push_back(item.title().value_or("")); });
    ASSERT_EQ(titles, names()) << edit;
  }

  // ---- Edits ----

  void edit();
  void choose(std::size_t place, const std::string& title) {
    controller().didRightClickItem(at(static_cast<std::int64_t>(place)));
    ASSERT_TRUE(platform.contextMenus.choose(title)) << title;
    platform.runLoop.advance(kFlagDelay);
  }
  std::vector<std::string> files(Entries& becoming) {
    std::vector<std::string> paths;
    for (std::size_t count = 1 + below(4); count > 0; --count) {
      static const char* const kEndings[] = {".txt", ".app", ".desktop", ".gone"};
      const std::string ending = kEndings[below(4)];
      paths.push_back('/' + freshName("file") + ending);
      const std::string name = paths.back().substr(1);
      if (ending == ".gone") {
        platform.workspace.files[paths.back()] = Workspace::FileKind::missing;
      } else {
        becoming.push_back({ending == ".txt" ? "FileMenuItem" : "AppMenuItem", name, {}});
      }
    }
    return paths;
  }

  void move();
  void dragByHand();
  void dropOnItem();
  void remove();
  void rename();
  void makeCollection();
  void ungroup();
  void dropFilesBetween();
  void dropFilesOnItem();
  void editCollection();
  void keep();
  void programsComeAndGo();
  void reload();

  std::mt19937 m_random;
  int m_counter = 0;
};

void RandomEditsTest::move() {
  Entries expected = shownEntries();
  const std::size_t from = below(expected.size());
  const std::size_t to = below(expected.size());
  const Entry moved = expected[from];
  expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(from));
  expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(to), moved);
  controller().didMoveItem(at(static_cast<std::int64_t>(from)), at(static_cast<std::int64_t>(to)));
  EXPECT_EQ(shownEntries(), expected);
  controller().orbelView().reloadData(); // the view had not moved the icon itself
  expectNow(ofTheUser(expected), "move");
}

// Through the view, wherever it lands: nothing may be lost or doubled.
void RandomEditsTest::dragByHand() {
  const auto before = census(ofTheUser(shownEntries()));
  const Rect frame = controller().window().frame();
  const auto place = [&](double turns, double distance) {
    const double angle = turns * 2 * std::numbers::pi;
    return Point{frame.center().x + distance * frame.size.width * std::sin(angle),
                 frame.center().y + distance * frame.size.width * std::cos(angle)};
  };
  const auto turns = [&] { return static_cast<double>(below(1000)) / 1000; };
  const double start = turns();
  const double end = start + turns();
  platform.windows.movePointer(place(start, 0.32));
  platform.windows.press(PointerButton::primary);
  const std::size_t steps = 1 + below(6);
  for (std::size_t step = 1; step <= steps; ++step) {
    const double share = static_cast<double>(step) / static_cast<double>(steps);
    platform.windows.movePointer(place(start + (end - start) * share, 0.32));
    platform.runLoop.advance(0.02);
  }
  platform.windows.release(PointerButton::primary);
  platform.runLoop.advance(kFade);
  controller().orbelView().reloadData(); // a drop on no target leaves the icon beside the circle until then
  platform.windows.movePointer(frame.center());
  EXPECT_EQ(census(ofTheUser(shownEntries())), before);
  expectNow(ofTheUser(shownEntries()), "drag by hand");
}

void RandomEditsTest::dropOnItem() {
  Entries expected = shownEntries();
  const std::size_t dragged = below(expected.size());
  const std::size_t target = below(expected.size());
  if (dragged == target) return;
  const bool goesIn = expected[dragged].kind != "running" && expected[dragged].kind != "CollectionMenuItem" &&
                      expected[target].kind == "CollectionMenuItem";
  if (goesIn) {
    expected[target].members.push_back(expected[dragged]);
    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(dragged));
  }
  controller().didDropItem(at(static_cast<std::int64_t>(dragged)), at(static_cast<std::int64_t>(target)));
  expectNow(ofTheUser(expected), "drop on an item");
}

void RandomEditsTest::remove() {
  Entries expected = shownEntries();
  const std::size_t place = below(expected.size());
  if (expected[place].kind == "running" || expected[place].name == "Finder") return;
  expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(place));
  choose(place, "Remove from Orbel Menu");
  expected = ofTheUser(expected);
  if (expected.empty()) {
    for (const char* name : {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"})
      expected.push_back({"CoreMenuItem", name, {}});
  }
  expectNow(expected, "remove");
}

void RandomEditsTest::rename() {
  const auto collections = placesOf("CollectionMenuItem");
  if (collections.empty()) return;
  Entries expected = shownEntries();
  const std::size_t place = collections[below(collections.size())];
  choose(place, "Rename Collection");
  if (chance(20)) programsComeAndGo();
  if (chance(20)) controller().refreshItems();
  // Either may have moved the running programs.
  expected = ofTheUser(shownEntries());
  static const char* const kOdd[] = {"   ", "a\nb", "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d ", "%s & <b>",
                                     "\xf0\x9f\x8e\xb2 "};
  const Entry old = written(controller().targetMenuItem()->dictionaryRepresentation().value());
  const auto renamed = std::find(expected.begin(), expected.end(), old);
  ASSERT_NE(renamed, expected.end());
  if (chance(20)) {
    platform.dialogs.answerPrompt(chance(50) ? std::optional<std::string>() : std::string());
  } else {
    renamed->name = kOdd[below(5)] + freshName("name");
    platform.dialogs.answerPrompt(renamed->name);
  }
  expectNow(expected, "rename");
}

void RandomEditsTest::makeCollection() {
  Entries expected = shownEntries();
  if (expected.size() > kManyEntries) return remove();
  const std::size_t place = below(expected.size() + 1);
  controller().didRightClickOutsideOfItem(at(static_cast<std::int64_t>(place)));
  ASSERT_TRUE(platform.contextMenus.choose("New Collection"));
  if (chance(20)) {
    platform.dialogs.answerPrompt(std::nullopt);
  } else {
    const std::string name = freshName("collection");
    platform.dialogs.answerPrompt(name);
    expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(place), {"CollectionMenuItem", name, {}});
  }
  expectNow(ofTheUser(expected), "new collection");
}

void RandomEditsTest::ungroup() {
  Entries expected = shownEntries();
  if (expected.size() > kManyEntries) return remove();
  std::vector<std::size_t> filled;
  for (const std::size_t place : placesOf("CollectionMenuItem")) {
    if (!expected[place].members.empty()) filled.push_back(place);
  }
  if (filled.empty()) return;
  const std::size_t place = filled[below(filled.size())];
  const Entries members = expected[place].members;
  expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(place));
  expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(place), members.begin(), members.end());
  choose(place, "Ungroup Collection");
  expectNow(ofTheUser(expected), "ungroup");
}

void RandomEditsTest::dropFilesBetween() {
  Entries expected = shownEntries();
  if (expected.size() > kManyEntries) return remove();
  const std::size_t place = below(expected.size() + 1);
  Entries added;
  const FakeDrag drag(files(added));
  expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(place), added.begin(), added.end());
  EXPECT_TRUE(controller().didReceiveDrag(drag, at(static_cast<std::int64_t>(place))));
  expectNow(ofTheUser(expected), "files between items");
}

void RandomEditsTest::dropFilesOnItem() {
  Entries expected = shownEntries();
  const std::size_t place = below(expected.size());
  if (expected[place].members.size() > kManyEntries) return;
  Entries added;
  const FakeDrag drag(files(added));
  const ItemPath target = at(static_cast<std::int64_t>(place));
  if (!controller().canDrop(drag, target)) return;
  if (expected[place].kind == "CollectionMenuItem") {
    expected[place].members.insert(expected[place].members.end(), added.begin(), added.end());
    EXPECT_EQ(controller().didDrop(drag, target), !added.empty());
  } else {
    EXPECT_TRUE(controller().didDrop(drag, target)); // opened, and the menu fades out
    EXPECT_TRUE(controller().window().isFadingOut());
    fadeOut();
    shown();
  }
  expectNow(ofTheUser(expected), "files on an item");
}

void RandomEditsTest::editCollection() {
  const auto collections = placesOf("CollectionMenuItem");
  if (collections.empty()) return;
  Entries expected = shownEntries();
  const std::size_t place = collections[below(collections.size())];
  controller().didClickItem(at(static_cast<std::int64_t>(place)));
  platform.runLoop.advance(kFade);
  const auto menu = controller().collectionController();
  ASSERT_TRUE(menu);
  for (std::size_t edits = below(4); edits > 0; --edits) {
    Entries& members = expected[place].members;
    if (members.empty() || (members.size() < kManyEntries && chance(30))) {
      const std::size_t index = below(members.size() + 1);
      Entries added;
      const FakeDrag drag(files(added));
      members.insert(members.begin() + static_cast<std::ptrdiff_t>(index), added.begin(), added.end());
      EXPECT_TRUE(menu->didReceiveDrag(drag, at(static_cast<std::int64_t>(index))));
    } else if (chance(50)) {
      const std::size_t from = below(members.size());
      const std::size_t to = below(members.size());
      const Entry moved = members[from];
      members.erase(members.begin() + static_cast<std::ptrdiff_t>(from));
      members.insert(members.begin() + static_cast<std::ptrdiff_t>(to), moved);
      menu->didMoveItem(at(static_cast<std::int64_t>(from)), at(static_cast<std::int64_t>(to)));
    } else {
      const std::size_t index = below(members.size());
      members.erase(members.begin() + static_cast<std::ptrdiff_t>(index));
      menu->didRightClickItem(at(static_cast<std::int64_t>(index)));
      if (chance(30)) controller().refreshItems();
      ASSERT_TRUE(platform.contextMenus.choose("Remove from Orbel Menu"));
      platform.runLoop.advance(kFlagDelay);
      expectNow(ofTheUser(expected), "remove a member");
      break; // the reload may have changed the places
    }
    expectNow(ofTheUser(expected), "edit a collection");
  }
  controller().collectionWindowControllerShouldClose(*controller().collectionController());
  platform.runLoop.advance(kReloadDelay);
  expectNow(ofTheUser(expected), "close a collection");
}

void RandomEditsTest::keep() {
  const auto running = placesOf("running");
  if (running.empty()) return;
  Entries expected = shownEntries();
  const std::size_t place = running[below(running.size())];
  const auto item = std::dynamic_pointer_cast<RunningAppMenuItem>(controller().menuItems()[place]);
  const std::string bundle = *item->app()->bundlePath();
  choose(place, "Keep in Orbel Menu");
  if (chance(20)) {
    if (chance(50)) {
      EXPECT_FALSE(platform.dialogs.answerPanel("/apps/other.desktop"));
    }
    platform.dialogs.answerPanel(std::nullopt);
  } else {
    expected[place] = {"AppMenuItem", bundle.substr(bundle.rfind('/') + 1), {}};
    platform.dialogs.answerPanel(bundle);
  }
  expectNow(ofTheUser(expected), "keep");
}

void RandomEditsTest::programsComeAndGo() {
  const Entries expected = ofTheUser(shownEntries());
  if (platform.workspace.running.size() < 4 && chance(60)) {
    const std::string name = freshName("program");
    platform.workspace.launch(100 + m_counter, name, "/apps/" + name + ".desktop");
  } else if (!platform.workspace.running.empty()) {
    platform.workspace.terminate(
        platform.workspace.running[below(platform.workspace.running.size())]->processIdentifier());
  }
  EXPECT_EQ(ofTheUser(shownEntries()), expected);
}

void RandomEditsTest::reload() {
  const Entries expected = ofTheUser(shownEntries());
  if (chance(50)) AppSettings::sharedInstance().setShowRunningApps(chance(70));
  shown();
  expectNow(expected, "reload");
}

void RandomEditsTest::edit() {
  using Edit = void (RandomEditsTest::*)();
  static constexpr Edit kKinds[] = {&RandomEditsTest::move,
                                    &RandomEditsTest::dragByHand,
                                    &RandomEditsTest::dragByHand,
                                    &RandomEditsTest::dropOnItem,
                                    &RandomEditsTest::remove,
                                    &RandomEditsTest::rename,
                                    &RandomEditsTest::makeCollection,
                                    &RandomEditsTest::ungroup,
                                    &RandomEditsTest::dropFilesBetween,
                                    &RandomEditsTest::editCollection,
                                    &RandomEditsTest::dropFilesOnItem,
                                    &RandomEditsTest::keep,
                                    &RandomEditsTest::remove,
                                    &RandomEditsTest::programsComeAndGo,
                                    &RandomEditsTest::reload};
  (this->*kKinds[below(std::size(kKinds))])();
}

TEST_P(RandomEditsTest, LoseAndDoubleNothingAndAreStoredAsShown) {
  store({storedCore("Finder"), storedCore("Mail"), storedFile("/letter.txt", "letter.txt"),
         storedApp("/apps/editor.desktop", "editor.desktop"),
         storedCollection("Work", {storedCore("Safari"), storedFile("/plan.txt", "plan.txt")}),
         storedCollection("Nested", {storedCollection("Inner", {storedCore("iTunes")})}),
         storedCollection("Empty", {})});
  shown();
  for (int number = 0; number < kEdits && !HasFatalFailure() && !HasFailure(); ++number) {
    SCOPED_TRACE("edit " + std::to_string(number));
    edit();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEditsTest, testing::Values(1u, 2u));

} // namespace
} // namespace orbel
