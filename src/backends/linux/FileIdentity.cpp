#include "backends/linux/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <cstring>

namespace orbel::linux {

namespace {
std::uint64_t fileSystemOf(const std::string& path) {
  struct statfs status {};
  if (::statfs(path.c_str(), &status) != 0) return 0;
  std::uint64_t identifier = 0;
  static_assert(sizeof status.f_fsid == sizeof identifier);
  std::memcpy(&identifier, &status.f_fsid, sizeof identifier);
  return identifier;
}
} // namespace

std::optional<FileIdentity> FileIdentity::ofPath(const std::string& path) {
  struct statx status {};
  if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_INO | STATX_BTIME | STATX_TYPE, &status) !=
      0) {
    return std::nullopt;
  }
  FileIdentity identity;
  identity.inode = status.stx_ino;
  if ((status.stx_mask & STATX_BTIME) != 0) {
    identity.birthTime = status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec;
  }
  // statfs follows a link; the link itself lies in its folder.
  const bool isLink = S_ISLNK(status.stx_mode);
  identity.fileSystem = fileSystemOf(isLink ? path.substr(0, path.rfind('/') + 1) : path);
  return identity;
}

} // namespace orbel::linux
