#include "model/FileMenuItem.h"

#include "foundation/Log.h"
#include "model/StoredItem.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace orbel {

FileMenuItem::FileMenuItem(BookmarkedTarget target, std::optional<std::string> name)
    : m_target(std::move(target)), m_name(std::move(name)) {}

std::shared_ptr<FileMenuItem> FileMenuItem::withPath(const std::string& path) {
  const std::string name = Platform::current().workspace.displayName(path);
  return std::shared_ptr<FileMenuItem>(new FileMenuItem(BookmarkedTarget::withPath(path), name));
}

std::shared_ptr<FileMenuItem> FileMenuItem::withDictionaryRepresentation(const PropertyList& dictionary) {
  return std::shared_ptr<FileMenuItem>(new FileMenuItem(
      BookmarkedTarget::withDictionaryRepresentation(dictionary), StoredItem::name(dictionary)));
}

std::string FileMenuItem::identity() const {
  return kClassName + url().value_or("");
}

ImagePointer FileMenuItem::image() const {
  return m_target.icon(identity());
}

void FileMenuItem::open() {
  if (!url()) return;
  Workspace& workspace = Platform::current().workspace;
  switch (workspace.fileKind(*url())) {
  case Workspace::FileKind::missing:
    return;
  case Workspace::FileKind::file:
    Log::warningIfFailed(workspace.openFile(*url()));
    return;
  case Workspace::FileKind::directory:
    Log::warningIfFailed(workspace.showFolder(*url()));
    return;
  }
}

std::optional<std::vector<std::string>> FileMenuItem::openWithAppPaths() const {
  std::vector<std::string> paths;
  if (!url()) return paths;
  const Platform& platform = Platform::current();
  const auto defaultPath = platform.workspace.defaultApplicationForFile(*url());

  struct Candidate {
    std::string path;
    std::string displayName;
  };
  std::vector<Candidate> candidates;
  for (auto& path : platform.workspace.applicationsForFile(*url())) {
    if (path == defaultPath) continue;
    std::string displayName = platform.workspace.displayName(path);
    candidates.push_back({std::move(path), std::move(displayName)});
  }
  std::stable_sort(candidates.begin(), candidates.end(), [&](const Candidate& left, const Candidate& right) {
    return platform.text.compareLocalizedCaseInsensitive(left.displayName, right.displayName) < 0;
  });

  if (defaultPath) paths.push_back(*defaultPath);
  for (auto& candidate : candidates)
    paths.push_back(std::move(candidate.path));
  return paths;
}

void FileMenuItem::openWithAppPath(const std::string& appPath) {
  if (url()) Log::warningIfFailed(Platform::current().workspace.openFileWithApplication(*url(), appPath));
}

std::optional<PropertyList> FileMenuItem::dictionaryRepresentation() const {
  auto dictionary = StoredItem::dictionary(kClassName, m_name);
  dictionary.emplace(StoredItem::kBookmarkDataKey, bookmarkData());
  return dictionary;
}

} // namespace orbel
