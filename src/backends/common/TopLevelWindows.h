// The ordinary windows on the screen and who owns them, as the workspace needs them to know which programs
// run. Implemented by the display server's backend; the workspace matches windows to programs. A display that
// reports its windows later has an empty list until then, and one that reports none has an empty list for
// good; each arrival is a change. Programs without a process are distinguished by their names.
#pragma once

#include "foundation/Registration.h"
#include "scene/Bitmap.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orbel::common {

struct TopLevelWindow {
  std::uint64_t id = 0;
  // Asked of the server for sandboxed programs; none if unknown
  std::optional<std::int32_t> processIdentifier;
  std::string title;
  std::string instanceName;  // first part of WM_CLASS
  std::string className;     // second part of WM_CLASS
  std::string applicationId; // _GTK_APPLICATION_ID or the like; may be empty
  std::string startupId;     // _NET_STARTUP_ID; may be empty
  bool isNormal = false;     // an ordinary window that a taskbar lists
};

class TopLevelWindows {
public:
  virtual ~TopLevelWindows() = default;
  // Managed windows in the order in which they were first mapped, without our own.
  virtual std::vector<TopLevelWindow> windows() const = 0;
  // After windows appeared, disappeared, or changed what identifies them. Several changes at once are
  // one call.
  virtual Registration observeChanges(std::function<void()> block) = 0;

  // None while nothing is active, or while the display does not report it.
  virtual std::optional<std::uint64_t> activeWindow() const = 0;
  // At the user's own wish (brings it to the front whatever was in front). False where that cannot be asked.
  virtual bool activate(std::uint64_t window) = 0;
  // Gives the focus back to a window that was active when `summon` was taken, unless the user has clicked
  // another window since or it is active anyway. A display that does so by itself does nothing here.
  virtual bool restore(std::uint64_t window, std::uint64_t summon) = 0;
  // A mark for restore(): this moment, in the order of the user's clicks.
  virtual std::uint64_t summonMark() = 0;
  // The window's own icon, the smallest that is at least that large, else its largest; empty when it
  // has none.
  virtual Bitmap icon(std::uint64_t window, int pixelSize) const = 0;
  // A time stamp and startup identifier for a launch on behalf of the user, "" where there is none.
  virtual std::string makeStartupId(const std::string& entryName) = 0;
};

} // namespace orbel::common
