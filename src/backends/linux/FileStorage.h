// Reading and replacing whole files so that a crash or a full disk never costs the old content. Also what
// paths lead to. Paths are absolute. Causes are readable, for the log. Used by the classes of this folder.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Result.h"

#include <cstddef>
#include <optional>
#include <string>

namespace orbel::linux {

class FileStorage {
public:
  enum class Outcome { read, missing, refused, tooLarge };
  struct Content {
    Outcome outcome = Outcome::missing;
    PropertyList::Data bytes; // only when read
    std::string cause; // when refused (no permission, not an ordinary file, a broken disk) or too large
  };

  // An ordinary file of at most that many bytes. Never blocks on a pipe or device.
  static Content read(const std::string& path, std::size_t limit);

  // A new file of mode 0600 takes the name in one step, once its bytes are on the disk. After a failure the
  // old file is as it was. A file that may not be written is not replaced either.
  static Result<> replace(const std::string& path, const PropertyList::Data& bytes);

  enum class Replacement { done, overtaken };
  // Like replace(), for a file that other programs write, too: only while it is as expected (nothing: while
  // there is none). Overtaken by another program, which may be at it in this very moment, it leaves that
  // program's file at its place.
  static Result<Replacement> replaceIfStill(const std::string& path,
                                            const std::optional<PropertyList::Data>& expected,
                                            const PropertyList::Data& bytes);

  // The file that a chain of symbolic links leads to, existing or not; the path itself when it is no link.
  static std::string followLinks(const std::string& path);

  // The path without any symbolic link in it; the path itself when nothing is there.
  static std::string withoutLinks(const std::string& path);

  // Folder and the missing ones above it, mode 0700.
  static Result<> makeFolder(const std::string& folder);

  static std::string folderOf(const std::string& path);
  static std::string nameOf(const std::string& path);
};

} // namespace orbel::linux
