// What stands behind a surface's own drawing: glass over a live blur, glass over a snapshot of the screen,
// or, where neither can be had, a plain disc. Without a compositor the snapshot also stands in for everything
// transparent. Owned by one surface, which prepares it just before the window is mapped or moved.
#pragma once

#include "backends/common/DeviceRect.h"
#include "backends/common/ScreenPicture.h"
#include "platform/Surface.h"
#include "scene/Bitmap.h"

#include <QPainter>
#include <functional>
#include <memory>

namespace orbel::qt {

class DisplayServer;

class Backdrop {
public:
  enum class Kind { none, liveBlur, frosted, plain };

  // The display outlives the backdrop.
  explicit Backdrop(DisplayServer& display);

  // The ellipse of the bounds inset by that many points. Takes effect at once where the backdrop is prepared.
  void setRound(BackdropMaterial material, double inset);
  bool isRound() const { return m_round; }
  double inset() const { return m_inset; } // points

  // Takes what is behind the frame now; the scale is device pixels a point. The block, called when there is a
  // picture of the screen, takes out of it what of ours stands there already.
  void prepare(const common::DeviceRect& frame, double scale,
               const std::function<void(common::ScreenPicture&)>& removeOwnWindows);
  // The compositor started or ended while the window is shown, so the screen behind it can no longer be
  // asked for.
  void compositorChanged();
  // Forgets the screen's pixels.
  void release();

  Kind kind() const { return m_kind; }
  // What was behind the surface when it was prepared; empty where that is not needed or cannot be had.
  const common::ScreenPicture& snapshot() const { return *m_snapshot; }
  // Whether the surface is opaque: nothing shines through where it is not drawn on.
  bool coversScreen() const { return m_opaque; }

  // Draws the backdrop on a clear surface; device pixels.
  void paint(QPainter& painter) const;
  // Fades everything painted so far to that opacity over the screen's own pixels, where the surface
  // is opaque.
  void paintFade(QPainter& painter, double alpha) const;

private:
  void chooseKind();
  void makeDisc();

  DisplayServer& m_display;
  bool m_round = false;
  BackdropMaterial m_material = BackdropMaterial::lightFrost;
  double m_inset = 0;
  double m_scale = 1;
  common::DeviceRect m_frame;
  bool m_prepared = false;
  bool m_liveBlur = false;
  Kind m_kind = Kind::none;
  bool m_opaque = false;
  std::unique_ptr<common::ScreenPicture> m_snapshot; // never null
  Bitmap m_disc;
};

} // namespace orbel::qt
