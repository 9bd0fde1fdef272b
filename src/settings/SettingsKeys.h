// The keys of the preferences store under which the settings are kept; their values are
// AppSettings' business.
#pragma once

namespace orbel {

inline constexpr const char* kGestureSettingsKey = "gestureSettings";   // integer, a Gesture
inline constexpr const char* kMagnifySettingsKey = "magnifySettings";   // boolean
inline constexpr const char* kWindowTintColorKey = "windowTintColor";   // data, an ArchivedColor
inline constexpr const char* kShowRunningAppsKey = "showRunningApps";   // boolean
inline constexpr const char* kMenuSizeSettingsKey = "menuSizeSettings"; // integer, 1 to 3
inline constexpr const char* kSwiftModeKey = "swiftMode";               // boolean
inline constexpr const char* kLaunchAtLoginKey = "launchAtLogin";       // boolean
inline constexpr const char* kLaunchedBeforeKey = "launchedBefore";     // boolean, the application delegate's
inline constexpr const char* kGlobalShortcutKey = "GlobalShortcut";     // data, an archived MASShortcut
// boolean, whether the user was shown once how to grant access to the touchpad
inline constexpr const char* kToldOfTouchpadAccessKey = "toldOfTouchpadAccess";

} // namespace orbel
