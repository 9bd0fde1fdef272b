#include "backends/qt/windows/QtSurface.h"

#include "backends/common/DeviceEllipse.h"
#include "backends/qt/windows/QtWindowSystem.h"
#include "backends/qt/windows/ScreenSpace.h"

#include <QApplication>
#include <QCursor>
#include <QDropEvent>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace orbel::qt {

namespace {
std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers) {
  std::uint64_t flags = 0;
  if (modifiers & Qt::ShiftModifier) flags |= kShiftFlag;
  if (modifiers & Qt::ControlModifier) flags |= kControlFlag;
  if (modifiers & Qt::AltModifier) flags |= kOptionFlag;
  if (modifiers & Qt::MetaModifier) flags |= kCommandFlag;
  return flags;
}

// Whether there were any. A submenu is a menu of its own and closed first.
bool closeOpenMenus() {
  bool wereOpen = false;
  while (QWidget* const menu = QApplication::activePopupWidget()) {
    wereOpen = true;
    menu->close();
    if (QApplication::activePopupWidget() == menu) break; // it refuses to close
  }
  return wereOpen;
}
} // namespace

QtSurface::QtSurface(QtWindowSystem& system, SurfaceLevel level)
    : m_system(system), m_level(level), m_window(system.takeMenuWindow()), m_backdrop(system.display()),
      m_pointerWatch(system.display().makePointerWatch()) {
  m_window->setOwner(this);
}

QtSurface::~QtSurface() {
  orderOut();
  m_window->setOwner(nullptr);
  m_system.returnMenuWindow(std::move(m_window));
}

void QtSurface::setFrame(const Rect& screenFrame) {
  if (screenFrame == m_frame) return;
  m_frame = screenFrame;
  if (!m_shown) return;
  placeWindow();
  repaintAll();
}

void QtSurface::show() {
  if (m_shown) {
    m_system.willShow(*this);
    return;
  }
  placeWindow();
  if (!m_backdrop.coversScreen()) m_window->setOpacity(m_alpha);
  m_system.willShow(*this);
  m_shown = true;
  updateMapping();
  m_system.didShow();
}

void QtSurface::orderOut() {
  if (!m_shown) return;
  m_shown = false;
  m_pointerInside = false;
  m_swallowedPress.reset();
  m_drag.reset();
  m_pointerWatch->stop();
  updateMapping();
  m_backdrop.release();
  m_system.didHide(*this);
}

void QtSurface::setAlpha(double alpha) {
  const double cut = std::clamp(alpha, 0.0, 1.0);
  if (cut == m_alpha) return;
  m_alpha = cut;
  if (!m_shown) return;
  if (m_backdrop.coversScreen()) {
    m_window->addDamage(QRect(QPoint(), m_window->deviceSize()));
    return;
  }
  m_window->setOpacity(m_alpha);
  // Qt leaves the request in its buffer: the last step of a fade would wait there for the next event.
  m_system.display().flush();
}

bool QtSurface::supportsBackdropBlur() const {
  return m_system.display().offersScreenPictures() || m_system.display().offersLiveBlur();
}

void QtSurface::setRoundBackdrop(BackdropMaterial material, double inset) {
  m_backdrop.setRound(material, inset);
  if (!m_shown) return;
  shapeWindow();
  m_window->addDamage(QRect(QPoint(), m_window->deviceSize()));
}

void QtSurface::needsDisplay(const Rect& rect) {
  if (!m_shown) return;
  const double scale = backingScale();
  const int left = static_cast<int>(std::floor(rect.minX() * scale));
  const int top = static_cast<int>(std::floor((m_frame.size.height - rect.maxY()) * scale));
  const int right = static_cast<int>(std::ceil(rect.maxX() * scale));
  const int bottom = static_cast<int>(std::ceil((m_frame.size.height - rect.minY()) * scale));
  m_window->addDamage(QRect(left, top, right - left, bottom - top));
}

std::optional<Point> QtSurface::pointerLocation() const {
  const auto onScreen = m_system.pointerLocation();
  if (!onScreen) return std::nullopt;
  return Point{onScreen->x - m_frame.minX(), onScreen->y - m_frame.minY()};
}

