// The process's settings and triggers: every other module reads and writes the user's settings here, straight
// from and to the preferences store, and the global shortcut and the gestures that summon the menu are
// started and stopped here. Setters of what an open menu shows post a notification
// (settings/Notifications.h) after writing; a value that is changed in the store from outside has the
// same effect as its setter. Main thread only.
#pragma once

#include "foundation/Color.h"
#include "foundation/Lifetime.h"
#include "foundation/Registration.h"
#include "platform/EventTaps.h"
#include "settings/PointerCircleRecognizer.h"
#include "settings/RestingFingersRecognizer.h"
#include "settings/SettingsWatch.h"
#include "settings/SpreadingFingersRecognizer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

// The gesture that summons the menu. The numbers are the stored ones.
enum class Gesture : std::int64_t {
  threeFingersResting = 1,
  threeFingersSpreading = 2,
  fourFingersSpreading = 3,
  fourFingersResting = 4,
  pointerCircle = 5,
};

class AppSettings {
public:
  // Made at the first call (SharedObjects), with its event taps, all disabled. The platform must be there.
  static AppSettings& sharedInstance();
  // Stops the handlers and ends the taps.
  ~AppSettings();
  AppSettings(const AppSettings&) = delete;
  AppSettings& operator=(const AppSettings&) = delete;

  // A Gesture's number, 1 to 5; 1 when absent or anything else is stored. Setting it restarts the handlers.
  std::int64_t gestureSettings() const;
  void setGestureSettings(std::int64_t gesture);
  // Whether items grow under the pointer; true when absent. Posts.
  bool magnifySettings() const;
  void setMagnifySettings(bool magnify);
  // White when absent or unreadable (logged once for each such value). Posts.
  Color windowTintColor() const;
  void setWindowTintColor(const Color& color);
  // Whether running applications follow the user's items; true when absent. Posts.
  bool showRunningApps() const;
  void setShowRunningApps(bool show);
  // 1 to 3; 1 when absent or anything else is stored. Posts.
  std::int64_t menuSizeSettings() const;
  void setMenuSizeSettings(std::int64_t size);
  // Whether reaching an item opens it; false when absent.
  bool swiftMode() const;
  void setSwiftMode(bool swift);
  // Whether the desktop starts the program at login; false when absent. Setting it calls
  // updateLaunchSettings(), after which it reads as what the desktop will do. A change that is made with the
  // desktop's own tools is taken over; a setting that comes from another machine is carried out at the start.
  bool launchAtLogin() const;
  void setLaunchAtLogin(bool launch);

  // Registers the stored global shortcut, and enables the mouse-up tap and the one tap that the gesture
  // needs. Handlers that run already are stopped first.
  void startHandlers();
  void stopHandlers();
  // Writes gesture 1 and magnification; notifies no observer.
  void reset();
  // Brings the desktop's login item in line with the setting. Where that fails the setting is stored as off,
  // or as on if the desktop still starts the program.
  void updateLaunchSettings();

  const EventTap& touchEventTap() const { return *m_touchEventTap; }
  const EventTap& mouseUpEventTap() const { return *m_mouseUpEventTap; }
  const EventTap& mouseMovedEventTap() const { return *m_mouseMovedEventTap; }

  // What the recognisers know; see their headers.
  std::int64_t touchCount() const { return m_restingFingers.touchCount(); }
  void setTouchCount(std::int64_t count) { m_restingFingers.setTouchCount(count); }
  const std::vector<Touch>& currentTouches() const { return m_restingFingers.currentTouches(); }
  void setCurrentTouches(std::vector<Touch> touches) {
    m_restingFingers.setCurrentTouches(std::move(touches));
  }
  bool nFingerRestPossible() const { return m_restingFingers.nFingerRestPossible(); }
  void setNFingerRestPossible(bool possible) { m_restingFingers.setNFingerRestPossible(possible); }
  float magnifyStartDistance() const { return m_spreadingFingers.magnifyStartDistance(); }
  void setMagnifyStartDistance(float distance) { m_spreadingFingers.setMagnifyStartDistance(distance); }
  const std::vector<Point>& lastMousePositions() const { return m_pointerCircle.lastMousePositions(); }
  const std::vector<double>& lastMousePositionTimestamps() const {
    return m_pointerCircle.lastMousePositionTimestamps();
  }

private:
  friend class SharedObjects;
  AppSettings();
  void takeOverLoginItem();
  void changedFromOutside(const std::string& key);
  void mouseUp();
  EventTaps::MovementUse mouseMoved();
  void touchesChanged(const std::vector<Touch>& touches);
  void magnified();
  void watchRest(const std::vector<Touch>& touches, std::int64_t fingerCount);
  void watchSpread(const std::vector<Touch>& touches, std::size_t fingerCount);
  void post(const char* name) const;
  void postShouldShow(const char* eventType) const;

  RestingFingersRecognizer m_restingFingers;
  SpreadingFingersRecognizer m_spreadingFingers;
  PointerCircleRecognizer m_pointerCircle;
  std::unique_ptr<EventTap> m_touchEventTap;
  std::unique_ptr<EventTap> m_mouseUpEventTap;
  std::unique_ptr<EventTap> m_mouseMovedEventTap;
  mutable std::optional<PropertyList> m_refusedTint; // as last logged
  Registration m_loginItemObservation;
  SettingsWatch m_watch;
  Lifetime m_lifetime; // a rest may end after the settings
};

} // namespace orbel
