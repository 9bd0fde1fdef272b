// One program that is running and owns an ordinary window. Records of the same process compare equal
// by isEqual.
#pragma once

#include "scene/Image.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orbel {

// Regular programs own a normal, taskbar-listed window; the others are never listed in the menu. A program
// that has ended is accessory.
enum class ActivationPolicy { regular, accessory, prohibited };

enum class ActivationReason {
  userChoice, // the user asked for this program just now: bring it to the front
  restore,    // give back what was in front before the menu, unless the user has clicked another window since
};

class RunningApplication {
public:
  virtual ~RunningApplication() = default;
  virtual std::int32_t processIdentifier() const = 0; // -1 when unknown
  virtual std::string localizedName() const = 0;
  // Absolute path of the desktop entry (or AppImage), else of the executable; none when unknown.
  virtual std::optional<std::string> bundlePath() const = 0;
  virtual std::optional<std::string> executablePath() const = 0;
  virtual ImagePointer icon() const = 0; // may be empty
  virtual ActivationPolicy activationPolicy() const = 0;
  virtual bool isTerminated() const = 0;
  // Whether the companion can be asked to close its windows. Not a program whose process is unknown, of
  // another machine, or one that the display keeps to itself.
  virtual bool canBeAskedToClose() const = 0;
  // False when there is no window to bring forward.
  virtual bool activate(ActivationReason reason) = 0;
  // The same process: process identifier and start time.
  virtual bool isEqual(const RunningApplication& other) const = 0;
};

using RunningApplicationPointer = std::shared_ptr<RunningApplication>;

} // namespace orbel
