#include "doubles/FakeWindowSystem.h"

namespace orbel {

FakeSurface::~FakeSurface() {
  std::erase(m_owner.surfaces, this);
  std::erase(m_owner.m_entered, this);
  if (m_owner.m_pressed == this) m_owner.m_pressed = nullptr;
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

void FakeBubble::show(const Rect& anchorOnScreen) {
  anchor = anchorOnScreen;
  if (!shown) m_owner.shownBubbles.push_back(this);
  shown = true;
}

void FakeBubble::close() {
  std::erase(m_owner.shownBubbles, this);
  shown = false;
}

FakeSurface* FakeWindowSystem::surfaceUnderPointer() const {
  for (auto surface = surfaces.rbegin(); surface != surfaces.rend(); ++surface) {
    if ((*surface)->shown && pointer && (*surface)->screenFrame.contains(*pointer)) return *surface;
  }
  return nullptr;
}

void FakeWindowSystem::movePointer(Point screenPoint, std::uint64_t modifierFlags) {
  pointer = screenPoint;
  for (const auto& block : std::exchange(m_waitingForPointer, {}))
    block(screenPoint);
  const auto eventFor = [modifierFlags](const FakeSurface& surface) {
    return MouseEvent{surface.pointerLocation().value_or(Point{}), modifierFlags};
  };
  FakeSurface* target = m_pressed ? m_pressed : surfaceUnderPointer();
  const auto entered = m_entered;
  for (FakeSurface* surface : entered) {
    if (surface == target || surface->screenFrame.contains(screenPoint)) continue;
    std::erase(m_entered, surface);
    if (surface->delegate) surface->delegate->pointerExited(eventFor(*surface));
  }
  if (!target || !target->delegate) return;
  if (std::find(m_entered.begin(), m_entered.end(), target) == m_entered.end()) m_entered.push_back(target);
  target->delegate->pointerMoved(eventFor(*target));
}

void FakeWindowSystem::press(PointerButton button, std::uint64_t modifierFlags) {
  FakeSurface* target = surfaceUnderPointer();
  if (!target || !target->delegate) return;
  m_pressed = target;
  target->delegate->pointerPressed(button, {*target->pointerLocation(), modifierFlags});
}

void FakeWindowSystem::release(PointerButton button, std::uint64_t modifierFlags) {
  FakeSurface* target = std::exchange(m_pressed, nullptr);
  if (!target || !target->delegate) return;
  target->delegate->pointerReleased(button, {*target->pointerLocation(), modifierFlags});
}

} // namespace orbel
