// Makes text from outside (file names, stored strings, window titles) fit to be shown and stored as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace orbel {

class Utf8 {
public:
  // Each byte that belongs to no well-formed character becomes U+FFFD. Well-formed text comes back as it was.
  static std::string repaired(std::string_view text);

  // The same, and the characters that no XML document may hold (NUL, most other control characters, U+FFFE
  // and U+FFFF) become U+FFFD too.
  static std::string repairedForXml(std::string_view text);

private:
  enum class Controls { kept, replaced };
  static std::string repaired(std::string_view text, Controls controls);
};

} // namespace orbel
