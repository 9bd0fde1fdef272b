#include "backends/qt/windows/QtWindowSystem.h"

#include "backends/qt/windows/QtBubble.h"
#include "backends/qt/windows/QtSurface.h"
#include "backends/qt/windows/ScreenSpace.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace orbel::qt {

namespace {
// A menu, its sub-menu and a title are all that is ever shown at a time.
constexpr std::size_t kSpareMenuWindows = 2;
constexpr std::size_t kSpareBubbleWindows = 1;

QWindow* windowOf(WId number) {
  for (QWindow* window : QGuiApplication::allWindows()) {
    if (window->handle() && window->winId() == number) return window;
  }
  return nullptr;
}

template <class Value>
void removeValue(std::vector<Value>& values, const Value& value) {
  values.erase(std::remove(values.begin(), values.end(), value), values.end());
}
} // namespace

// Window managers put a dialog where they want it when they map it and when it gets the focus, each time
// after we did.
class QtWindowSystem::DialogWatch : public QObject {
public:
  DialogWatch(QtWindowSystem& system, QWindow* dialog) : m_system(system) {
    if (dialog) dialog->installEventFilter(this);
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Expose || event->type() == QEvent::FocusIn) m_system.restack();
    return false;
  }

private:
  QtWindowSystem& m_system;
};

QtWindowSystem::QtWindowSystem(DisplayServer& display, WindowSystemHooks hooks)
    : m_hooks(std::move(hooks)), m_display(display),
      m_escape(display.makeEscapeKey([this] { escapePressed(); })),
      m_compositing(display.observeCompositing([this] { compositorChanged(); })) {
  while (m_spareMenuWindows.size() < kSpareMenuWindows)
    m_spareMenuWindows.push_back(makeMenuWindow());
  while (m_spareBubbleWindows.size() < kSpareBubbleWindows)
    m_spareBubbleWindows.push_back(makeBubbleWindow());
}

QtWindowSystem::~QtWindowSystem() = default;

std::unique_ptr<Surface> QtWindowSystem::makeSurface(SurfaceLevel level) {
  return std::make_unique<QtSurface>(*this, level);
}

std::unique_ptr<Bubble> QtWindowSystem::makeBubble(const std::string& text) {
  return std::make_unique<QtBubble>(*this, text);
}

Registration QtWindowSystem::locatePointer(std::function<void(Point)> block) {
  if (const auto location = pointerLocation()) block(*location);
  return {};
}

std::optional<Point> QtWindowSystem::pointerLocation() const {
  const auto place = m_display.pointerLocation();
  if (!place) return std::nullopt;
  return ScreenSpace::toPoints(place->x(), place->y());
}

bool QtWindowSystem::prefersReducedMotion() const {
  return m_display.integerSetting("Gtk/EnableAnimations") == 0;
}

void QtWindowSystem::beep() {
  QApplication::beep();
}

void QtWindowSystem::standBelow(std::optional<WId> dialog) {
  m_dialog = dialog;
  m_dialogWatch = dialog ? std::make_unique<DialogWatch>(*this, windowOf(*dialog)) : nullptr;
  m_hidesForDialog = dialog && !m_display.isOrderHonoured();
  restack();
  for (QtSurface* surface : m_shown)
    surface->dialogChanged();
  for (BubbleWindow* bubble : m_shownBubbles)
    bubble->setMapped(!m_hidesForDialog);
  updateEscape();
}

void QtWindowSystem::drainTaps() {
  if (m_hooks.drainTaps) m_hooks.drainTaps();
}

bool QtWindowSystem::pointerIsOverPopUp() const {
  if (m_hooks.pointerIsOverPopUp && m_hooks.pointerIsOverPopUp()) return true;
  if (m_shownBubbles.empty()) return false;
  const auto pointer = pointerLocation();
  return pointer &&
         std::any_of(m_shownBubbles.begin(), m_shownBubbles.end(),
                     [&](const BubbleWindow* bubble) { return bubble->bodyFrame().contains(*pointer); });
}

std::unique_ptr<MenuWindow> QtWindowSystem::takeMenuWindow() {
  if (m_spareMenuWindows.empty()) return makeMenuWindow();
  auto window = std::move(m_spareMenuWindows.back());
  m_spareMenuWindows.pop_back();
  return window;
}

void QtWindowSystem::returnMenuWindow(std::unique_ptr<MenuWindow> window) {
  m_spareMenuWindows.push_back(std::move(window));
}

std::unique_ptr<BubbleWindow> QtWindowSystem::takeBubbleWindow() {
  if (m_spareBubbleWindows.empty()) return makeBubbleWindow();
  auto window = std::move(m_spareBubbleWindows.back());
  m_spareBubbleWindows.pop_back();
  return window;
}

void QtWindowSystem::returnBubbleWindow(std::unique_ptr<BubbleWindow> window) {
  removeValue(m_shownBubbles, window.get());
  m_spareBubbleWindows.push_back(std::move(window));
}

std::unique_ptr<MenuWindow> QtWindowSystem::makeMenuWindow() const {
  auto window = std::make_unique<MenuWindow>();
  m_display.disableShadow(window->winId());
  return window;
}

std::unique_ptr<BubbleWindow> QtWindowSystem::makeBubbleWindow() const {
  auto window = std::make_unique<BubbleWindow>(m_display);
  m_display.disableShadow(window->winId());
  return window;
}

void QtWindowSystem::willShow(QtSurface& surface) {
  removeValue(m_shown, &surface);
  const auto above = std::find_if(m_shown.begin(), m_shown.end(),
                                  [&](const QtSurface* other) { return other->level() > surface.level(); });
  m_shown.insert(above, &surface);
  restack();
}

void QtWindowSystem::didShow() {
  updateEscape();
}

void QtWindowSystem::didHide(QtSurface& surface) {
  removeValue(m_shown, &surface);
  updateEscape();
}

void QtWindowSystem::willShow(BubbleWindow& bubble) {
  removeValue(m_shownBubbles, &bubble);
  m_shownBubbles.push_back(&bubble);
  restack();
}

void QtWindowSystem::restack() {
  const auto above = windowAboveOurs();
  // From the lowest to the highest: each comes to stand above those before it.
  const auto place = [&](const QWindow& window) {
    if (above) {
      m_display.placeBelow(window.winId(), *above);
    } else {
      m_display.raise(window.winId());
    }
  };
  for (const QtSurface* surface : m_shown)
    place(surface->window());
  for (const BubbleWindow* bubble : m_shownBubbles)
    place(*bubble);
  m_display.flush();
}

std::optional<WId> QtWindowSystem::windowAboveOurs() const {
  if (m_dialog) return m_display.topLevel(*m_dialog);
  if (!QApplication::activePopupWidget()) return std::nullopt;
  // The lowest of the open menus is the one that hangs on no other.
  for (const QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->isVisible() && widget->windowType() == Qt::Popup && widget->windowHandle() &&
        !widget->windowHandle()->transientParent()) {
      return widget->windowHandle()->winId();
    }
  }
  return std::nullopt;
}

void QtWindowSystem::updateEscape() {
  m_escape->setEnabled(!m_shown.empty() && !m_dialog);
}

void QtWindowSystem::escapePressed() {
  if (!m_shown.empty()) m_shown.back()->cancel();
}

void QtWindowSystem::compositorChanged() {
  for (QtSurface* surface : m_shown)
    surface->compositorChanged();
  for (BubbleWindow* bubble : m_shownBubbles)
    bubble->compositorChanged();
}

} // namespace orbel::qt
