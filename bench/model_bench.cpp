// Reading the user's items: what a stored list of 10,000 costs from the bytes of the preferences file to the
// items, with real bookmarks of real files, and the floors beside it.
#include "backends/linux/Bookmarks.h"
#include "backends/linux/DesktopEntryIndex.h"
#include "foundation/PropertyListCoder.h"
#include "model/MenuItem.h"
#include "tests/doubles/FakePlatform.h"

#include <benchmark/benchmark.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace orbel {
namespace {

// Files of its own in a folder that is removed with it.
class FolderOfFiles {
public:
  explicit FolderOfFiles(std::int64_t count) {
    std::string pattern = (std::filesystem::temp_directory_path() / "model_bench.XXXXXX").string();
    if (const char* made = ::mkdtemp(pattern.data())) m_folder = made;
    for (std::int64_t index = 0; index < count; ++index) {
      paths.push_back((m_folder / ("file " + std::to_string(index))).string());
      std::ofstream(paths.back()).put('x');
    }
  }
  ~FolderOfFiles() {
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
  }
  std::vector<std::string> paths;

private:
  std::filesystem::path m_folder;
};

class StoredItems {
public:
  explicit StoredItems(std::int64_t count) : m_folder(count) {
    Platform::setCurrent(&m_withBookmarks);
    PropertyList::List list;
    for (const std::string& path : m_folder.paths) {
      const char* className = list.size() % 2 == 0 ? "FileMenuItem" : "AppMenuItem";
      list.push_back(PropertyList::Dictionary{{"class", className},
                                              {"name", "An item"},
                                              {"bookmarkData", m_workspace.makeBookmark(path).value()}});
    }
    stored = std::move(list);
  }
  const std::vector<std::string>& paths() const { return m_folder.paths; }

  MenuItemList read() const {
    MenuItemList items;
    for (const PropertyList& dictionary : *stored.list()) {
      if (auto item = MenuItem::withDictionaryRepresentation(dictionary)) items.push_back(std::move(item));
    }
    return items;
  }

private:
  class WorkspaceWithBookmarks : public FakeWorkspace {
  public:
    Result<PropertyList::Data> makeBookmark(const std::string& path) const override {
      return m_bookmarks.make(path);
    }
    Result<ResolvedBookmark> resolveBookmark(const PropertyList::Data& data) const override {
      return m_bookmarks.resolve(data);
    }

  private:
    linux::DesktopEntryIndex m_entries;
    linux::Bookmarks m_bookmarks{m_entries};
  };

  FolderOfFiles m_folder;
  FakePlatform m_doubles;
  WorkspaceWithBookmarks m_workspace;
  Platform m_withBookmarks{m_doubles.runLoop,
                           m_workspace,
                           m_doubles.preferences,
                           m_doubles.windows,
                           m_doubles.graphics,
                           m_doubles.text,
                           m_doubles.hotKeys,
                           m_doubles.keyboardLayout,
                           m_doubles.eventTaps,
                           m_doubles.contextMenus,
                           m_doubles.dialogs,
                           m_doubles.keyRecorder,
                           m_doubles.settingsFormFactory,
                           m_doubles.videoPlayerFactory,
                           m_doubles.statusBar,
                           m_doubles.loginItem,
                           m_doubles.userNotifications};

public:
  PropertyList stored;
};

constexpr std::int64_t kCount = 10'000;

// The figure that counts: at most 100 ms for 10,000 items.
void readingTheStoredList(benchmark::State& state) {
  const StoredItems items(state.range(0));
  if (items.read().size() != static_cast<std::size_t>(state.range(0)))
    state.SkipWithError("items were not read");
  for (auto _ : state)
    benchmark::DoNotOptimize(items.read());
}
BENCHMARK(readingTheStoredList)->Arg(40)->Arg(kCount)->Unit(benchmark::kMillisecond);

// Once a start, and after a change of the file from outside.
void decodingThePreferencesFile(benchmark::State& state) {
  const StoredItems items(state.range(0));
  const auto bytes = PropertyListCoder::write(PropertyList::Dictionary{{"menuItems", items.stored}},
                                              PropertyListCoder::Format::xml);
  for (auto _ : state)
    benchmark::DoNotOptimize(PropertyListCoder::read(bytes));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(decodingThePreferencesFile)->Arg(40)->Arg(kCount)->Unit(benchmark::kMillisecond);

// Floor: no item is known without asking the file system whether its target is there.
void floorOneLookUpAFile(benchmark::State& state) {
  const StoredItems items(state.range(0));
  for (auto _ : state) {
    for (const std::string& path : items.paths()) {
      struct stat status = {};
      benchmark::DoNotOptimize(::stat(path.c_str(), &status));
    }
  }
}
BENCHMARK(floorOneLookUpAFile)->Arg(40)->Arg(kCount)->Unit(benchmark::kMillisecond);

// Floor: the values of the list are at least copied once.
void floorCopyOfTheList(benchmark::State& state) {
  const StoredItems items(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(PropertyList(items.stored));
}
BENCHMARK(floorCopyOfTheList)->Arg(40)->Arg(kCount)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orbel

BENCHMARK_MAIN();
