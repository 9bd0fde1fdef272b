// Which application opens what, as the desktop's content types and the user's choices say. Paths are those of
// desktop entries. No state; asked by the workspace.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orbel::linux {

class DefaultApplications {
public:
  static std::optional<std::string> forFile(const std::string& path);
  // The default first, then the others in the desktop's order.
  static std::vector<std::string> allForFile(const std::string& path);
  static std::optional<std::string> forContentType(const std::string& contentType);
  // By the URL's scheme; nothing for text without one.
  static std::optional<std::string> forUrl(const std::string& url);

  // "text/plain", "inode/directory", ...; nothing when the file cannot be looked at.
  static std::optional<std::string> contentType(const std::string& path);
  static std::string uriForPath(const std::string& path);
};

} // namespace orbel::linux
