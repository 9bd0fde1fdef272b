// A plain view that reports the pointer entering, leaving and clicking it to blocks that its owner installs.
// The highlighted flag holds while the button is down. Base of the close button.
#pragma once

#include "scene/View.h"

#include <functional>
#include <utility>

namespace orbel {

class MouseSensitiveView : public View {
public:
  using Block = std::function<void(const MouseEvent&)>;

  explicit MouseSensitiveView(const Rect& frame);

  bool isHighlighted() const { return m_highlighted; }
  virtual void setHighlighted(bool highlighted);

  // Without a block the event is passed to the superview.
  void setMouseEnterBlock(Block block) { m_mouseEnterBlock = std::move(block); }
  void setMouseLeaveBlock(Block block) { m_mouseLeaveBlock = std::move(block); }
  // A release inside the bounds; one outside is no click.
  void setMouseClickBlock(Block block) { m_mouseClickBlock = std::move(block); }

  void updateTrackingAreas();
  void mouseEntered(const MouseEvent& event) override;
  void mouseExited(const MouseEvent& event) override;
  void mouseMoved(const MouseEvent& event) override;
  void mouseDown(const MouseEvent& event) override;
  void mouseDragged(const MouseEvent& event) override;
  void mouseUp(const MouseEvent& event) override;
  void mouseCancelled() override;

protected:
  void frameDidChange() override { updateTrackingAreas(); }

private:
  bool m_highlighted = false;
  Block m_mouseEnterBlock;
  Block m_mouseLeaveBlock;
  Block m_mouseClickBlock;
};

} // namespace orbel
