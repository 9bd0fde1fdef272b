// Makes surfaces and bubbles on the toolkit and keeps them in order: menu, sub-menu, bubbles, then pop-up
// menus. Main thread only; needs a QApplication and is gone before it; outlives its surfaces and bubbles. On
// another platform of the toolkit than X11 everything works that needs no X server.
#pragma once

#include "backends/qt/BubbleWindow.h"
#include "backends/qt/DisplayServer.h"
#include "backends/qt/MenuWindow.h"
#include "backends/x11/EscapeGrab.h"
#include "platform/WindowSystem.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orbel {

class MenuSurface;

// What the window system asks of its neighbours; each may be empty.
struct WindowSystemHooks {
  // Lets the event taps act on what has happened so far; called before a surface hears of a button's release.
  std::function<void()> drainTaps;
  // Whether the pointer is over a context menu or a dialog that belongs to a surface. Bubbles are known here.
  std::function<bool()> pointerIsOverPopUp;
};

class QtWindowSystem : public WindowSystem {
public:
  // Without X11 parts there is no Escape, no blur, no round input region and no watch beyond a surface's
  // edge.
  QtWindowSystem(std::optional<X11Parts> x11, WindowSystemHooks hooks);
  ~QtWindowSystem() override;
  QtWindowSystem(const QtWindowSystem&) = delete;
  QtWindowSystem& operator=(const QtWindowSystem&) = delete;

  std::unique_ptr<Surface> makeSurface(SurfaceLevel level) override;
  std::unique_ptr<Bubble> makeBubble(const std::string& text) override;
  void locatePointer(std::function<void(Point)> block) override;
  std::optional<Point> pointerLocation() const override;
  bool prefersReducedMotion() const override;
  void beep() override;

  // The managed dialog of ours in front: all surfaces and bubbles stand directly below it (or are out of
  // sight, where the window manager draws them above everything), and Escape is its own. Nothing once the
  // last one has closed. May be called before the dialog is on the screen.
  void standBelow(std::optional<WId> dialog);

  // The rest is for surfaces and bubbles alone.
  DisplayServer* display() const { return m_display.get(); }
  void drainTaps();
  bool pointerIsOverPopUp() const;

  // Windows made ahead, or new ones where those are in use.
  std::unique_ptr<MenuWindow> takeMenuWindow();
  void returnMenuWindow(std::unique_ptr<MenuWindow> window);
  std::unique_ptr<BubbleWindow> takeBubbleWindow();
  void returnBubbleWindow(std::unique_ptr<BubbleWindow> window);

  // Around the mapping of a surface: orders it before, takes Escape after, so that the key costs no time
  // before.
  void willShow(MenuSurface& surface);
  void didShow();
  void didHide(MenuSurface& surface);
  void willShow(BubbleWindow& bubble);
  // Whether shown surfaces and bubbles are unmapped for now.
  bool hidesForDialog() const { return m_hidesForDialog; }
  // Lowest first.
  const std::vector<MenuSurface*>& shownSurfaces() const { return m_shown; }

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
  std::unique_ptr<DisplayServer> m_display; // null where there is no X server
  std::optional<EscapeGrab> m_escape;
  std::vector<MenuSurface*> m_shown;         // lowest first
  std::vector<BubbleWindow*> m_shownBubbles; // lowest first
  std::vector<std::unique_ptr<MenuWindow>> m_spareMenuWindows;
  std::vector<std::unique_ptr<BubbleWindow>> m_spareBubbleWindows;
  std::optional<WId> m_dialog;
  std::unique_ptr<DialogWatch> m_dialogWatch;
  bool m_hidesForDialog = false;
};

} // namespace orbel
