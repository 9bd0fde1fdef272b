#include "backends/linux/EnvCommand.h"

#include "backends/linux/FileStorage.h"

#include <glib.h>

#include <cstddef>
#include <deque>
#include <iterator>
#include <optional>
#include <utility>

namespace orbel::linux {

namespace {

using Words = std::deque<std::string>;

enum class Option { none, unset, folder, split };

Option optionOf(char letter) {
  switch (letter) {
  case 'u':
    return Option::unset;
  case 'C':
    return Option::folder;
  case 'S':
    return Option::split;
  default:
    return Option::none;
  }
}

// Long ones may be shortened as far as they stay unique.
Option optionOf(const std::string& name) {
  const auto means = [&](const std::string& whole) { return name.size() > 2 && whole.starts_with(name); };
  if (means("--unset")) return Option::unset;
  if (means("--chdir")) return Option::folder;
  if (means("--split-string")) return Option::split;
  return Option::none;
}

std::string takeFirst(Words& words) {
  if (words.empty()) return {};
  std::string first = std::move(words.front());
  words.pop_front();
  return first;
}

void putBefore(Words& words, const std::string& text) {
  int count = 0;
  char** parsed = nullptr;
  if (!g_shell_parse_argv(text.c_str(), &count, &parsed, nullptr)) return;
  words.insert(words.begin(), parsed, parsed + count);
  g_strfreev(parsed);
}

// What follows the option's word is its value when the word does not hold that itself.
void apply(Option option, std::optional<std::string> value, Words& words, std::string& folder) {
  if (option == Option::none) return;
  if (!value) value = takeFirst(words);
  if (option == Option::folder) folder = *value;
  if (option == Option::split) putBefore(words, *value);
}

void applyLong(const std::string& word, Words& words, std::string& folder) {
  const std::size_t sign = word.find('=');
  const auto value = sign == std::string::npos ? std::nullopt : std::optional(word.substr(sign + 1));
  apply(optionOf(word.substr(0, sign)), value, words, folder);
}

// Letters without a value may share a word with one that has one, which is the last then.
void applyLetters(const std::string& word, Words& words, std::string& folder) {
  for (std::size_t i = 1; i < word.size(); ++i) {
    const Option option = optionOf(word[i]);
    if (option == Option::none) continue;
    const auto value = i + 1 < word.size() ? std::optional(word.substr(i + 1)) : std::nullopt;
    apply(option, value, words, folder);
    return;
  }
}

} // namespace

EnvCommand EnvCommand::of(std::vector<std::string> words) {
  if (words.empty() || FileStorage::nameOf(words.front()) != "env") return {std::move(words), {}};
  Words rest(std::next(words.begin()), words.end());
  std::string folder;
  while (!rest.empty() && rest.front().starts_with('-')) {
    const std::string word = takeFirst(rest);
    if (word == "--") break;
    if (word.starts_with("--")) {
      applyLong(word, rest, folder);
    } else {
      applyLetters(word, rest, folder);
    }
  }
  while (!rest.empty() && rest.front().find('=') != std::string::npos)
    rest.pop_front();
  return {{rest.begin(), rest.end()}, folder};
}

} // namespace orbel::linux
