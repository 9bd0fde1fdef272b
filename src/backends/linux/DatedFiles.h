// Files whose names carry the moment at which they were put away: "<prefix>YYYYMMDDTHHMMSS<suffix>", local
// time. Prefixes are absolute paths up to the time stamp. Used by the preferences file.
#pragma once

#include "foundation/Result.h"

#include <string>
#include <vector>

namespace orbel::linux {

class DatedFiles {
public:
  // A name that nothing has yet: that of this second, or of the first free one after it.
  static std::string freePath(const std::string& prefix, const std::string& suffix);
  // Those that are there, the one that was written first at the front; none where the folder cannot
  // be listed.
  static std::vector<std::string> existing(const std::string& prefix, const std::string& suffix);

  struct Aside {
    std::string path; // where the content is now
    bool isFirstNameKept = false;
  };
  // Gives the file's content a dated name beside it. The first name stays, so that a replacement can take it
  // in one step; where the file system has no second names the file moves.
  static Result<Aside> keepAside(const std::string& path, const std::string& suffix);
};

} // namespace orbel::linux
