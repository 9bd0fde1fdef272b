#include "chrome/OrbelWindow.h"

#include "foundation/Lifetime.h"
#include "platform/Platform.h"
#include "scene/Animation.h"

#include <string>

namespace orbel {

namespace {
constexpr Rect kInitialFrame{200, 200, 400, 400};
constexpr double kMaskInset = 1;
// Half a point more than the mask, so that the rim's outer edge is never clipped by it.
constexpr double kRimInset = 1.5;
constexpr double kRimWidth = 1;
constexpr double kWhiteLimit = 0.99;
constexpr double kTintAlphaOverBlur = 0.6;
constexpr double kTintAlphaWithoutBlur = 0.95;
// A plain disc lacks the dark blur behind a tint; a darker shade makes up for it.
constexpr double kDarkening = 0.2;

bool isWhite(const Color& color) {
  return color.red > kWhiteLimit && color.green > kWhiteLimit && color.blue > kWhiteLimit;
}

std::unique_ptr<Surface> makeSurface(SurfaceLevel level) {
  auto surface = Platform::current().windows.makeSurface(level);
  // The controllers move and resize it before they show it.
  surface->setFrame(kInitialFrame);
  return surface;
}

Color discColor(const Color& tint, bool blurred) {
  if (isWhite(tint)) return blurred ? Color::clear() : Color::white(1, kTintAlphaWithoutBlur);
  return tint.withAlpha(blurred ? kTintAlphaOverBlur : kTintAlphaWithoutBlur);
}
std::string rimKey(Size size, const Color& fill) {
  std::string key = "rim";
  for (const double value : {size.width, size.height, fill.red, fill.green, fill.blue, fill.alpha}) {
    key += ' ' + std::to_string(value);
  }
  return key;
}
} // namespace

struct OrbelWindow::Fade {
  Lifetime lifetime; // a later fade ends it
  double from;
  double to;
  double start;
  std::function<void()> completion;
  Registration frames;
};

OrbelWindow::OrbelWindow(SurfaceLevel level)
    : m_surface(makeSurface(level)), m_reducedMotion(Platform::current().windows.prefersReducedMotion()),
      m_views(viewWindow(), Platform::current().runLoop, m_reducedMotion),
      m_strokeView(std::make_shared<BezelView>(Rect({}, kInitialFrame.size))),
      m_backgroundBlurred(m_surface->supportsBackdropBlur()) {
  m_strokeView->setAutoresizing(Autoresizing::fillsSuperview);
  contentView().addSubview(m_strokeView);
  setTintColor(Color::white(1));
  m_surface->setDelegate(this);
}

OrbelWindow::~OrbelWindow() {
  m_surface->setDelegate(nullptr);
}

void OrbelWindow::setFrame(const Rect& frame) {
  if (frame.size != m_surface->frame().size) {
    // First, because a surface that is shown paints the picture of its new frame at once.
    m_views.tree().resize(frame.size);
    updateMask();
  }
  m_surface->setFrame(frame);
}

void OrbelWindow::setTintColor(const Color& color) {
  m_tintColor = color;
  if (m_backgroundBlurred) {
    m_surface->setRoundBackdrop(isWhite(color) ? BackdropMaterial::lightFrost : BackdropMaterial::darkFrost,
                                kMaskInset);
  } else if (!isWhite(color)) {
    HueSaturationBrightness shade = color.hueSaturationBrightness();
    if (shade.brightness > kDarkening) shade.brightness -= kDarkening;
    m_tintColor = Color::fromHueSaturationBrightness(shade, 1);
  }
  updateMask();
}

void OrbelWindow::updateMask() {
  const Size size = contentView().frame().size;
  const Rect disc = Rect({}, size).insetBy(kRimInset, kRimInset);
  const Color fill = discColor(m_tintColor, m_backgroundBlurred);
  // An anti-aliased ring costs more than all icons.
  m_strokeView->setImage(
      Platform::current().graphics.keptImage(rimKey(size, fill), size, [disc, fill](Canvas& canvas) {
        canvas.fillEllipse(disc, fill);
        canvas.strokeEllipse(disc, Color::white(1), kRimWidth);
      }));
}

void OrbelWindow::setAlphaValue(double alpha) {
  m_fade.reset();
  m_surface->setAlpha(alpha);
}

void OrbelWindow::animateAlphaValue(double alpha, std::function<void()> completion) {
  RunLoop& runLoop = Platform::current().runLoop;
  m_fade =
      std::make_unique<Fade>(Fade{{}, alphaValue(), alpha, runLoop.clock().now(), std::move(completion), {}});
  if (m_reducedMotion) {
    m_surface->setAlpha(alpha);
    runLoop.after(0, [this, life = m_fade->lifetime.watch()] {
      if (!life.hasEnded()) stepFade();
    });
    return;
  }
  m_fade->frames = runLoop.onEveryFrame([this] { stepFade(); });
}

bool OrbelWindow::isFadingOut() const {
  return m_fade && m_fade->to < m_fade->from;
}

void OrbelWindow::stepFade() {
  const double share = (Platform::current().runLoop.clock().now() - m_fade->start) / kAnimationDuration;
  const bool reduced = !m_fade->frames;
  if (share < 1 && !reduced) {
    m_surface->setAlpha(m_fade->from + (m_fade->to - m_fade->from) * easeInEaseOut(share));
    return;
  }
  m_surface->setAlpha(m_fade->to);
  const auto fade = std::move(m_fade);
  fade->frames.reset();
  // Last, because it may end this window.
  if (fade->completion) fade->completion();
}

bool OrbelWindow::pointerIsOver() const {
  if (m_surface->pointerIsOverOwnPopUp()) return true;
  const auto location = m_surface->pointerLocation();
  return location && Rect({}, frame().size).contains(*location);
}

Point OrbelWindow::pointerLocationOrCenter() const {
  return m_surface->pointerLocation().value_or(contentView().bounds().center());
}

void OrbelWindow::paint(Canvas& canvas, const Rect& dirty) {
  m_views.tree().paint(canvas, dirty);
}
void OrbelWindow::pointerMoved(const MouseEvent& event) {
  m_views.tree().pointerMoved(event);
}
void OrbelWindow::pointerExited(const MouseEvent& event) {
  m_views.tree().pointerExited(event);
}
void OrbelWindow::pointerPressed(PointerButton button, const MouseEvent& event) {
  m_views.tree().pointerPressed(button, event);
}
void OrbelWindow::pointerReleased(PointerButton button, const MouseEvent& event) {
  m_views.tree().pointerReleased(button, event);
}
void OrbelWindow::cancelRequested() {
  if (const auto block = m_cancelBlock) block();
}
DragOperation OrbelWindow::dragMoved(const DragInfo& drag) {
  return m_views.tree().dragMoved(drag);
}
void OrbelWindow::dragExited() {
  m_views.tree().dragExited();
}
bool OrbelWindow::dragPerformed(const DragInfo& drag) {
  return m_views.tree().dragPerformed(drag);
}

ViewTreeAdapter::Window OrbelWindow::viewWindow() {
  return {
      .frame = [this] { return m_surface->frame(); },
      .needsDisplay = [this](const Rect& rect) { m_surface->needsDisplay(rect); },
      // A window that is not on the screen has nothing under the pointer, wherever its frame lies.
      .pointerLocation =
          [this] { return m_surface->isShown() ? m_surface->pointerLocation() : std::nullopt; },
      .backingScale = [this] { return m_surface->backingScale(); },
      .surface = m_surface.get(),
  };
}

} // namespace orbel
