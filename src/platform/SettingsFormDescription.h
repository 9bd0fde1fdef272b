// What stands in the settings window, as the core describes it to the backend that shows it: groups of rows
// with one control each, a heading and a footer, and the keys. Texts are in the user's language; a "&" in a
// title or label stands before the letter that reaches the control together with Alt. Blocks are called on
// the main thread, by the user's action alone, while the form lives.
#pragma once

#include "platform/HostedView.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace orbel {

struct SettingsCheckBox {
  std::string title;
  std::function<void(bool on)> clicked; // with what the box shows now
};

// One entry of a pop-up button.
struct SettingsChoice {
  std::int64_t tag = 0;
  std::string title;
};

struct SettingsPopUpButton {
  std::string accessibleName;
  std::vector<SettingsChoice> choices;
  std::function<void(std::int64_t tag)> chosen; // with the entry that the button shows now
};

struct SettingsButton {
  enum class Style {
    field, // words in a field
    disc,  // one character in a small disc
    link,  // words to click like a link
  };
  Style style = Style::field;
  std::string title;
  std::string explanation = {}; // its accessible name and tool tip; empty where the title says enough
  std::function<void()> pressed;
};

// Words in quiet colours.
struct SettingsText {
  std::string text;
};

struct SettingsControl {
  std::string identifier; // unique in the form
  std::variant<SettingsCheckBox, SettingsPopUpButton, SettingsButton, SettingsText, HostedView> kind;
};

struct SettingsRow {
  std::string label; // empty where the control says itself what it is
  SettingsControl control;
  std::optional<SettingsControl> accessory = {}; // a small one behind it, whose place is kept while hidden
};

struct SettingsGroup {
  std::string title;
  std::vector<SettingsRow> rows;
};

struct SettingsKey {
  std::string keyEquivalent; // one character, lower case; kEscapeKeyEquivalent
  std::uint64_t modifierFlags = 0;
  std::function<void()> pressed;
};
inline constexpr const char* kEscapeKeyEquivalent = "\x1b";

// The Tab key visits the controls as they stand here: rows with their accessories, footer, close button.
struct SettingsFormDescription {
  std::string windowTitle;
  std::string heading; // beside the program's picture
  std::vector<SettingsGroup> groups;
  std::vector<SettingsControl> footerAtLeft;
  std::vector<SettingsControl> footerAtRight;
  SettingsControl closeButton; // in the window's corner
  std::vector<SettingsKey> keys;
};

} // namespace orbel