double QtSurface::backingScale() const {
  return ScreenSpace::scaleOf(ScreenSpace::screenAt(m_frame.center()));
}

bool QtSurface::pointerIsOverOwnPopUp() const {
  return m_system.pointerIsOverPopUp();
}

void QtSurface::compositorChanged() {
  if (!m_shown) return;
  m_backdrop.compositorChanged();
  m_window->setOpacity(m_backdrop.coversScreen() ? 1 : m_alpha);
  shapeWindow();
  repaintAll();
}

void QtSurface::cancel() {
  if (m_delegate) m_delegate->cancelRequested();
}

void QtSurface::paintWindow(QPainter& painter, const QRect& damage) {
  m_backdrop.paint(painter);
  if (m_delegate) {
    const double scale = backingScale();
    QtCanvas canvas(painter, QSize(m_deviceFrame.width, m_deviceFrame.height), m_frame.size, m_scratch);
    const Rect dirty(damage.x() / scale, m_frame.size.height - (damage.y() + damage.height()) / scale,
                     damage.width() / scale, damage.height() / scale);
    m_delegate->paint(canvas, dirty);
  }
  m_backdrop.paintFade(painter, m_alpha);
}

void QtSurface::windowPointerMoved(QPointF position, Qt::KeyboardModifiers modifiers, Qt::MouseButtons held) {
  // A program that dies while it drags something over us says nothing.
  if (m_drag && !m_system.display().isDragUnderWay()) windowDragLeft();
  m_pointerInside = true;
  m_pointerWatch->stop();
  if (m_delegate) m_delegate->pointerMoved(mouseEvent(position, modifiers, held));
}

void QtSurface::windowPointerLeft() {
  if (!m_pointerInside) return;
  // The server reports the disc's edge; what counts is the square around it.
  if (m_pointerWatch->waitUntilOutside(m_deviceFrame, [this] { reportExit(); })) return;
  reportExit();
}

void QtSurface::windowPressed(PointerButton button, QPointF position, Qt::KeyboardModifiers modifiers) {
  m_pointerInside = true;
  const auto life = m_lifetime.watch();
  // Beside an open menu a press only ends the menu. Qt does so once it has grabbed the pointer, but it grabs
  // it after it has shown the menu, and a quick hand's press still comes here.
  const bool endsMenu = closeOpenMenus();
  if (life.hasEnded()) return;
  m_swallowedPress = endsMenu ? std::optional(button) : std::nullopt;
  if (!endsMenu && m_delegate) m_delegate->pointerPressed(button, mouseEvent(position, modifiers));
}

void QtSurface::windowReleased(PointerButton button, QPointF position, Qt::KeyboardModifiers modifiers) {
  const auto life = m_lifetime.watch();
  m_system.drainTaps();
  if (life.hasEnded()) return;
  const bool isNobodys = m_swallowedPress == button;
  if (isNobodys) m_swallowedPress.reset();
  if (!isNobodys && m_delegate) m_delegate->pointerReleased(button, mouseEvent(position, modifiers));
}

void QtSurface::windowDragged(QDropEvent& event) {
  if (event.type() == QEvent::DragEnter || !m_drag) m_drag.emplace(*event.mimeData());
  m_drag->setLocation(windowPoint(event.position()));
  event.ignore();
  if (!m_delegate) return;
  const auto life = m_lifetime.watch();
  auto answer = FileDrag::answer(m_delegate->dragMoved(*m_drag), event.possibleActions());
  if (life.hasEnded() || !m_drag) return;
  if (event.type() == QEvent::Drop) {
    // The drag stays alive while it is dropped, whatever becomes of the surface.
    const FileDrag dropped = std::move(*m_drag);
    m_drag.reset();
    if (answer == Qt::IgnoreAction) {
      m_delegate->dragExited();
      return;
    }
    if (!m_delegate->dragPerformed(dropped)) return;
  }
  if (answer == Qt::IgnoreAction) return;
  event.setDropAction(answer);
  event.accept();
}

