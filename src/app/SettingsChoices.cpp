#include "app/SettingsChoices.h"

#include "platform/Platform.h"
#include "settings/AppSettings.h"

#include <cstdint>

namespace orbel {

std::vector<SettingsChoice> SettingsChoices::gestures() {
  const TextServices& text = Platform::current().text;
  const auto tag = [](Gesture gesture) { return static_cast<std::int64_t>(gesture); };
  return {{tag(Gesture::threeFingersResting), text.localized("Rest three fingers on the touchpad")},
          {tag(Gesture::fourFingersResting), text.localized("Rest four fingers on the touchpad")},
          {tag(Gesture::threeFingersSpreading), text.localized("Spread three fingers on the touchpad")},
          {tag(Gesture::fourFingersSpreading), text.localized("Spread four fingers on the touchpad")},
          {tag(Gesture::pointerCircle), text.localized("Circle the pointer clockwise")}};
}

std::vector<SettingsChoice> SettingsChoices::menuSizes() {
  const TextServices& text = Platform::current().text;
  return {{1, text.localized("Small")}, {2, text.localized("Medium")}, {3, text.localized("Large")}};
}

} // namespace orbel
