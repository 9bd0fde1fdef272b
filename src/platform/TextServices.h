// What needs knowledge of languages and characters. Strings are UTF-8. Called by everything that shows a text
// (items, context menus, prompts, settings) and by the shortcut value. Main thread only.
#pragma once

#include <string>
#include <string_view>

namespace orbel {

class TextServices {
public:
  virtual ~TextServices() = default;
  // Negative, zero or positive, by the user's locale, without regard to case.
  virtual int compareLocalizedCaseInsensitive(std::string_view left, std::string_view right) const = 0;
  virtual std::string uppercased(std::string_view text) const = 0;
  virtual std::string lowercased(std::string_view text) const = 0;
  // Every character is alphanumeric, punctuation or a symbol (Unicode categories L, M, N, P, S). True for
  // no characters.
  virtual bool isAlphanumericPunctuationOrSymbol(std::string_view text) const = 0;
  // The user's language for an English text of ours; the text itself where there is no translation.
  virtual std::string localized(std::string_view english) const = 0;
};

} // namespace orbel
