#include "backends/linux/Bookmarks.h"

#include "backends/linux/FileIdentity.h"
#include "backends/linux/FileStorage.h"
#include "foundation/PropertyListCoder.h"

#include <dirent.h>
#include <glib.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

namespace orbel::linux {

namespace {

struct Content {
  std::string path;
  std::optional<std::uint64_t> inode;
  std::optional<std::int64_t> birthTime;
  std::optional<std::uint64_t> fileSystem;
  std::string desktopEntry;
};

std::optional<std::int64_t> integer(const PropertyList& bookmark, const char* key) {
  const PropertyList* value = bookmark.find(key);
  const std::int64_t* number = value ? value->integer() : nullptr;
  return number ? std::optional(*number) : std::nullopt;
}

std::optional<std::uint64_t> bits(const PropertyList& bookmark, const char* key) {
  const auto number = integer(bookmark, key);
  return number ? std::optional(static_cast<std::uint64_t>(*number)) : std::nullopt;
}

// Text in a property list is UTF-8, a file's name may be anything: other paths are stored as data.
PropertyList storedPath(const std::string& path) {
  if (g_utf8_validate(path.data(), static_cast<gssize>(path.size()), nullptr)) return path;
  const auto* bytes = reinterpret_cast<const std::byte*>(path.data());
  return PropertyList::Data(bytes, bytes + path.size());
}

std::string pathIn(const PropertyList& bookmark) {
  const PropertyList* value = bookmark.find("path");
  if (!value) return {};
  if (const std::string* text = value->string()) return *text;
  if (const PropertyList::Data* data = value->data()) {
    return std::string(reinterpret_cast<const char*>(data->data()), data->size());
  }
  return {};
}

Result<Content> decode(const PropertyList::Data& data) {
  const auto bookmark = PropertyListCoder::read(data);
  if (!bookmark) return Failure{"the bookmark cannot be read: " + bookmark.cause()};
  Content content;
  content.path = pathIn(*bookmark);
  if (content.path.empty() || content.path.front() != '/' || content.path.find('\0') != std::string::npos)
    return Failure{"the bookmark holds no absolute path"};
  content.inode = bits(*bookmark, "inode");
  content.birthTime = integer(*bookmark, "birthTime");
  content.fileSystem = bits(*bookmark, "fileSystem");
  if (const PropertyList* entry = bookmark->find("desktopEntry"); entry && entry->string()) {
    content.desktopEntry = *entry->string();
  }
  return content;
}

bool isOtherFile(const Content& content, const FileIdentity& present) {
  if (content.inode && *content.inode != present.inode) return true;
  return content.birthTime && present.birthTime && *content.birthTime != *present.birthTime;
}

// An inode number that becomes free is given to the next file at once, so only together with the birth time
// it counts.
std::optional<std::string> renamedInFolder(const Content& content, const std::string& folder) {
  if (!content.inode || !content.birthTime) return std::nullopt;
  struct Close {
    void operator()(DIR* open) const { ::closedir(open); }
  };
  const std::unique_ptr<DIR, Close> entries(::opendir(folder.c_str()));
  if (!entries) return std::nullopt;
  while (const dirent* entry = ::readdir(entries.get())) {
    if (entry->d_ino != *content.inode || std::strcmp(entry->d_name, ".") == 0 ||
        std::strcmp(entry->d_name, "..") == 0) {
      continue;
    }
    const std::string path = (folder == "/" ? "" : folder) + "/" + entry->d_name;
    const auto present = FileIdentity::ofPath(path);
    if (present && present->birthTime == content.birthTime &&
        (!content.fileSystem || *content.fileSystem == present->fileSystem)) {
      return path;
    }
  }
  return std::nullopt;
}

// Whether nothing can be said about the file now: its disk is not mounted, its folder removed or not readable
// for us. The folder in which a disk is mounted remains without the disk, but then belongs to another
// file system.
bool isOutOfReach(const Content& content, const std::string& folder, int error) {
  if (error != ENOENT) return true;
  const auto parent = FileIdentity::ofPath(folder + "/."); // what a link to a folder leads to
  return !parent || (content.fileSystem && *content.fileSystem != parent->fileSystem);
}

} // namespace

Result<PropertyList::Data> Bookmarks::make(const std::string& path) const {
  std::string target = path;
  while (target.size() > 1 && target.ends_with('/'))
    target.pop_back();
  if (target.empty() || target.front() != '/')
    return Failure{"no bookmark of \"" + path + "\": it is no absolute path"};
  const auto identity = FileIdentity::ofPath(target);
  if (!identity) return Failure{"no bookmark of " + target + ": " + std::strerror(errno)};

  PropertyList::Dictionary bookmark;
  bookmark["path"] = storedPath(target);
  bookmark["inode"] = static_cast<std::int64_t>(identity->inode);
  if (identity->birthTime) bookmark["birthTime"] = *identity->birthTime;
  if (identity->fileSystem != 0) bookmark["fileSystem"] = static_cast<std::int64_t>(identity->fileSystem);
  if (const std::string entry = DesktopEntryIndex::identifierForPath(target); !entry.empty()) {
    bookmark["desktopEntry"] = entry;
  }
  return PropertyListCoder::write(std::move(bookmark), PropertyListCoder::Format::binary);
}

Result<ResolvedBookmark> Bookmarks::resolve(const PropertyList::Data& bookmark) const {
  const auto content = decode(bookmark);
  if (!content) return content.failure();

  if (const auto present = FileIdentity::ofPath(content->path))
    return ResolvedBookmark{content->path, isOtherFile(*content, *present), {}};
  const int error = errno;
  const std::string folder = FileStorage::folderOf(content->path);
  if (auto renamed = renamedInFolder(*content, folder))
    return ResolvedBookmark{*std::move(renamed), true, {}};
  if (const DesktopEntry* entry = m_entries.withIdentifier(content->desktopEntry))
    return ResolvedBookmark{entry->path, true, {}};
  if (isOutOfReach(*content, folder, error)) return ResolvedBookmark{content->path, false, {}};
  return Failure{content->path + " does not exist any more"};
}

} // namespace orbel::linux
