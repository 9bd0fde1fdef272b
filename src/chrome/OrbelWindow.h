// The round, translucent window of a radial menu: a tinted disc with a thin white rim over what is blurred
// behind it. It keeps its shape and colouring up to date; the controllers size, place, show and fade it.
// Frames are screen points, y up. It never takes the keyboard focus. Owned by its controller.
#pragma once

#include "chrome/BezelView.h"
#include "foundation/Color.h"
#include "foundation/Registration.h"
#include "platform/Surface.h"
#include "scene/ViewTreeAdapter.h"

#include <functional>
#include <memory>
#include <utility>

namespace orbel {

class OrbelWindow : private SurfaceDelegate {
public:
  explicit OrbelWindow(SurfaceLevel level = SurfaceLevel::menu);
  ~OrbelWindow() override;
  OrbelWindow(const OrbelWindow&) = delete;
  OrbelWindow& operator=(const OrbelWindow&) = delete;

  // Fills the window; the rim lies at its bottom, further views are added on top.
  View& contentView() const { return m_views.contentView(); }
  Rect frame() const { return m_surface->frame(); }
  void setFrame(const Rect& frame);

  // Whether something blurred stands behind the disc.
  bool backgroundBlurred() const { return m_backgroundBlurred; }
  // White by default. Without a blur a colour that is not white is kept as a darker shade of itself.
  const Color& tintColor() const { return m_tintColor; }
  void setTintColor(const Color& color);
  // Draws the rim and the tint anew for the present frame; runs on every change of size.
  void updateMask();
  const BezelView& strokeView() const { return *m_strokeView; }
  const Surface& surface() const { return *m_surface; }

  // The alpha that is shown now, 0 to 1.
  double alphaValue() const { return m_surface->alpha(); }
  void setAlphaValue(double alpha);
  // Fades over kAnimationDuration from where it is. A later fade takes over, and then the completion of the
  // earlier one never runs. The completion comes from the run loop, never inside this call.
  void animateAlphaValue(double alpha, std::function<void()> completion);
  bool isFadingOut() const;

  void show() { m_surface->show(); }
  void orderOut() { m_surface->orderOut(); }
  bool isShown() const { return m_surface->isShown(); }

  // Whether the pointer is over the window's square frame, or over a pop-up that belongs to it. False
  // when unknown.
  bool pointerIsOver() const;
  // The pointer's place in window points, which may lie outside the frame; the middle of the window
  // when unknown.
  Point pointerLocationOrCenter() const;

  // Escape while the window is shown.
  void setCancelBlock(std::function<void()> block) { m_cancelBlock = std::move(block); }

private:
  void stepFade();

  void paint(Canvas& canvas, const Rect& dirty) override;
  void pointerMoved(const MouseEvent& event) override;
  void pointerExited(const MouseEvent& event) override;
  void pointerPressed(PointerButton button, const MouseEvent& event) override;
  void pointerReleased(PointerButton button, const MouseEvent& event) override;
  void cancelRequested() override;
  DragOperation dragMoved(const DragInfo& drag) override;
  void dragExited() override;
  bool dragPerformed(const DragInfo& drag) override;

  ViewTreeAdapter::Window viewWindow();

  struct Fade;

  std::unique_ptr<Surface> m_surface;
  bool m_reducedMotion; // the user's wish when the window was made; a window lives for one show
  ViewTreeAdapter m_views;
  std::shared_ptr<BezelView> m_strokeView;
  bool m_backgroundBlurred;
  Color m_tintColor = Color::white(1);
  std::function<void()> m_cancelBlock;
  std::unique_ptr<Fade> m_fade;
};

} // namespace orbel
