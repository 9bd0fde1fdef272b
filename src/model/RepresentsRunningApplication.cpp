#include "model/RepresentsRunningApplication.h"

#include "platform/Platform.h"
#include "protocols/companion/CompanionUrl.h"

namespace orbel {

RunningApplicationPointer RepresentsRunningApplication::firstRepresentedApplication() const {
  for (const auto& application : Platform::current().workspace.runningApplications()) {
    if (representsRunningApplication(*application)) return application;
  }
  return nullptr;
}

void RepresentsRunningApplication::quitFirstRepresentedApplication() const {
  const auto application = firstRepresentedApplication();
  if (!application) return;
  Platform::current().workspace.openUrl(
      CompanionUrl::compose(CompanionUrl::Quit{application->processIdentifier()}));
}

} // namespace orbel
