#include "foundation/XmlPropertyListScan.h"

#include "foundation/PropertyListGuard.h"

#include <algorithm>
#include <array>

namespace orbel {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// Elements that hold text and no other element.
bool isTextElement(std::string_view name) {
  constexpr std::array<std::string_view, 6> kNames = {"key", "string", "integer", "real", "date", "data"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

bool isContainer(std::string_view name) {
  return name != "plist" && name != "true" && name != "false" && !isTextElement(name);
}

bool hasOpenQuote(std::string_view text) {
  return std::count(text.begin(), text.end(), '"') % 2 != 0 ||
         std::count(text.begin(), text.end(), '\'') % 2 != 0;
}

} // namespace

std::optional<std::string> XmlPropertyListScan::objection() {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (m_text.starts_with(kByteOrderMark)) m_text.remove_prefix(kByteOrderMark.size());
  const std::size_t first = m_text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos || m_text[first] != '<') return "it is no property list";
  for (std::size_t tag = first; tag != std::string_view::npos; tag = m_text.find('<')) {
    m_text.remove_prefix(tag);
    if (auto cause = scanTag()) return cause;
  }
  if (!m_open.empty()) return "it is cut off inside <" + std::string(m_open.back()) + ">";
  if (!m_hasValue) return "it is no property list";
  return std::nullopt;
}

std::optional<std::string> XmlPropertyListScan::scanTag() {
  if (m_text.starts_with("<!")) return scanDeclaration();
  if (m_text.starts_with("<?")) return skipPast("?>", "a processing instruction");
  const std::size_t end = m_text.find('>');
  if (end == std::string_view::npos) return "it is cut off inside a tag";
  std::string_view tag = m_text.substr(1, end - 1);
  m_text.remove_prefix(end + 1);
  if (tag.find('<') != std::string_view::npos || hasOpenQuote(tag)) return "a tag in it is malformed";
  const bool isClosing = tag.starts_with('/');
  if (isClosing) tag.remove_prefix(1);
  const bool isEmptyElement = !isClosing && tag.ends_with('/');
  if (isEmptyElement) tag.remove_suffix(1);
  const std::string_view name = tag.substr(0, tag.find_first_of(kBlanks));
  if (name.empty()) return "a tag in it is malformed";
  if (isClosing) return close(name);
  if (auto cause = open(name)) return cause;
  return isEmptyElement ? close(name) : std::nullopt;
}

std::optional<std::string> XmlPropertyListScan::scanDeclaration() {
  if (m_text.starts_with("<!--")) return skipComment();
  if (m_text.starts_with("<![CDATA[")) {
    if (!isInsideText()) return "character data in it stands outside of a text";
    return skipPast("]]>", "character data");
  }
  if (!m_text.starts_with("<!DOCTYPE")) return "a declaration in it is unknown";
  const std::size_t end = m_text.find('>');
  // An internal subset could define entities that expand without end; no property list has one.
  if (m_text.substr(0, end).find('[') != std::string_view::npos) return "its document type has declarations";
  return skipPast(">", "the document type");
}

std::optional<std::string> XmlPropertyListScan::skipComment() {
  constexpr std::size_t kOpening = 4;
  const std::size_t end = m_text.find("-->", 2);
  if (end == std::string_view::npos) return "it is cut off inside a comment";
  if (end < kOpening) return "a comment in it is malformed";
  if (isInsideText() && m_text.substr(kOpening, end - kOpening).find('<') != std::string_view::npos) {
    return "a tag in it is hidden in a comment";
  }
  m_text.remove_prefix(end + 3);
  return std::nullopt;
}

std::optional<std::string> XmlPropertyListScan::skipPast(std::string_view end, std::string_view what) {
  const std::size_t position = m_text.find(end);
  if (position == std::string_view::npos) return "it is cut off inside " + std::string(what);
  if (end != "]]>" && hasOpenQuote(m_text.substr(0, position)))
    return std::string(what) + " in it is malformed";
  m_text.remove_prefix(position + end.size());
  return std::nullopt;
}

std::optional<std::string> XmlPropertyListScan::open(std::string_view name) {
  if (isInsideText()) return "a text in it holds <" + std::string(name) + ">";
  m_open.push_back(name);
  if (name == "plist") {
    if (m_open.size() > 1) return "a value in it holds <plist>";
    return std::nullopt;
  }
  const bool isTop = m_open.size() == 1 || (m_open.size() == 2 && m_open.front() == "plist");
  // The library nests a second value into the first one.
  if (isTop && m_hasValue) return "it holds more than one value";
  m_hasValue = true;
  if (++m_valueCount > PropertyListGuard::kMaximumValueCount) return "it has more than 1,000,000 values";
  if (isContainer(name) && ++m_depth > PropertyListGuard::kMaximumDepth)
    return "it is nested more than 512 deep";
  return std::nullopt;
}

std::optional<std::string> XmlPropertyListScan::close(std::string_view name) {
  if (m_open.empty() || m_open.back() != name) return "</" + std::string(name) + "> in it closes nothing";
  m_open.pop_back();
  if (isContainer(name)) --m_depth;
  return std::nullopt;
}

bool XmlPropertyListScan::isInsideText() const {
  return !m_open.empty() && isTextElement(m_open.back());
}

} // namespace orbel
