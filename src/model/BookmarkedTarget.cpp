#include "model/BookmarkedTarget.h"

#include "foundation/Log.h"
#include "model/ImageCache.h"
#include "model/StoredItem.h"
#include "platform/Platform.h"

#include <utility>

namespace orbel {

namespace {
// The empty path leads nowhere, and as a prefix it would match every other.
std::optional<std::string> meaningful(std::optional<std::string> path) {
  return path && !path->empty() ? std::move(path) : std::nullopt;
}
} // namespace

BookmarkedTarget BookmarkedTarget::withPath(const std::string& path) {
  const Workspace& workspace = Platform::current().workspace;
  BookmarkedTarget target;
  target.m_bookmarkData = workspace.makeBookmark(path, nullptr);
  target.m_path = meaningful(workspace.resolveBookmark(target.m_bookmarkData).path);
  return target;
}

BookmarkedTarget BookmarkedTarget::withDictionaryRepresentation(const PropertyList& dictionary) {
  const Workspace& workspace = Platform::current().workspace;
  BookmarkedTarget target;
  const PropertyList* stored = dictionary.find(StoredItem::kBookmarkDataKey);
  if (stored && stored->data()) target.m_bookmarkData = *stored->data();
  ResolvedBookmark resolved = workspace.resolveBookmark(target.m_bookmarkData);
  target.m_path = meaningful(std::move(resolved.path));
  target.m_isUnreachable = resolved.error && !target.m_path;
  if (resolved.error) Log::warning(resolved.error->cause);
  if (resolved.isStale && target.m_path) target.renewBookmark();
  return target;
}

void BookmarkedTarget::renewBookmark() {
  std::optional<WorkspaceError> error;
  auto fresh = Platform::current().workspace.makeBookmark(*m_path, &error);
  if (error) Log::warning(error->cause);
  // A stale bookmark still leads to its target; an empty one would lose it.
  if (!fresh.empty()) m_bookmarkData = std::move(fresh);
}

ImagePointer BookmarkedTarget::icon(const std::string& identity) const {
  ImageCache& cache = ImageCache::sharedCache();
  if (auto cached = cache.imageForKey(identity)) return cached;
  auto icon = Platform::current().workspace.iconForFile(m_path.value_or(""));
  if (icon) cache.storeImage(icon, identity);
  return icon;
}

} // namespace orbel
