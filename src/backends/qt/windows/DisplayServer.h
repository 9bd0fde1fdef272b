// The display server as our windows use it: what stands behind and around a window (blur, outline, pictures of
// the screen, order), and what Qt does not report about the pointer and the desktop. One implementation a
// display system; PlainDisplayServer serves where Qt draws without one. Windows' numbers are Qt's WId;
// requests about a window follow its creation in order. Made by the program's desktop, outlives every window.
// Main thread only.
#pragma once

#include "backends/common/DeviceRect.h"
#include "backends/common/EscapeKey.h"
#include "backends/common/PointerWatch.h"
#include "backends/common/ScreenPicture.h"
#include "foundation/Registration.h"

#include <QPoint>
#include <QtGui/qwindowdefs.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orbel::qt {

class DisplayServer {
public:
  using DeviceRects = std::vector<common::DeviceRect>;

  virtual ~DisplayServer() = default;

  // Whether what is translucent shows what is behind it.
  virtual bool isCompositing() const = 0;
  // Calls the block after that has changed.
  virtual Registration observeCompositing(std::function<void()> block) = 0;
  // Whether a blur region has an effect; asked of the display now, because the effect can be switched.
  virtual bool offersLiveBlur() const = 0;
  // Whether pictures of the screen can be taken.
  virtual bool offersScreenPictures() const = 0;

  // Memory of a kept picture serves the next one; that of a single one is freed with it.
  enum class PictureMemory { kept, single };
  // Empty until it captures. Never null; captures nothing where none are offered.
  virtual std::unique_ptr<common::ScreenPicture> makeScreenPicture(PictureMemory memory) = 0;
  // All screens together, device pixels; empty where no pictures are offered.
  virtual common::DeviceRect wholeScreen() const = 0;

  // The rest of the window requests may wait in a buffer until flush().
  // Exactly there, where Qt would round to whole points.
  virtual void setGeometry(WId window, const common::DeviceRect& rect) = 0;
  // Some compositors put a shadow around every window's rectangle; around a round window it looks like a box.
  virtual void disableShadow(WId window) = 0;
  // Input is taken in these rectangles alone (device pixels of the window); none at all makes the window
  // transparent to input.
  virtual void setInputShape(WId window, const DeviceRects& rects) = 0;
  // The window exists in these rectangles alone; nothing: everywhere.
  virtual void setOutline(WId window, const std::optional<DeviceRects>& rects) = 0;
  // What lies behind the window is blurred in these rectangles; none: nowhere.
  virtual void setBlur(WId window, const DeviceRects& rects) = 0;
  virtual void flush() = 0;

  // Order of the windows that no window manager orders for us. Whether it counts at all: some window managers
  // draw windows that they do not manage above all others.
  virtual bool isOrderHonoured() const = 0;
  virtual void raise(WId window) = 0;
  // Directly below the other, which is a window of ours or what topLevel() has answered.
  virtual void placeBelow(WId window, WId other) = 0;
  // The frame that the window manager has put around the window, else the window itself; none when it no
  // longer exists.
  virtual std::optional<WId> topLevel(WId window) const = 0;

  // Device pixels, y down, asked now; none where the display does not report it.
  virtual std::optional<QPoint> pointerLocation() const = 0;
  virtual std::unique_ptr<common::PointerWatch> makePointerWatch() = 0;
  virtual std::unique_ptr<common::EscapeKey> makeEscapeKey(std::function<void()> pressed) = 0;
  // Whether a program offers something that is being dragged, asked now.
  virtual bool isDragUnderWay() const = 0;

  // What the desktop publishes to all programs about its looks, by the names of the XSETTINGS registry
  // (freedesktop.org); none where it publishes none. Asked now.
  virtual std::optional<std::int32_t> integerSetting(std::string_view name) const = 0;
  virtual std::optional<std::string> textSetting(std::string_view name) const = 0;
};

} // namespace orbel::qt
