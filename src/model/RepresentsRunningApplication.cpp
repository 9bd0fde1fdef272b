#include "model/RepresentsRunningApplication.h"

#include "platform/Platform.h"

#include <string>

namespace orbel {

namespace {
constexpr const char* kTerminateUrl = "orbelmenu-toolkit:terminate/"; // followed by the process identifier
}

RunningApplicationPointer RepresentsRunningApplication::firstRepresentedApplication() const {
  for (const auto& application : Platform::current().workspace.runningApplications()) {
    if (representsRunningApplication(*application)) return application;
  }
  return nullptr;
}

void RepresentsRunningApplication::quitFirstRepresentedApplication() const {
  const auto application = firstRepresentedApplication();
  if (!application) return;
  const std::int64_t processIdentifier = application->processIdentifier();
  Platform::current().workspace.openUrl(kTerminateUrl + std::to_string(processIdentifier));
}

} // namespace orbel
