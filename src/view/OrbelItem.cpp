#include "view/OrbelItem.h"

#include "platform/Platform.h"
#include "scene/ViewTree.h"

#include <utility>

namespace orbel {

namespace {
constexpr double kInitialSide = 48;
}

OrbelItem::OrbelItem(const Rect& frame) : View(frame) {}

OrbelItem::OrbelItem(ImagePointer image, std::optional<std::string> title)
    : OrbelItem(Rect(0, 0, kInitialSide, kInitialSide)) {
  setImage(std::move(image));
  setTitle(std::move(title));
}

void OrbelItem::setImage(ImagePointer image) {
  m_image = std::move(image);
  setNeedsDisplay();
}

void OrbelItem::setTitle(std::optional<std::string> title) {
  m_title = std::move(title);
  if (m_titlePopover && m_titlePopover->isShown()) m_outgoingPopover = std::move(m_titlePopover);
  m_titlePopover.reset();
}

void OrbelItem::setHighlighted(bool highlighted) {
  m_highlighted = highlighted;
  setNeedsDisplay();
}

void OrbelItem::setHighlightColor(std::optional<Color> color) {
  m_highlightColor = color;
  if (!color) return;
  m_dotColor = *color;
  setNeedsDisplay();
}

void OrbelItem::setSelected(bool selected) {
  const bool wasSelected = std::exchange(m_selected, selected);
  // Only a change darkens: an item that got its image after it was selected stays as it was.
  if (selected && wasSelected && m_image) return;
  const double opacity = selected && m_image ? kSelectedOpacity : 0;
  if (opacity == m_selectionOpacity) return;
  m_selectionOpacity = opacity;
  setNeedsDisplay();
}

Bubble* OrbelItem::titlePopover() {
  if (!m_titlePopover && m_title) m_titlePopover = Platform::current().windows.makeBubble(*m_title);
  return m_titlePopover.get();
}

void OrbelItem::showTitle() {
  const Surface* const place = surface();
  if (!m_title || !place) return;
  m_outgoingPopover.reset();
  titlePopover()->show(*place, anchorInWindow());
}

void OrbelItem::closeTitle() {
  m_outgoingPopover.reset();
  // Called for nearly every item at every move of the pointer, so one that never showed its title
  // does nothing.
  if (m_titlePopover && m_titlePopover->isShown()) m_titlePopover->close();
}

void OrbelItem::replace(OrbelItem& other) {
  takeOverPresentation(other);
  if (m_title == other.m_title && other.m_titlePopover) m_titlePopover = std::move(other.m_titlePopover);
}

void OrbelItem::draw(Canvas& canvas) {
  // The overlay and the dot follow what is painted, which may still be on its way to the frame.
  const Rect icon({}, presentedFrame().size);
  if (m_image) {
    canvas.drawImage(*m_image, icon);
    if (m_selectionOpacity > 0) canvas.drawSilhouette(*m_image, icon, Color::white(0, m_selectionOpacity));
  }
  if (m_highlighted) canvas.fillEllipse(dotFrame(icon.size.width), m_dotColor);
}

void OrbelItem::presentationDidChange() {
  if (!m_titlePopover || !m_titlePopover->isShown()) return;
  if (const Surface* const place = surface()) {
    m_titlePopover->show(*place, anchorInWindow());
  } else {
    m_titlePopover->close();
  }
}

const Surface* OrbelItem::surface() const {
  return tree() ? tree()->host().hostSurface() : nullptr;
}

Rect OrbelItem::anchorInWindow() const {
  return superview() ? superview()->convertToWindow(presentedFrame()) : presentedFrame();
}

} // namespace orbel
