// The settings window's frame: rounded corners, something frosted behind, a thin white rim, above ordinary
// windows, and moved by dragging anywhere on its background. Frames are screen points, y up. Owned by the
// settings window's controller, which shows and closes it.
#pragma once

#include "chrome/BezelView.h"
#include "platform/ManagedWindow.h"
#include "scene/ViewTreeAdapter.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace orbel {

class RoundedEffectsWindow : private ManagedWindowDelegate {
public:
  // The window outlives this object, which sets it up.
  explicit RoundedEffectsWindow(ManagedWindow& window);
  ~RoundedEffectsWindow() override;
  RoundedEffectsWindow(const RoundedEffectsWindow&) = delete;
  RoundedEffectsWindow& operator=(const RoundedEffectsWindow&) = delete;

  // The frosted background that fills the window; null where there is none, and then the window floats but is
  // otherwise as the desktop makes it.
  View* blurView() const { return m_views ? &m_views->contentView() : nullptr; }
  // The rim, beneath everything else; null without a background.
  const std::shared_ptr<BezelView>& strokeView() const { return m_strokeView; }
  // Draws mask and rim anew for the present frame and the desktop's colours; runs on every change of either.
  void updateMask();

  // Where the pointer and the window's bottom-left corner were when the drag began; screen points.
  Point originalMouseLocation() const { return m_originalMouseLocation; }
  Point originalWindowLocation() const { return m_originalWindowLocation; }
  void mouseDown(const MouseEvent& event);
  void mouseDragged(const MouseEvent& event);

  Rect frame() const { return m_window.frame(); }
  void center() { m_window.center(); }
  void makeKeyAndOrderFront() { m_window.makeKeyAndOrderFront(); }
  void close() { m_window.close(); }
  bool isVisible() const { return m_window.isVisible(); }
  ColorScheme colorScheme() const { return m_window.colorScheme(); }
  void setColorSchemeChangeBlock(std::function<void()> block) { m_colorSchemeChange = std::move(block); }

private:
  void awakeFromNib();

  void paint(Canvas& canvas, const Rect& dirty) override;
  void backgroundPressed(const MouseEvent& event) override { mouseDown(event); }
  void backgroundDragged(const MouseEvent& event) override { mouseDragged(event); }
  void windowDidResize() override;
  void colorSchemeDidChange() override;

  std::optional<Point> pointerLocationInWindow() const;

  ManagedWindow& m_window;
  std::optional<ViewTreeAdapter> m_views; // none without a background
  std::shared_ptr<BezelView> m_strokeView;
  Point m_originalMouseLocation;
  Point m_originalWindowLocation;
  bool m_movedByDisplay = false; // since the last press
  std::function<void()> m_colorSchemeChange;
};

} // namespace orbel
