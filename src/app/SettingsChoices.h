// The entries of the settings window's pop-up buttons: a stored value as the tag, plain words as the title.
#pragma once

#include "platform/SettingsFormDescription.h"

#include <vector>

namespace orbel {

class SettingsChoices {
public:
  // Grouped by kind, in the user's language.
  static std::vector<SettingsChoice> gestures();
  // From small to large.
  static std::vector<SettingsChoice> menuSizes();
};

} // namespace orbel
