// The seam's window over Qt's: converts places, shows, activates and hides it, and notifies it when the
// desktop's look changes.
#pragma once

#include "backends/qt/settings/DesktopColorScheme.h"
#include "backends/qt/settings/FrostedWindow.h"
#include "platform/ManagedWindow.h"

#include <QtGui/qwindowdefs.h>

#include <functional>

namespace orbel::qt {

class QtManagedWindow : public ManagedWindow {
public:
  // The block gives a window the keyboard as the user's own act, whatever the window manager thinks of it;
  // it may be empty.
  QtManagedWindow(DisplayServer& display, std::function<void(WId)> activate);
  ~QtManagedWindow() override;

  FrostedWindow& widget() { return m_widget; }

  void setDelegate(ManagedWindowDelegate* delegate) override { m_widget.setDelegate(delegate); }
  Rect frame() const override;
  void setFrameOrigin(Point origin) override;
  // Here the pointer's place and the window's are known: whoever asked moves the window.
  bool beginInteractiveMove() override { return false; }
  void center() override;
  void makeKeyAndOrderFront() override;
  void close() override { m_widget.hide(); }
  bool isVisible() const override { return m_widget.isVisible(); }
  void setFloating(bool floating) override { m_widget.setWindowFlag(Qt::WindowStaysOnTopHint, floating); }
  bool supportsBackdropBlur() const override { return m_widget.isGlassPossible(); }
  void setRoundedBackdrop(BackdropMaterial material, double inset, double cornerRadius) override {
    m_widget.setGlass(material, inset, cornerRadius);
  }
  ColorScheme colorScheme() const override { return m_widget.colorScheme(); }
  void needsDisplay(const Rect&) override { m_widget.repaintBackground(); }

private:
  std::function<void(WId)> m_activate;
  FrostedWindow m_widget;
  DesktopColorScheme m_colorScheme;
};

} // namespace orbel::qt
