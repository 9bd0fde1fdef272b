// A widget that hosts a view of the core: brings it the pointer and the keyboard, gives it a place to draw,
// shows its tool tips, a ring around it while it has the keyboard focus, and speaks for it to assistive
// programs. As large as the view, and a margin for the ring.
#pragma once

#include "backends/qt/canvas/QtCanvas.h"
#include "foundation/RunLoop.h"
#include "platform/HostedView.h"
#include "scene/ViewTreeAdapter.h"

#include <QEvent>
#include <QPointF>
#include <QWidget>

namespace orbel::qt {

class ViewHost : public QWidget {
public:
  static constexpr int kRingMargin = 3; // points, on every side of the view

  // The run loop outlives the widget.
  ViewHost(HostedView hosted, RunLoop& runLoop, QWidget* parent = nullptr);
  ~ViewHost() override;

  const HostedView& hosted() const { return m_hosted; }
  // As if Space were pressed.
  void press();
  // What a reader says of it.
  QString accessibleValue() const;

  QSize sizeHint() const override;

protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  Size viewSize() const { return m_hosted.view->frame().size; }
  // From the widget's points, y down, to the view's.
  Point viewPoint(QPointF position) const;
  MouseEvent mouseEvent(QPointF position, Qt::MouseButtons held) const {
    return {viewPoint(position), 0, held.testFlag(Qt::LeftButton)};
  }

  ViewTreeAdapter::Window viewWindow();

  HostedView m_hosted;
  ViewTreeAdapter m_views;
  QtCanvas::Scratch m_scratch;
};

} // namespace orbel::qt
