// A title bubble: text and anchor; a native window is borrowed only while it is shown.
#pragma once

#include "backends/qt/windows/BubbleWindow.h"
#include "platform/Bubble.h"

#include <memory>
#include <string>

namespace orbel::qt {

class QtWindowSystem;

class QtBubble : public Bubble {
public:
  QtBubble(QtWindowSystem& system, std::string text);
  ~QtBubble() override;

  void show(const Surface& surface, const Rect& anchor) override;
  void close() override;
  bool isShown() const override { return static_cast<bool>(m_window); }

private:
  QtWindowSystem& m_system;
  std::string m_text;
  Rect m_anchor; // screen points
  std::unique_ptr<BubbleWindow> m_window;
};

} // namespace orbel::qt
