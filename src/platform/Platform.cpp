#include "platform/Platform.h"

#include "foundation/Log.h"

#include <cstdlib>

namespace orbel {

namespace {
Platform* currentPlatform = nullptr;
}

Platform& Platform::current() {
  if (!currentPlatform) {
    Log::error("the platform was used before it was set up");
    std::abort();
  }
  return *currentPlatform;
}

void Platform::setCurrent(Platform* platform) {
  currentPlatform = platform;
}

} // namespace orbel
