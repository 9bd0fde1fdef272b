#include "controllers/CompanionToolkit.h"

#include "foundation/Log.h"
#include "platform/Platform.h"
#include "protocols/companion/CompanionUrl.h"

namespace orbel {

bool CompanionToolkit::isAvailable() {
  const std::string url = CompanionUrl::compose(CompanionUrl::Start{});
  return Platform::current().workspace.applicationForUrl(url).has_value();
}

void CompanionToolkit::start() {
  if (!isAvailable()) return;
  Log::warningIfFailed(Platform::current().workspace.openUrl(CompanionUrl::compose(CompanionUrl::Start{})));
}

void CompanionToolkit::terminate() {
  if (!isAvailable()) return;
  Log::warningIfFailed(
      Platform::current().workspace.openUrl(CompanionUrl::compose(CompanionUrl::Terminate{})));
}

} // namespace orbel
