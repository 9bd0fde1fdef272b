// Bookmarks of files: where a file was and what distinguishes it from another, so that it is found again
// after a rename. A bookmark is a binary property-list dictionary with "path" and, where known, "inode",
// "birthTime" (nanoseconds since 1970), "fileSystem" and "desktopEntry" (identifier). One that holds the path
// alone is a bookmark too.
#pragma once

#include "backends/linux/DesktopEntryIndex.h"
#include "platform/Workspace.h"

#include <string>

namespace orbel::linux {

class Bookmarks {
public:
  explicit Bookmarks(const DesktopEntryIndex& entries) : m_entries(entries) {}

  // Fails for a path that is not absolute or where there is nothing.
  Result<PropertyList::Data> make(const std::string& path) const;

  // In this order: the path if something is there (stale when it is another file by now); the same file under
  // another name in the same folder; the same desktop entry in another data folder (both stale); the plain
  // path when its folder or file system is not there at present or may not be looked into. Fails when none of
  // these is to be had.
  Result<ResolvedBookmark> resolve(const PropertyList::Data& bookmark) const;

private:
  const DesktopEntryIndex& m_entries;
};

} // namespace orbel::linux
