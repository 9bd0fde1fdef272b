#include "backends/qt/windows/Backdrop.h"

#include "backends/qt/canvas/FrostedGlass.h"
#include "backends/qt/windows/DisplayServer.h"

#include <QImage>
#include <utility>

namespace orbel::qt {

namespace {
QImage wrap(const std::uint32_t* pixels, int width, int height, QImage::Format format) {
  return QImage(reinterpret_cast<const uchar*>(pixels), width, height,
                width * static_cast<int>(sizeof(*pixels)), format);
}
} // namespace

Backdrop::Backdrop(DisplayServer& display)
    : m_display(display), m_snapshot(display.makeScreenPicture(DisplayServer::PictureMemory::kept)) {}

void Backdrop::setRound(BackdropMaterial material, double inset) {
  if (m_round && material == m_material && inset == m_inset) return;
  m_round = true;
  m_material = material;
  m_inset = inset;
  m_disc = {};
  if (!m_prepared) return;
  chooseKind();
  makeDisc();
}

void Backdrop::prepare(const common::DeviceRect& frame, double scale,
                       const std::function<void(common::ScreenPicture&)>& removeOwnWindows) {
  const bool sameSize = frame.width == m_frame.width && frame.height == m_frame.height && scale == m_scale;
  const Kind before = m_kind;
  m_frame = frame;
  m_scale = scale;

  m_prepared = true;
  m_liveBlur = m_display.offersLiveBlur();
  if (m_liveBlur) {
    m_snapshot->release();
  } else {
    // Own windows are removed with the help of the old snapshot, so that one lives until then.
    auto fresh = m_display.makeScreenPicture(DisplayServer::PictureMemory::kept);
    if (fresh->capture(frame)) removeOwnWindows(*fresh);
    m_snapshot = std::move(fresh);
  }
  chooseKind();
  // A disc that shows nothing of the screen is still the right one.
  const bool stillRight = sameSize && m_kind == before && m_kind != Kind::frosted && !m_disc.isEmpty();
  if (!stillRight) makeDisc();
}

void Backdrop::compositorChanged() {
  if (!m_prepared) return;
  m_liveBlur = m_display.offersLiveBlur();
  chooseKind();
  makeDisc();
}

void Backdrop::release() {
  m_prepared = false;
  m_opaque = false;
  m_snapshot->release();
  if (m_kind == Kind::frosted) m_disc = {};
}

void Backdrop::chooseKind() {
  m_opaque = !m_display.isCompositing() && !m_snapshot->isEmpty();
  if (!m_round) {
    m_kind = Kind::none;
  } else if (m_liveBlur) {
    m_kind = Kind::liveBlur;
  } else {
    m_kind = m_snapshot->isEmpty() ? Kind::plain : Kind::frosted;
  }
}

void Backdrop::paint(QPainter& painter) const {
  const auto mode = painter.compositionMode();
  if (m_opaque) {
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(
        0, 0, wrap(std::as_const(*m_snapshot).pixels(), m_frame.width, m_frame.height, QImage::Format_RGB32));
  }
  if (m_disc.isEmpty()) return;
  // On a clear surface there is nothing to blend with.
  painter.setCompositionMode(m_opaque ? QPainter::CompositionMode_SourceOver
                                      : QPainter::CompositionMode_Source);
  painter.drawImage(
      0, 0, wrap(m_disc.pixels.data(), m_disc.width, m_disc.height, QImage::Format_ARGB32_Premultiplied));
  painter.setCompositionMode(mode);
}

void Backdrop::paintFade(QPainter& painter, double alpha) const {
  if (!m_opaque || alpha >= 1) return;
  painter.setOpacity(1 - alpha);
  painter.drawImage(
      0, 0, wrap(std::as_const(*m_snapshot).pixels(), m_frame.width, m_frame.height, QImage::Format_RGB32));
}

void Backdrop::makeDisc() {
  const int width = m_frame.width;
  const int height = m_frame.height;
  const DiscEdge edge{m_inset * m_scale, m_scale};
  switch (m_kind) {
  case Kind::none:
    m_disc = {};
    break;
  case Kind::liveBlur:
    m_disc = FrostedGlass::veil(width, height, edge, m_material);
    break;
  case Kind::frosted:
    m_disc = FrostedGlass::disc(m_snapshot->pixels(), width, height, edge, m_scale, m_material);
    break;
  case Kind::plain:
    m_disc = FrostedGlass::plain(width, height, edge, m_material);
    break;
  }
}

} // namespace orbel::qt
