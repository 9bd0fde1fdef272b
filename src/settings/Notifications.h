// The names of the notifications between the triggers, the settings and the menus, and of what they carry.
// All are posted with the settings store as object.
#pragma once

namespace orbel {

// A setting that changes how an open menu looks; no user info.
inline constexpr const char* kOrbelMenuMagnifySettingsChangedNotification =
    "OrbelMenuMagnifySettingsChangedNotification";
inline constexpr const char* kOrbelMenuWindowTintSettingsChangedNotification =
    "OrbelMenuWindowTintSettingsChangedNotification";
inline constexpr const char* kOrbelMenuShowRunningAppsChangedNotification =
    "OrbelMenuShowRunningAppsChangedNotification";
inline constexpr const char* kOrbelMenuMenuSizeSettingsChangedNotification =
    "OrbelMenuMenuSizeSettingsChangedNotification";

// The user summons the menu. User info: kShowEventType, one of the two values below.
inline constexpr const char* kOrbelMenuShouldShowNotification = "OrbelMenuShouldShowNotification";
inline constexpr const char* kShowEventType = "ShowEventType";
inline constexpr const char* kShowEventShortcut = "ShowEventShortcut"; // the global shortcut
inline constexpr const char* kShowEventTrackpad = "ShowEventTrackpad"; // a gesture, the pointer circle too

// The primary button was released somewhere; no user info.
inline constexpr const char* kOrbelMenuShouldHideNotification = "OrbelMenuShouldHideNotification";

} // namespace orbel
