#include "controllers/CompanionToolkit.h"

#include "platform/Platform.h"

namespace orbel {

namespace {
constexpr const char* kStartUrl = "orbelmenu-toolkit:";
constexpr const char* kTerminateUrl = "orbelmenu-toolkit:terminate";
} // namespace

bool CompanionToolkit::isAvailable() {
  return Platform::current().workspace.applicationForUrl(kStartUrl).has_value();
}

void CompanionToolkit::start() {
  if (isAvailable()) Platform::current().workspace.openUrl(kStartUrl);
}

void CompanionToolkit::terminate() {
  if (isAvailable()) Platform::current().workspace.openUrl(kTerminateUrl);
}

} // namespace orbel
