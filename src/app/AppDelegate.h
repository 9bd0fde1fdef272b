// Starts the program, turns the triggers' requests into calls on the main menu's controller, and ends the
// program. Made by main after the platform; lives as long as the program. Main thread only.
#pragma once

#include "app/SettingsWindowController.h"
#include "controllers/OrbelWindowController.h"
#include "foundation/NotificationCenter.h"
#include "foundation/Registration.h"
#include "platform/StatusBar.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class AppDelegate {
public:
  // The block ends the main loop, after which main calls applicationWillTerminate(). The command, for a
  // terminal, lets the program read the touchpads.
  AppDelegate(std::function<void()> terminate, std::string touchpadAccessCommand)
      : m_terminate(std::move(terminate)), m_touchpadAccessCommand(std::move(touchpadAccessCommand)) {}
  ~AppDelegate();
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  // Once, by main, when the platform is there: from then on the triggers are handled.
  void applicationDidFinishLaunching();
  // Writes the store to disk and asks the companion to end.
  void applicationWillTerminate();
  // Logs when the process may not listen to the user's input. Where the reason is a touchpad that it may not
  // read, the user is shown once how to grant access.
  void makeTrustedIfNeccessary();

  // By the status item.
  void statusItemClicked() { openSettings(); }
  // Shows the settings window in the middle of the screen, in front and with the keyboard: at the first
  // launch, at a click on the status item, and by main when the desktop asks for the settings or the program
  // is started a second time. Does nothing before the launch and after the end.
  void openSettings();

  // Observers of the notifications of these names, from launch to termination. A trigger asks for the menu:
  // it comes to the pointer, as soon as the display reports where that is. With the pointer inside the
  // visible menu, a request by keyboard hides it and one by gesture does nothing. A request that still waits
  // for the pointer is replaced by a newer one and dropped by a hide.
  void orbelMenuShouldShow(const Notification& notification);
  // A button was released somewhere. Hides menu and collection and gives the earlier program back, unless the
  // pointer is over them or the menu is not yet half visible.
  void orbelMenuShouldHide();
  // The menu has faded out: its controller is released, and the next request makes a new one.
  void orbelWindowDidDisappear();

  // The desktop asked for it (its own key binding, a script): as if the shortcut were pressed, or a
  // click elsewhere.
  void showMenuAtPointer();
  void hideMenu();

  // The main menu's controller while a menu exists; empty otherwise.
  const std::shared_ptr<OrbelWindowController>& windowController() const { return m_windowController; }
  // From launch to termination; empty otherwise.
  const std::shared_ptr<SettingsWindowController>& settingsWindowController() const {
    return m_settingsWindowController;
  }

  // From launch to termination; empty otherwise.
  const StatusItem* statusItem() const { return m_statusItem.get(); }

private:
  void makeStatusItem();
  void observeNotifications();
  void showSettingsAtFirstLaunch();
  void summon(bool fromKeyboard);
  void withdrawSummons();
  void pointerLocated(Point pointer);
  // The menu that is shown now because of the summons; empty where it was hidden or left alone.
  std::shared_ptr<OrbelWindowController> showMenu(Point pointer, bool fromKeyboard);

  // The newest request for the menu, which may wait for the pointer's place.
  struct Summons {
    bool fromKeyboard = false;
    bool isAnswered = false;
    std::weak_ptr<OrbelWindowController> menu; // follows a correction of the place
  };

  std::function<void()> m_terminate;
  std::string m_touchpadAccessCommand;
  std::shared_ptr<OrbelWindowController> m_windowController;
  std::shared_ptr<SettingsWindowController> m_settingsWindowController;
  std::unique_ptr<StatusItem> m_statusItem;
  std::vector<Registration> m_observations;
  std::optional<Summons> m_summons;
  Registration m_pointerRequest; // of the summons
};

} // namespace orbel
