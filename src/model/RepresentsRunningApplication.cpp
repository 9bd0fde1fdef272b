#include "model/RepresentsRunningApplication.h"

#include "foundation/Log.h"
#include "platform/Platform.h"
#include "protocols/companion/CompanionUrl.h"

namespace orbel {

RunningApplicationPointer RepresentsRunningApplication::firstRepresentedApplication() const {
  for (const auto& application : Platform::current().workspace.runningApplications()) {
    if (representsRunningApplication(*application)) return application;
  }
  return nullptr;
}

bool RepresentsRunningApplication::canAskToQuit() const {
  const auto application = firstRepresentedApplication();
  return application && application->canBeAskedToClose();
}

void RepresentsRunningApplication::quitFirstRepresentedApplication() const {
  const auto application = firstRepresentedApplication();
  if (!application || !application->canBeAskedToClose()) return;
  Log::warningIfFailed(Platform::current().workspace.openUrl(
      CompanionUrl::compose(CompanionUrl::Quit{application->processIdentifier()})));
}

} // namespace orbel