void QtSurface::windowDragLeft() {
  m_drag.reset();
  if (m_delegate) m_delegate->dragExited();
}

void QtSurface::updateMapping() {
  const bool mapped = m_shown && !m_system.hidesForDialog();
  if (mapped == m_window->isVisible()) return;
  m_window->setVisible(mapped);
  if (!mapped) return;
  // Painted before the server says that the window is visible, so that it never shows empty.
  repaintAll();
  m_system.display().flush();
}

void QtSurface::placeWindow() {
  m_deviceFrame = ScreenSpace::toDevice(m_frame);
  m_backdrop.prepare(m_deviceFrame, backingScale(),
                     [this](common::ScreenPicture& screen) { removeOwnWindows(screen); });
  m_window->setGeometry(ScreenSpace::toQt(m_frame));
  m_system.display().setGeometry(m_window->winId(), m_deviceFrame);
  shapeWindow();
}

// A menu that moves would otherwise shine through itself, and a sub-menu would show the title that the menu
// below it has only just closed: what lies over the surfaces is removed with them, then those below this one
// are drawn again.
void QtSurface::removeOwnWindows(common::ScreenPicture& screen) const {
  const auto& shown = m_system.shownSurfaces();
  for (auto surface = shown.rbegin(); surface != shown.rend(); ++surface)
    screen.patchFrom((*surface)->m_backdrop.snapshot());
  for (QtSurface* surface : shown) {
    if (surface->m_level < m_level) surface->drawOn(screen);
  }
}

void QtSurface::drawOn(common::ScreenPicture& screen) {
  const common::DeviceRect place = screen.rect();
  if (m_backdrop.snapshot().isEmpty()) return;
  if (place.intersected(m_deviceFrame).isEmpty()) return;
  QImage picture(m_deviceFrame.width, m_deviceFrame.height, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  {
    QPainter painter(&picture);
    paintWindow(painter, picture.rect());
  }
  QImage target(reinterpret_cast<uchar*>(screen.pixels()), place.width, place.height,
                place.width * static_cast<int>(sizeof(std::uint32_t)), QImage::Format_RGB32);
  QPainter painter(&target);
  if (!m_backdrop.coversScreen()) painter.setOpacity(m_alpha);
  painter.drawImage(m_deviceFrame.x - place.x, m_deviceFrame.y - place.y, picture);
}

void QtSurface::shapeWindow() {
  if (!m_backdrop.isRound()) return;
  DisplayServer& display = m_system.display();
  const WId window = m_window->winId();
  const double inset = m_backdrop.inset() * backingScale();
  const auto ellipse = common::DeviceEllipse::rows(m_deviceFrame.width, m_deviceFrame.height, inset);
  display.setInputShape(window, ellipse);
  display.setBlur(window,
                  m_backdrop.kind() == Backdrop::Kind::liveBlur ? ellipse : DisplayServer::DeviceRects());
  // With neither a compositor nor a picture of the screen, what is not drawn on would be black.
  if (!display.isCompositing() && !m_backdrop.coversScreen()) {
    display.setOutline(window, ellipse);
  } else {
    display.setOutline(window, std::nullopt);
  }
}

void QtSurface::repaintAll() {
  m_window->addDamage(QRect(QPoint(), m_window->deviceSize()));
  m_window->paintNow();
}

void QtSurface::reportExit() {
  if (!m_pointerInside) return;
  m_pointerInside = false;
  if (!m_delegate) return;
  const bool primaryButtonIsDown = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
  m_delegate->pointerExited({pointerLocation().value_or(Point{-1, -1}), 0, primaryButtonIsDown});
}

MouseEvent QtSurface::mouseEvent(QPointF position, Qt::KeyboardModifiers modifiers,
                                 Qt::MouseButtons held) const {
  return {windowPoint(position), modifierFlags(modifiers), held.testFlag(Qt::LeftButton)};
}

Point QtSurface::windowPoint(QPointF position) const {
  return {position.x(), m_frame.size.height - position.y()};
}

} // namespace orbel::qt
