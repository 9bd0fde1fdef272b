#include "app/TouchpadAccessNotice.h"

#include "foundation/Log.h"
#include "platform/Platform.h"
#include "settings/SettingsKeys.h"

#include <string>
#include <string_view>

namespace orbel {

void TouchpadAccessNotice::deliverOnce(const std::string& command) {
  const Platform& platform = Platform::current();
  if (platform.preferences.boolean(kToldOfTouchpadAccessKey)) return;
  constexpr std::string_view kPlaceholder = "%@";
  std::string text = platform.text.localized(
      "To open the menu with your fingers, allow it once with this command in a terminal:\n%@");
  if (const auto place = text.find(kPlaceholder); place != std::string::npos)
    text.replace(place, kPlaceholder.size(), command);
  platform.userNotifications.deliver(
      {platform.text.localized("Orbel Menu may not read the touchpad"), text}, [](const Result<>& taken) {
        Log::warningIfFailed(taken);
        if (!taken) return;
        Platform::current().preferences.setObject(kToldOfTouchpadAccessKey, true);
      });
}

} // namespace orbel
