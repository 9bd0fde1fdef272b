// Makes surfaces and bubbles on Qt and keeps them in order: menu, sub-menu, bubbles, then pop-up menus. Main
// thread only; needs a QApplication and is destroyed before it; outlives its surfaces and bubbles. For
// displays on which a window can be put at a place of the screen.
#pragma once

#include "backends/qt/windows/BubbleWindow.h"
#include "backends/qt/windows/DisplayServer.h"
#include "backends/qt/windows/MenuWindow.h"
#include "platform/WindowSystem.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orbel::qt {

class QtSurface;

// What the window system asks of its neighbours; each may be empty.
struct WindowSystemHooks {
  // Lets the event taps act on what has happened so far; called before a surface receives a button's release.
  std::function<void()> drainTaps;
  // Whether the pointer is over a context menu or a dialog that belongs to a surface. Bubbles are known here.
  std::function<bool()> pointerIsOverPopUp;
};

class QtWindowSystem : public WindowSystem {
public:
  // The display outlives the window system.
  QtWindowSystem(DisplayServer& display, WindowSystemHooks hooks);
  ~QtWindowSystem() override;
  QtWindowSystem(const QtWindowSystem&) = delete;
  QtWindowSystem& operator=(const QtWindowSystem&) = delete;

  std::unique_ptr<Surface> makeSurface(SurfaceLevel level) override;
  std::unique_ptr<Bubble> makeBubble(const std::string& text) override;
  Registration locatePointer(std::function<void(Point)> block) override;
  std::optional<Point> pointerLocation() const override;
  bool prefersReducedMotion() const override;
  void beep() override;

  // The managed dialog of ours in front: all surfaces and bubbles stand directly below it (or are out of
  // sight, where the window manager draws them above everything), and Escape is its own. Nothing once the
  // last one has closed. May be called before the dialog is on the screen.
  void standBelow(std::optional<WId> dialog);

  // The rest is for surfaces and bubbles alone.
  DisplayServer& display() const { return m_display; }
  void drainTaps();
  bool pointerIsOverPopUp() const;

  // Windows made ahead, or new ones where those are in use.
  std::unique_ptr<MenuWindow> takeMenuWindow();
  void returnMenuWindow(std::unique_ptr<MenuWindow> window);
  std::unique_ptr<BubbleWindow> takeBubbleWindow();
  void returnBubbleWindow(std::unique_ptr<BubbleWindow> window);

  // Around the mapping of a surface: orders it before, takes Escape after, so that the key costs no
  // time before.
  void willShow(QtSurface& surface);
  void didShow();
  void didHide(QtSurface& surface);
  void willShow(BubbleWindow& bubble);
  // Whether shown surfaces and bubbles are unmapped for now.
  bool hidesForDialog() const { return m_hidesForDialog; }
  // Lowest first.
  const std::vector<QtSurface*>& shownSurfaces() const { return m_shown; }

private:
  class DialogWatch;

  std::unique_ptr<MenuWindow> makeMenuWindow() const;
  std::unique_ptr<BubbleWindow> makeBubbleWindow() const;
  void restack();
  std::optional<WId> windowAboveOurs() const;
  void updateEscape();
  void escapePressed();
  void compositorChanged();

  WindowSystemHooks m_hooks;
  DisplayServer& m_display;
  std::unique_ptr<common::EscapeKey> m_escape;
  Registration m_compositing;
  std::vector<QtSurface*> m_shown;           // lowest first
  std::vector<BubbleWindow*> m_shownBubbles; // lowest first
  std::vector<std::unique_ptr<MenuWindow>> m_spareMenuWindows;
  std::vector<std::unique_ptr<BubbleWindow>> m_spareBubbleWindows;
  std::optional<WId> m_dialog;
  std::unique_ptr<DialogWatch> m_dialogWatch;
  bool m_hidesForDialog = false;
};

} // namespace orbel::qt
