#include "backends/qt-x11/QtFocusedWindow.h"

#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace orbel::qtx11 {

namespace {
// A window that has just been hidden, such as an alert that was answered, keeps the focus according to Qt
// until the server has reported the loss.
QWindow* focusedWindow() {
  QWindow* window = QGuiApplication::focusWindow();
  return window && window->isVisible() ? window : nullptr;
}
} // namespace

xcb_window_t QtFocusedWindow::current() const {
  const QWindow* window = focusedWindow();
  return window ? static_cast<xcb_window_t>(window->winId()) : xcb_window_t{XCB_NONE};
}

Registration QtFocusedWindow::observeLoss(std::function<void()> block) {
  const auto changed = [block = std::move(block), focused = focusedWindow()](QWindow* now) mutable {
    const bool isLost = focused && now != focused;
    focused = now;
    // A copy: the call usually ends the observation.
    if (const auto told = block; isLost) told();
  };
  const auto connection = QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, changed);
  return Registration([connection] { QObject::disconnect(connection); });
}

} // namespace orbel::qtx11
