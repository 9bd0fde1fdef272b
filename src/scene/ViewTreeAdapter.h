// Joins a view tree to what shows it: a menu's surface, the settings window, a control among others. It owns
// the tree and answers its questions by the blocks that its owner gives; the owner hands what happens in the
// window to tree(). Main thread only.
#pragma once

#include "scene/ViewTree.h"

#include <functional>
#include <optional>

namespace orbel {

class ViewTreeAdapter : private ViewTreeHost {
public:
  // Called as long as the adapter lives, frame() already while it is made.
  struct Window {
    std::function<Rect()> frame;                   // screen points
    std::function<void(const Rect&)> needsDisplay; // window points
    // Read now, in window points; none when it cannot be known.
    std::function<std::optional<Point>()> pointerLocation;
    std::function<double()> backingScale = {}; // device pixels a point; 1 without the block
    const Surface* surface = nullptr;          // none in a window that is no surface
  };

  // The tree has the size of the window's frame. The run loop outlives the adapter. Reduced motion makes
  // every animation immediate.
  ViewTreeAdapter(Window window, RunLoop& runLoop, bool reducedMotion);
  ViewTreeAdapter(const ViewTreeAdapter&) = delete;
  ViewTreeAdapter& operator=(const ViewTreeAdapter&) = delete;

  ViewTree& tree() { return m_tree; }
  View& contentView() const { return m_tree.contentView(); }

private:
  void needsDisplay(const Rect& rectInWindow) override { m_window.needsDisplay(rectInWindow); }
  std::optional<Point> pointerLocationInWindow() const override { return m_window.pointerLocation(); }
  double backingScale() const override { return m_window.backingScale ? m_window.backingScale() : 1; }
  Rect screenFrame() const override { return m_window.frame(); }
  const Surface* hostSurface() const override { return m_window.surface; }

  Window m_window;
  ViewTree m_tree;
};

} // namespace orbel
