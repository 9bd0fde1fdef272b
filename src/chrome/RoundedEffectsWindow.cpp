#include "chrome/RoundedEffectsWindow.h"

#include "platform/Platform.h"

namespace orbel {

namespace {
constexpr double kMaskInset = 1;
constexpr double kCornerRadius = 10;
// Half a point more than the mask, so that the rim's outer edge is never clipped by it.
constexpr double kRimInset = 1.5;
constexpr double kRimWidth = 1;
} // namespace

RoundedEffectsWindow::RoundedEffectsWindow(ManagedWindow& window) : m_window(window) {
  awakeFromNib();
}

RoundedEffectsWindow::~RoundedEffectsWindow() {
  m_window.setDelegate(nullptr);
}

void RoundedEffectsWindow::awakeFromNib() {
  m_window.setFloating(true);
  m_window.setDelegate(this);
  if (!m_window.supportsBackdropBlur()) return;
  const Platform& platform = Platform::current();
  m_views.emplace(ViewTreeAdapter::Window{
                      .frame = [this] { return frame(); },
                      .needsDisplay = [this](const Rect& rect) { m_window.needsDisplay(rect); },
                      .pointerLocation = [this] { return pointerLocationInWindow(); },
                  },
                  platform.runLoop, platform.windows.prefersReducedMotion());
  m_strokeView = std::make_shared<BezelView>(Rect({}, frame().size));
  m_strokeView->setAutoresizing(Autoresizing::fillsSuperview);
  blurView()->addSubview(m_strokeView);
  updateMask();
}

void RoundedEffectsWindow::updateMask() {
  if (!m_views) return;
  const Size size = frame().size;
  m_window.setRoundedBackdrop(m_window.colorScheme() == ColorScheme::dark ? BackdropMaterial::darkFrost
                                                                          : BackdropMaterial::lightFrost,
                              kMaskInset, kCornerRadius);
  const Rect rim = Rect({}, size).insetBy(kRimInset, kRimInset);
  m_strokeView->setImage(Platform::current().graphics.drawnImage(size, [rim](Canvas& canvas) {
    canvas.strokeRoundedRect(rim, kCornerRadius, Color::white(1), kRimWidth);
  }));
}

void RoundedEffectsWindow::mouseDown(const MouseEvent&) {
  m_movedByDisplay = m_window.beginInteractiveMove();
  if (m_movedByDisplay) return;
  const auto pointer = Platform::current().windows.pointerLocation();
  if (!pointer) return;
  m_originalMouseLocation = *pointer;
  m_originalWindowLocation = frame().origin;
}

// The pointer's place on the screen and not the event's in the window, which moves along.
void RoundedEffectsWindow::mouseDragged(const MouseEvent&) {
  if (m_movedByDisplay) return;
  const auto pointer = Platform::current().windows.pointerLocation();
  if (!pointer) return;
  m_window.setFrameOrigin({m_originalWindowLocation.x + pointer->x - m_originalMouseLocation.x,
                           m_originalWindowLocation.y + pointer->y - m_originalMouseLocation.y});
}

void RoundedEffectsWindow::paint(Canvas& canvas, const Rect& dirty) {
  if (m_views) m_views->tree().paint(canvas, dirty);
}

void RoundedEffectsWindow::windowDidResize() {
  if (!m_views) return;
  m_views->tree().resize(frame().size);
  updateMask();
}

void RoundedEffectsWindow::colorSchemeDidChange() {
  updateMask();
  if (m_colorSchemeChange) m_colorSchemeChange();
}

std::optional<Point> RoundedEffectsWindow::pointerLocationInWindow() const {
  const auto pointer = Platform::current().windows.pointerLocation();
  if (!pointer) return std::nullopt;
  return Point{pointer->x - frame().minX(), pointer->y - frame().minY()};
}

} // namespace orbel
