// What the file system knows a file by: it survives a rename, and the birth time distinguishes it from a
// later file that was given the same inode number.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orbel::linux {

struct FileIdentity {
  std::uint64_t inode = 0;
  std::optional<std::int64_t> birthTime; // nanoseconds since 1970; none where the file system keeps none
  std::uint64_t fileSystem = 0;          // its identifier; 0 when unknown

  // Of the file itself, also of a symbolic link. None when it cannot be looked at; then errno says why.
  static std::optional<FileIdentity> ofPath(const std::string& path);
};

} // namespace orbel::linux
