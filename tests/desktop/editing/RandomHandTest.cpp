// Fifty edits made by chance with mouse and keyboard on the real program, the same ones in every run. After
// each the file must hold what the edit says, and the icons must stand in the order of the file.
#include "tests/desktop/editing/EditingFixture.h"
#include "tests/desktop/editing/FileDragSource.h"
#include "tests/support/x11/WindowManagers.h"

#include "tests/support/base/TextFile.h"

#include <X11/keysym.h>
#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <random>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr int kEdits = 50;
constexpr std::uint32_t kSeed = 20;
constexpr std::size_t kFewItems = 4;
constexpr std::size_t kManyItems = 8;
constexpr DragPace kSwiftDrag{.steps = 8, .betweenSteps = 12ms, .beforeRelease = 40ms};

using Items = std::vector<StoredItem>;

bool isCollection(const StoredItem& item) {
  return item.kind == "CollectionMenuItem";
}

std::vector<std::string> census(const Items& items) {
  std::vector<std::string> names;
  for (const StoredItem& item : items) {
    names.push_back(item.kind + ' ' + item.name);
    for (const StoredItem& member : item.members)
      names.push_back(member.kind + ' ' + member.name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

class RandomHandTest : public EditingFixture {
protected:
  void SetUp() override {
    Items items;
    for (const auto& [name, color] : std::map<std::string, Rgb>{
             {"Red", kRed}, {"Green", kGreen}, {"Blue", kBlue}, {"Orange", kOrange}, {"Violet", kViolet}}) {
      items.push_back(install(name, color).item());
      m_colors[name] = color;
    }
    items.insert(items.begin() + 2, StoredItem::collection("First", {items.back()}));
    items.pop_back();
    // The programs that files are dragged out of would appear and disappear between the icons.
    m_session.preferences().setBoolean("showRunningApps", false);
    startAgent(items);
    ASSERT_TRUE(summonAt(kPlace));
  }

  std::size_t below(std::size_t count) { return m_random() % count; }
  Items stored() { return m_session.preferences().menuItems().value(); }
  ScreenPoint place(std::size_t index, std::size_t count) {
    return itemCenter(menuFrame().value(), static_cast<int>(index), static_cast<int>(count));
  }
  // One of the items that the condition holds for.
  std::optional<std::size_t> any(const Items& items, const std::function<bool(const StoredItem&)>& matches) {
    std::vector<std::size_t> places;
    for (std::size_t index = 0; index < items.size(); ++index) {
      if (matches(items[index])) places.push_back(index);
    }
    return places.empty() ? std::nullopt : std::optional(places[below(places.size())]);
  }

  // By way of the centre: some goals are where the icon already is, and that would be a click.
  void drag(ScreenPoint from, ScreenPoint to) {
    // The program reads the pointer's place when it handles the press, so it must have nothing left to do.
    m_input.movePointer(from);
    EXPECT_TRUE(waitFor([this] { return agent().menuWindows().size() == 2; }, "the title is seen"));
    m_input.beginDrag(from, kPlace, kSwiftDrag);
    m_input.glidePointer(to, kSwiftDrag.steps, kSwiftDrag.betweenSteps);
    m_input.release(PointerButton::left);
  }
  testing::AssertionResult isShownAsStored();
  testing::AssertionResult edit();

  testing::AssertionResult reorder(Items before);
  testing::AssertionResult dragIntoCollection(const Items& before);
  testing::AssertionResult remove(Items before);
  testing::AssertionResult rename(Items before);
  testing::AssertionResult makeCollection(Items before);
  testing::AssertionResult ungroup(Items before);
  testing::AssertionResult dropFile(const Items& before);
  testing::AssertionResult removeMember(Items before);

  std::mt19937 m_random{kSeed};
  int m_counter = 0;
  int m_moves = 0;
  std::map<std::string, Rgb> m_colors;
};

testing::AssertionResult RandomHandTest::isShownAsStored() {
  return waitForResult(
      [this]() -> testing::AssertionResult {
        // On a way of its own: a jump to the pixel where the pointer was last seen is no move.
        m_input.glidePointer({kPlace.x + ++m_moves % 2, kPlace.y}, 2);
        const Items items = stored();
        for (std::size_t index = 0; index < items.size(); ++index) {
          const auto color = m_colors.find(items[index].name);
          if (color == m_colors.end()) continue;
          if (const auto result = hasColor(place(index, items.size()), color->second); !result)
            return testing::AssertionFailure() << items[index] << ": " << result.message();
        }
        return isMenuShown(kPlace);
      },
      kPatience, "the icons stand in the order of the file");
}

testing::AssertionResult RandomHandTest::reorder(Items before) {
  const std::size_t from = below(before.size());
  const std::size_t neighbour = below(before.size() - 1); // counted without the dragged one
  const bool isBehind = below(2) == 0;
  const int count = static_cast<int>(before.size());
  // Well inside the first or the last quarter of the neighbour's arc, whether or not the circle has turned.
  constexpr double kInFront = 0.2;
  constexpr double kBehind = 0.95;
  const double turn = 0.5 / count - 0.5 / (count - 1);
  const double goal = turn + (static_cast<double>(neighbour) + (isBehind ? kBehind : kInFront)) / (count - 1);
  drag(place(from, before.size()), onCircle(menuFrame().value(), goal, count));
  const StoredItem moved = before[from];
  before.erase(before.begin() + static_cast<std::ptrdiff_t>(from));
  before.insert(before.begin() + static_cast<std::ptrdiff_t>(neighbour + (isBehind ? 1 : 0)), moved);
  return waitForItems(before);
}

testing::AssertionResult RandomHandTest::dragIntoCollection(const Items& before) {
  const auto target = any(before, isCollection);
  const auto dragged = any(before, [](const StoredItem& item) { return !isCollection(item); });
  if (!target || !dragged || before.size() <= kFewItems) return testing::AssertionSuccess();
  const int count = static_cast<int>(before.size());
  drag(place(*dragged, before.size()),
       targetDuringDrag(menuFrame().value(), static_cast<int>(*dragged), static_cast<int>(*target), count));
  Items expected = before;
  expected[*target].members.push_back(before[*dragged]);
  expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(*dragged));
  return waitForItems(expected);
}

testing::AssertionResult RandomHandTest::remove(Items before) {
  if (before.size() <= kFewItems) return testing::AssertionSuccess();
  const std::size_t index = below(before.size());
  const StoredItem& item = before[index];
  const int entries = isCollection(item) ? (item.members.empty() ? 2 : 3) : 1;
  // Of a file there is nothing to open it with on this desktop.
  if (const auto result = reopenContextMenuAt(place(index, before.size())); !result) return result;
  chooseEntry(entries - 1, entries);
  before.erase(before.begin() + static_cast<std::ptrdiff_t>(index));
  return waitForItems(before);
}

testing::AssertionResult RandomHandTest::rename(Items before) {
  const auto index = any(before, isCollection);
  if (!index) return testing::AssertionSuccess();
  const int entries = before[*index].members.empty() ? 2 : 3;
  if (const auto result = reopenContextMenuAt(place(*index, before.size())); !result) return result;
  chooseEntry(0, entries);
  if (const auto result = waitUntilDialogShown(); !result) return result;
  const bool isCancelled = below(4) == 0;
  const std::string name = "Box & " + std::to_string(++m_counter);
  m_input.typeText(name);
  m_input.typeKey(isCancelled ? XK_Escape : XK_Return);
  if (!isCancelled) before[*index].name = name;
  if (const auto result = waitUntilDialogGone(); !result) return result;
  return waitForItems(before);
}

testing::AssertionResult RandomHandTest::makeCollection(Items before) {
  if (before.size() >= kManyItems) return remove(std::move(before));
  const std::size_t index = below(before.size());
  // In the direction of an icon, beyond its corner and still on the disc.
  const ScreenPoint icon = place(index, before.size());
  const ScreenPoint middle = menuFrame().value().center();
  constexpr double kTowardsTheRim = 1.605;
  const ScreenPoint gap{middle.x + static_cast<int>(kTowardsTheRim * (icon.x - middle.x)),
                        middle.y + static_cast<int>(kTowardsTheRim * (icon.y - middle.y))};
  if (const auto result = reopenContextMenuAt(gap); !result) return result;
  chooseEntry(0, 1);
  if (const auto result = waitUntilDialogShown(); !result) return result;
  const std::string name = "Collection " + std::to_string(++m_counter);
  m_input.typeText(name);
  m_input.typeKey(XK_Return);
  if (const auto result = waitUntilDialogGone(); !result) return result;
  before.insert(before.begin() + static_cast<std::ptrdiff_t>(index), StoredItem::collection(name, {}));
  return waitForItems(before);
}

testing::AssertionResult RandomHandTest::ungroup(Items before) {
  const auto index =
      any(before, [](const StoredItem& item) { return isCollection(item) && !item.members.empty(); });
  if (!index || before.size() + before[*index].members.size() > kManyItems)
    return testing::AssertionSuccess();
  if (const auto result = reopenContextMenuAt(place(*index, before.size())); !result) return result;
  chooseEntry(1, 3);
  const Items members = before[*index].members;
  const auto position = before.erase(before.begin() + static_cast<std::ptrdiff_t>(*index));
  before.insert(position, members.begin(), members.end());
  return waitForItems(before);
}

testing::AssertionResult RandomHandTest::dropFile(const Items& before) {
  if (before.size() >= kManyItems) return remove(before);
  const auto file = m_session.home() / ("note " + std::to_string(++m_counter) + ".unknown");
  writeFile(file, std::string("\0\1", 2));
  const FileDragSource source(m_session, {FileDragSource::uriOf(file)}, {60, 700});
  const std::size_t index = below(before.size());
  const int count = static_cast<int>(before.size());
  m_input.beginDrag(source.grip(), inFrontOfItem(menuFrame().value(), static_cast<int>(index), count),
                    kSwiftDrag);
  if (const auto result = source.waitForStatus("copy"); !result) return result;
  m_input.release(PointerButton::left);
  if (const auto result = source.waitUntilFinished("copy"); !result) return result;
  auto expected = census(before);
  expected.push_back("FileMenuItem " + file.filename().string());
  std::sort(expected.begin(), expected.end());
  return waitFor([&] { return census(stored()) == expected; }, "the file is there and nothing else changed");
}

testing::AssertionResult RandomHandTest::removeMember(Items before) {
  const auto index =
      any(before, [](const StoredItem& item) { return isCollection(item) && !item.members.empty(); });
  if (!index) return testing::AssertionSuccess();
  auto& members = before[*index].members;
  m_input.clickAt(place(*index, before.size()));
  if (const auto result = waitUntilCollectionShown(); !result) return result;
  const ScreenRect frame = collectionFrame().value();
  const std::size_t member = below(members.size());
  const auto memberPlace = itemCenter(frame, static_cast<int>(member), static_cast<int>(members.size()));
  if (const auto result = reopenContextMenuAt(memberPlace); !result) return result;
  chooseEntry(0, 1);
  members.erase(members.begin() + static_cast<std::ptrdiff_t>(member));
  if (const auto result = waitForItems(before); !result) return result;
  if (const auto result = waitUntilContextMenuGone(); !result) return result;
  m_input.clickAt(frame.center());
  if (const auto result = waitUntilCollectionHidden(); !result) return result;
  // The main menu is about to reload, which would end a drag.
  return holdsFor([this] { return static_cast<bool>(isMenuShown(kPlace)); }, 450ms, "the main menu stays");
}

testing::AssertionResult RandomHandTest::edit() {
  const Items before = stored();
  switch (below(10)) {
  case 0:
  case 1:
  case 2:
    return reorder(before);
  case 3:
  case 4:
    return dragIntoCollection(before);
  case 5:
    return remove(before);
  case 6:
    return rename(before);
  case 7:
    return makeCollection(before);
  case 8:
    return below(2) == 0 ? ungroup(before) : removeMember(before);
  default:
    return dropFile(before);
  }
}

TEST_F(RandomHandTest, FiftyEditsByMouseAndKeyboardAreStoredAsTheyAreSeen) {
  for (int number = 0; number < kEdits; ++number) {
    auto result = edit();
    if (result) result = isShownAsStored();
    if (!result) savePicture("failed");
    ASSERT_TRUE(result) << "edit " << number;
  }
  saveSettledPicture("after fifty");
  // As a reader of property lists that is none of ours sees it.
  const RunResult read =
      m_session.run({"python3", "-c",
                     "import plistlib, sys; print(len(plistlib.load(open(sys.argv[1], 'rb'))['menuItems']))",
                     m_session.preferences().path().string()});
  EXPECT_EQ(read.output, std::to_string(stored().size()) + '\n') << read.errors;
}

} // namespace
