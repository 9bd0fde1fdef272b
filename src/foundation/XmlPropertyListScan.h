// Follows the tags of an XML property list and stops at the limits of PropertyListGuard. It refuses what the
// library could take for something else than we do (tags hidden in comments, quotes or document types), so
// that nothing that the library nests escapes the count. No property-list writer produces any of that.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orbel {

class XmlPropertyListScan {
public:
  explicit XmlPropertyListScan(std::string_view text) : m_text(text) {}
  std::optional<std::string> objection();

private:
  using Objection = std::optional<std::string>;

  Objection scanTag();         // the text stands at '<', as in the three below
  Objection scanDeclaration(); // comment, character data, document type
  Objection skipComment();
  Objection skipPast(std::string_view end, std::string_view what);
  Objection open(std::string_view name);
  Objection close(std::string_view name);
  bool isInsideText() const;

  std::string_view m_text; // what is left
  std::vector<std::string_view> m_open;
  std::size_t m_depth = 0;
  std::size_t m_valueCount = 0;
  bool m_hasValue = false;
};

} // namespace orbel
