// Starts the program, turns the triggers' requests into calls on the main menu's controller, and ends the
// program. Made by main after the platform; lives as long as the program. Main thread only.
#pragma once

#include "controllers/OrbelWindowController.h"
#include "foundation/NotificationCenter.h"
#include "foundation/Registration.h"

#include <memory>
#include <vector>

namespace orbel {

class AppDelegate {
public:
  AppDelegate() = default;
  ~AppDelegate();
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  void applicationDidFinishLaunching();
  // Writes the store to disk and tells the companion to end.
  void applicationWillTerminate();
  // Logs when the process may not listen to the user's input.
  void makeTrustedIfNeccessary();

  void orbelMenuShouldShow(const Notification& notification);
  void orbelMenuShouldHide();
  void orbelWindowDidDisappear();

  // The desktop asked for it (its own key binding, a script): as if the shortcut were pressed, or a click
  // elsewhere.
  void showMenuAtPointer();
  void hideMenu();

  // The main menu's controller while a menu exists; empty otherwise.
  const std::shared_ptr<OrbelWindowController>& windowController() const { return m_windowController; }

private:
  void summon(bool fromKeyboard);
  void showMenu(Point pointer, bool fromKeyboard);

  std::shared_ptr<OrbelWindowController> m_windowController;
  std::vector<Registration> m_observations;
};

} // namespace orbel
