#include "model/BookmarkedTarget.h"

#include "foundation/Log.h"
#include "model/ImageCache.h"
#include "model/StoredItem.h"
#include "platform/Platform.h"

#include <utility>

namespace orbel {

namespace {
// The empty path leads nowhere, and as a prefix it would match every other.
std::optional<std::string> meaningful(std::string path) {
  return path.empty() ? std::nullopt : std::optional(std::move(path));
}
} // namespace

BookmarkedTarget BookmarkedTarget::withPath(const std::string& path) {
  const Workspace& workspace = Platform::current().workspace;
  BookmarkedTarget target;
  target.m_bookmarkData = workspace.makeBookmark(path).valueOr({});
  if (auto resolved = workspace.resolveBookmark(target.m_bookmarkData))
    target.m_path = meaningful(std::move(resolved->path));
  return target;
}

BookmarkedTarget BookmarkedTarget::withDictionaryRepresentation(const PropertyList& dictionary) {
  const Workspace& workspace = Platform::current().workspace;
  BookmarkedTarget target;
  const PropertyList* stored = dictionary.find(StoredItem::kBookmarkDataKey);
  if (stored && stored->data()) target.m_bookmarkData = *stored->data();
  auto resolved = workspace.resolveBookmark(target.m_bookmarkData);
  if (!resolved) {
    Log::warning(resolved.cause());
    target.m_isUnreachable = true;
    return target;
  }
  if (resolved->drawback) Log::warning(resolved->drawback->cause);
  target.m_path = meaningful(std::move(resolved->path));
  if (resolved->isStale && target.m_path) target.renewBookmark();
  return target;
}

void BookmarkedTarget::renewBookmark() {
  auto fresh = Platform::current().workspace.makeBookmark(*m_path);
  Log::warningIfFailed(fresh);
  // A stale bookmark still leads to its target.
  if (fresh) m_bookmarkData = *std::move(fresh);
}

ImagePointer BookmarkedTarget::icon(const std::string& identity) const {
  ImageCache& cache = ImageCache::sharedCache();
  if (auto cached = cache.imageForKey(identity)) return cached;
  auto icon = Platform::current().workspace.iconForFile(m_path.value_or(""));
  if (icon) cache.storeImage(icon, identity);
  return icon;
}

} // namespace orbel
