#include "programs/agent/Desktop.h"

#include "foundation/Log.h"
#include "programs/agent/X11Desktop.h"

#include <QGuiApplication>
#include <utility>

namespace orbel {

namespace {
// One of our own variables in the environment, which programs that we start must not inherit.
constexpr const char* kPlatformVariable = "QT_QPA_PLATFORM";
constexpr QLatin1String kX11Platform("xcb");
} // namespace

std::vector<std::string> prepareEnvironment() {
  // The backends wait for their events in GLib's main loop; without it in Qt nothing of theirs would arrive.
  qunsetenv("QT_NO_GLIB");
  if (qEnvironmentVariableIsSet(kPlatformVariable)) return {};
  qputenv(kPlatformVariable, kX11Platform.data());
  return {kPlatformVariable};
}

bool hasDesktop() {
  const QString platform = QGuiApplication::platformName();
  if (platform == kX11Platform) return true;
  Log::error("Orbel Menu needs an X11 display; this is " + platform.toStdString());
  return false;
}

std::unique_ptr<Desktop> openDesktop(Desktop::Surroundings surroundings) {
  return hasDesktop() ? X11Desktop::open(std::move(surroundings)) : nullptr;
}

} // namespace orbel
