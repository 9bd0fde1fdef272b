#include "tests/doubles/FakeWindowSystem.h"

namespace orbel {

FakeSurface::~FakeSurface() {
  m_owner.hide(*this);
  std::erase(m_owner.surfaces, this);
}

void FakeSurface::setFrame(const Rect& frame) {
  if (std::exchange(screenFrame, frame) == frame || !shown) return;
  damage = Rect({0, 0}, screenFrame.size);
  paintDamage();
}

void FakeSurface::show() {
  ++timesShown;
  m_owner.raise(*this);
  if (std::exchange(shown, true)) return;
  damage = Rect({0, 0}, screenFrame.size);
}

void FakeSurface::orderOut() {
  shown = false;
  m_owner.hide(*this);
}

void FakeSurface::paintDamage() {
  const Rect dirty = std::exchange(damage, Rect());
  if (!shown || dirty.isEmpty() || !delegate) return;
  RecordingCanvas canvas;
  delegate->paint(canvas, dirty);
  picture = canvas.calls;
}

bool FakeSurface::takesInputAt(Point screenPoint) const {
  if (!screenFrame.contains(screenPoint)) return false;
  if (!isRound) return true;
  const double x = (screenPoint.x - screenFrame.center().x) / (screenFrame.size.width / 2 - backdropInset);
  const double y = (screenPoint.y - screenFrame.center().y) / (screenFrame.size.height / 2 - backdropInset);
  return x * x + y * y <= 1;
}

bool FakeSurface::supportsBackdropBlur() const {
  return m_owner.blur;
}

std::optional<Point> FakeSurface::pointerLocation() const {
  if (!m_owner.pointer) return std::nullopt;
  return Point{m_owner.pointer->x - screenFrame.minX(), m_owner.pointer->y - screenFrame.minY()};
}

FakeBubble::~FakeBubble() {
  close();
}

void FakeBubble::show(const Surface& newSurface, const Rect& newAnchor) {
  const Point origin = newSurface.frame().origin;
  surface = &newSurface;
  anchor = newAnchor.offsetBy(origin.x, origin.y);
  if (!shown) m_owner.shownBubbles.push_back(this);
  shown = true;
}

void FakeBubble::close() {
  std::erase(m_owner.shownBubbles, this);
  shown = false;
}

FakeSurface* FakeWindowSystem::surfaceUnderPointer() const {
  if (!pointer) return nullptr;
  for (auto surface = m_stack.rbegin(); surface != m_stack.rend(); ++surface) {
    if ((*surface)->takesInputAt(*pointer)) return *surface;
  }
  return nullptr;
}

void FakeWindowSystem::raise(FakeSurface& surface) {
  std::erase(m_stack, &surface);
  const auto above = std::find_if(m_stack.begin(), m_stack.end(),
                                  [&](const FakeSurface* other) { return other->level > surface.level; });
  m_stack.insert(above, &surface);
}

void FakeWindowSystem::hide(FakeSurface& surface) {
  std::erase(m_stack, &surface);
  std::erase(m_entered, &surface); // what is hidden receives no exit
  if (m_pressed == &surface) m_pressed = nullptr;
}

void FakeWindowSystem::pressEscape() const {
  if (!m_stack.empty() && m_stack.back()->delegate) m_stack.back()->delegate->cancelRequested();
}

Registration FakeWindowSystem::locatePointer(std::function<void(Point)> block) {
  if (pointer) {
    block(*pointer);
    return {};
  }
  m_pointerRequests.push_back(std::make_shared<PointerRequest>(PointerRequest{std::move(block)}));
  return Registration([request = m_pointerRequests.back()] { request->block = nullptr; });
}

void FakeWindowSystem::tellPointer(Point screenPoint) {
  const auto requests = m_pointerRequests;
  for (const auto& request : requests) {
    const auto block = request->block; // a copy, because the request may end within
    request->isAnswered = true;
    if (block) block(screenPoint);
  }
}

void FakeWindowSystem::guessPointer(Point screenPoint) {
  std::erase_if(m_pointerRequests, [](const auto& request) { return request->isAnswered; });
  tellPointer(screenPoint);
}

void FakeWindowSystem::movePointer(Point screenPoint, std::uint64_t modifierFlags) {
  pointer = screenPoint;
  tellPointer(screenPoint);
  m_pointerRequests.clear(); // known for good
  FakeSurface* target = m_pressed ? m_pressed : surfaceUnderPointer();
  tellExits(target, modifierFlags);
  if (!target || !target->delegate) return;
  if (std::find(m_entered.begin(), m_entered.end(), target) == m_entered.end()) m_entered.push_back(target);
  target->delegate->pointerMoved({*target->pointerLocation(), modifierFlags, primaryButtonIsDown});
}

void FakeWindowSystem::tellExits(const FakeSurface* held, std::uint64_t modifierFlags) {
  const auto entered = m_entered;
  for (FakeSurface* surface : entered) {
    // An earlier exit may have ended this one.
    if (std::find(m_entered.begin(), m_entered.end(), surface) == m_entered.end()) continue;
    if (surface == held || surface->screenFrame.contains(*pointer)) continue;
    std::erase(m_entered, surface);
    const MouseEvent event{surface->pointerLocation().value_or(Point{}), modifierFlags, primaryButtonIsDown};
    if (surface->delegate) surface->delegate->pointerExited(event);
  }
}

void FakeWindowSystem::press(PointerButton button, std::uint64_t modifierFlags) {
  if (button == PointerButton::primary) primaryButtonIsDown = true;
  // What was a guess stays one.
  std::erase_if(m_pointerRequests, [](const auto& request) { return request->isAnswered; });
  FakeSurface* target = surfaceUnderPointer();
  if (!target || !target->delegate) return;
  m_pressed = target;
  target->delegate->pointerPressed(button, {*target->pointerLocation(), modifierFlags});
}

void FakeWindowSystem::release(PointerButton button, std::uint64_t modifierFlags) {
  if (button == PointerButton::primary) primaryButtonIsDown = false;
  FakeSurface* target = std::exchange(m_pressed, nullptr);
  if (!target || !target->delegate) return;
  target->delegate->pointerReleased(button, {*target->pointerLocation(), modifierFlags});
  if (pointer) tellExits(nullptr, modifierFlags); // what the button has held back
}

} // namespace orbel
