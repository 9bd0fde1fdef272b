// A place in the file system that is found again through a bookmark; what file and application items have in
// common. There is no security scope to start and stop around an access here: a process may reach what its
// user may.
#pragma once

#include "foundation/PropertyList.h"
#include "scene/Image.h"

#include <optional>
#include <string>

namespace orbel {

class BookmarkedTarget {
public:
  BookmarkedTarget() = default;

  // A new bookmark of an absolute path, resolved at once. Errors are ignored: the path is then none.
  static BookmarkedTarget withPath(const std::string& path);

  // Reads a bookmark from an item dictionary. An error is logged; a stale bookmark is made anew, so the next
  // write stores the fresh one. Anything but data counts as an empty bookmark, which resolves to an error.
  static BookmarkedTarget withDictionaryRepresentation(const PropertyList& dictionary);

  const PropertyList::Data& bookmarkData() const { return m_bookmarkData; }
  // The absolute path the bookmark resolved to; none when that failed.
  const std::optional<std::string>& path() const { return m_path; }
  // Resolving failed.
  bool isUnreachable() const { return m_isUnreachable; }

  // The workspace's icon of the path, kept in the image cache under the identity. A target without a path has
  // a generic one.
  ImagePointer icon(const std::string& identity) const;

private:
  void renewBookmark();

  PropertyList::Data m_bookmarkData;
  std::optional<std::string> m_path;
  bool m_isUnreachable = false;
};

} // namespace orbel
