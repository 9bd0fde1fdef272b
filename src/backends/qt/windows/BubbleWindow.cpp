#include "backends/qt/windows/BubbleWindow.h"

#include "backends/qt/canvas/BubblePicture.h"
#include "backends/qt/windows/DisplayServer.h"
#include "backends/qt/windows/ScreenSpace.h"

#include <QEvent>
#include <QPainter>
#include <QSurfaceFormat>

namespace orbel::qt {

BubbleWindow::BubbleWindow(DisplayServer& display) : m_display(display), m_backingStore(this) {
  QSurfaceFormat translucent = format();
  translucent.setAlphaBufferSize(8);
  setFormat(translucent);
  setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
           Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput);
  create();
  m_display.setInputShape(winId(), {});
}

void BubbleWindow::place(const QString& text, const Rect& anchorOnScreen) {
  m_anchor = anchorOnScreen;
  if (m_bodySize == Size() || text != m_subject.text) m_bodySize = BubblePicture::bodySize(text);
  const QScreen* screen = ScreenSpace::screenAt(anchorOnScreen.center());
  m_layout = BubbleLayout::beside(anchorOnScreen, m_bodySize, ScreenSpace::frameOf(screen));
  const bool composited = m_display.isCompositing();
  const Subject subject{text, ScreenSpace::scaleOf(screen), m_layout.arrow, m_layout.pointsUp, composited};

  constexpr double kMargin = BubblePicture::kMargin;
  const double arrowBelow = m_layout.pointsUp ? 0 : BubbleLayout::kArrowHeight;
  const Rect frame(m_layout.body.minX() - kMargin, m_layout.body.minY() - arrowBelow - kMargin,
                   m_layout.body.size.width + 2 * kMargin,
                   m_layout.body.size.height + BubbleLayout::kArrowHeight + 2 * kMargin);
  const bool changed = subject != m_subject;
  if (changed) draw(subject);
  setGeometry(ScreenSpace::toQt(frame));
  common::DeviceRect place = ScreenSpace::toDevice(frame);
  place.width = m_picture.width();
  place.height = m_picture.height();
  m_display.setGeometry(winId(), place);
  if (changed && isVisible()) paintNow();
}

void BubbleWindow::setMapped(bool mapped) {
  if (mapped == isVisible()) return;
  setVisible(mapped);
  // Painted before the server says that the window is visible, so that it never shows empty.
  if (mapped) paintNow();
}

void BubbleWindow::paintNow() {
  const QSize needed = size();
  if (m_backingStore.size() != needed) m_backingStore.resize(needed);
  const QRect all(QPoint(), needed);
  m_backingStore.beginPaint(all); // clears a store that has transparency
  QPaintDevice* device = m_backingStore.paintDevice();
  if (device && device->devType() == QInternal::Image) {
    auto& store = *static_cast<QImage*>(device);
    QImage pixels(store.bits(), store.width(), store.height(), store.bytesPerLine(), store.format());
    if (!pixels.hasAlphaChannel()) pixels.fill(Qt::black);
    QPainter(&pixels).drawImage(0, 0, m_picture);
  }
  m_backingStore.endPaint();
  m_backingStore.flush(all);
}

void BubbleWindow::compositorChanged() {
  place(m_subject.text, m_anchor);
}

bool BubbleWindow::event(QEvent* event) {
  if (event->type() != QEvent::Expose) return QWindow::event(event);
  if (isExposed() && !m_backingStore.size().isEmpty()) m_backingStore.flush(QRect(QPoint(), size()));
  return true;
}

void BubbleWindow::draw(const Subject& subject) {
  m_subject = subject;
  using Edge = BubblePicture::Edge;
  m_picture = BubblePicture::draw(subject.text, m_layout, subject.scale,
                                  subject.composited ? Edge::soft : Edge::hard);
  if (subject.composited) {
    m_display.setOutline(winId(), std::nullopt);
  } else {
    m_display.setOutline(winId(), BubblePicture::outline(m_picture));
  }
}

} // namespace orbel::qt
