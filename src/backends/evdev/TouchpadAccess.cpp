#include "backends/evdev/TouchpadAccess.h"

#include "backends/evdev/TouchpadDevice.h"
#include "backends/evdev/TouchpadWatch.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace orbel::evdev {

namespace {
constexpr const char* kScript = "orbelmenu-touchpad-access";

// One word of a shell's command line.
std::string shellWord(const std::string& text) {
  constexpr const char* kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-";
  if (text.find_first_not_of(kPlain) == std::string::npos) return text;
  std::string word = "'";
  for (const char character : text)
    word += character == '\'' ? std::string("'\\''") : std::string(1, character);
  return word + '\'';
}
} // namespace

Result<> TouchpadAccess::check() {
  for (const TouchpadDevice& device : TouchpadWatch::present()) {
    // Opened as the tap would: access control lists and sandboxes count, too.
    const int descriptor = open(device.node.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return Failure{description(device) + ": " + std::strerror(errno)};
    close(descriptor);
  }
  return {};
}

std::string TouchpadAccess::grantingCommand(const std::string& executable) {
  const std::filesystem::path folder = std::filesystem::path(executable).parent_path();
  const bool isFoundByName = folder == "/usr/bin" || folder == "/usr/local/bin";
  std::error_code error;
  if (isFoundByName || !std::filesystem::exists(folder / kScript, error)) {
    return std::string("sudo ") + kScript;
  }
  // sudo looks for commands in the system's own folders only, whatever the user's path is.
  return "sudo " + shellWord((folder / kScript).string());
}

} // namespace orbel::evdev
