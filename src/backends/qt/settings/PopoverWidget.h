// The window of a popover: a rounded body with an arrow at its side that points at a control. A pop-up of Qt,
// which closes at a click elsewhere and at Escape. Points, y down.
#pragma once

#include "backends/qt/settings/ViewHost.h"

#include <QPainterPath>
#include <QWidget>

#include <functional>
#include <vector>

namespace orbel::qt {

class DisplayServer;

class PopoverWidget : public QWidget {
public:
  // The display outlives the window.
  PopoverWidget(const DisplayServer& display, RunLoop& runLoop, QWidget* parent);

  void setContent(std::vector<HostedView> views, int columns);
  // At the right of the control, or at its left where the screen ends too early.
  void showBeside(const QWidget& control);
  void setDidHide(std::function<void()> block) { m_didHide = std::move(block); }

protected:
  void paintEvent(QPaintEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  void focusCurrent(); // or the first view
  QRectF body() const;
  QPainterPath outline() const;

  const DisplayServer& m_display;
  RunLoop& m_runLoop;
  std::vector<ViewHost*> m_hosts;
  int m_columns = 1;
  bool m_isRightOfControl = true;
  double m_arrowY = 0;
  std::function<void()> m_didHide;
};

} // namespace orbel::qt
