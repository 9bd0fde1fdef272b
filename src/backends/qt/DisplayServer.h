// The X server as our windows use it. Requests about a window go over the toolkit's own connection, so that
// they follow its creation in order; everything asked or listened to goes over the backend's connection.
// Exists only where the toolkit runs on X11; windows' numbers are the toolkit's WId.
#pragma once

#include "backends/x11/BlurRegion.h"
#include "backends/x11/CompositorWatch.h"
#include "backends/x11/DesktopSettings.h"
#include "backends/x11/PointerWatch.h"
#include "backends/x11/SharedPixels.h"
#include "backends/x11/WindowShape.h"
#include "backends/x11/WindowStack.h"

#include <QPoint>
#include <QtGui/qwindowdefs.h>
#include <functional>
#include <memory>
#include <optional>

namespace orbel {

class Connection;
class PassiveKeyGrabs;
class RawPointer;

// What main has made of the X11 backend; all of it outlives the window system.
struct X11Parts {
  Connection& connection;
  RawPointer& pointer;
  PassiveKeyGrabs& keyGrabs;
};

class DisplayServer {
public:
  // Null, and logged, on any other platform of the toolkit (offscreen, for one). Needs a QGuiApplication.
  static std::unique_ptr<DisplayServer> connect(const X11Parts& parts,
                                                std::function<void()> compositorChanged);

  Connection& connection() const { return m_connection; }
  bool isCompositing() const { return m_compositor.isCompositing(); }
  // Whether a program offers something that is being dragged, asked now.
  bool isDragUnderWay() const;
  // Device pixels of the root window, asked now.
  std::optional<QPoint> pointerLocation() const;
  std::unique_ptr<PointerWatch> makePointerWatch() const;

  // Exactly there, where the toolkit would round to whole points.
  void setGeometry(WId window, const DeviceRect& rect);
  // Some compositors put a shadow around every window's rectangle; around a round window it looks like a box.
  void disableShadow(WId window);
  void flush();

  BlurRegion& blur() { return m_blur; }
  WindowShape& shape() { return m_shape; }
  SharedPixelsStore& sharedPixels() { return m_sharedPixels; }
  WindowStack& stack() { return m_stack; }
  const DesktopSettings& settings() const { return m_settings; }

private:
  DisplayServer(const X11Parts& parts, xcb_connection_t* windowConnection,
                std::function<void()> compositorChanged);

  Connection& m_connection;
  RawPointer& m_pointer;
  xcb_connection_t* m_windowConnection;
  BlurRegion m_blur;
  WindowShape m_shape;
  WindowStack m_stack;
  SharedPixelsStore m_sharedPixels;
  DesktopSettings m_settings;
  CompositorWatch m_compositor;
};

} // namespace orbel
