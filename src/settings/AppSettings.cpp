#include "settings/AppSettings.h"

#include "foundation/Log.h"
#include "foundation/NotificationCenter.h"
#include "foundation/SharedObjects.h"
#include "platform/Platform.h"
#include "settings/ArchivedColor.h"
#include "settings/Notifications.h"
#include "settings/SettingsKeys.h"
#include "shortcut/MASShortcut.h"

#include <exception>
#include <string>
#include <utility>

namespace orbel {

namespace {
constexpr auto kFirstGesture = static_cast<std::int64_t>(Gesture::threeFingersResting);
constexpr auto kLastGesture = static_cast<std::int64_t>(Gesture::pointerCircle);
constexpr std::int64_t kFirstMenuSize = 1;
constexpr std::int64_t kLastMenuSize = 3;

// Every sample that is due must have been reported.
static_assert(EventTaps::kMovementInterval <= PointerCircleRecognizer::kSampleInterval);

PreferencesStore& preferences() {
  return Platform::current().preferences;
}

std::int64_t integerBetween(const char* key, std::int64_t first, std::int64_t last) {
  const std::int64_t value = preferences().integer(key);
  return value < first || value > last ? first : value;
}

bool booleanOrTrue(const char* key) {
  return !preferences().object(key) || preferences().boolean(key);
}

// None, and logged, when it cannot be read.
std::optional<LoginItem::State> loginItemState() {
  const auto state = Platform::current().loginItem.state();
  Log::warningIfFailed(state);
  return state ? std::optional(*state) : std::nullopt;
}
} // namespace

AppSettings& AppSettings::sharedInstance() {
  return SharedObjects::current().get<AppSettings>();
}

AppSettings::AppSettings()
    : m_watch({kGestureSettingsKey, kMagnifySettingsKey, kWindowTintColorKey, kShowRunningAppsKey,
               kMenuSizeSettingsKey, kLaunchAtLoginKey},
              [this](const std::string& key) { changedFromOutside(key); }) {
  // Used by the destructor, which ends the binding of the shortcut.
  MASShortcut::registeredUserDefaultsHotKeys();
  EventTaps& taps = Platform::current().eventTaps;
  m_touchEventTap = taps.makeTouchTap(
      {[this](const std::vector<Touch>& touches) { touchesChanged(touches); }, [this] { magnified(); }});
  m_mouseUpEventTap = taps.makeMouseUpTap([this] { mouseUp(); });
  m_mouseMovedEventTap = taps.makeMouseMovedTap([this] { return mouseMoved(); });
  m_loginItemObservation = Platform::current().loginItem.observeChanges([this] { takeOverLoginItem(); });
  // What the user did with the desktop's own tools counts, not what was chosen here before; where nothing has
  // been done yet, as with preferences from another machine, the stored setting does.
  takeOverLoginItem();
  updateLaunchSettings();
}

AppSettings::~AppSettings() {
  stopHandlers();
}

std::int64_t AppSettings::gestureSettings() const {
  return integerBetween(kGestureSettingsKey, kFirstGesture, kLastGesture);
}

void AppSettings::setGestureSettings(std::int64_t gesture) {
  m_watch.write(kGestureSettingsKey, gesture);
  stopHandlers();
  startHandlers();
}

bool AppSettings::magnifySettings() const {
  return booleanOrTrue(kMagnifySettingsKey);
}

void AppSettings::setMagnifySettings(bool magnify) {
  m_watch.write(kMagnifySettingsKey, magnify);
  post(kOrbelMenuMagnifySettingsChangedNotification);
}

Color AppSettings::windowTintColor() const {
  const PropertyList* value = preferences().object(kWindowTintColorKey);
  // It is asked for many times in a reload, and the log is to say it once.
  if (!value || m_refusedTint == *value) return Color::white(1);
  if (const PropertyList::Data* data = value->data()) {
    const auto color = ArchivedColor::unarchive(*data);
    if (color) return *color;
    Log::warning(color.cause());
  } else {
    Log::warning(std::string("what is stored under \"") + kWindowTintColorKey +
                 "\" is no data and so no colour");
  }
  m_refusedTint = *value;
  return Color::white(1);
}

void AppSettings::setWindowTintColor(const Color& color) {
  m_watch.write(kWindowTintColorKey, ArchivedColor::archive(color));
  post(kOrbelMenuWindowTintSettingsChangedNotification);
}

bool AppSettings::showRunningApps() const {
  return booleanOrTrue(kShowRunningAppsKey);
}

void AppSettings::setShowRunningApps(bool show) {
  m_watch.write(kShowRunningAppsKey, show);
  post(kOrbelMenuShowRunningAppsChangedNotification);
}

std::int64_t AppSettings::menuSizeSettings() const {
  return integerBetween(kMenuSizeSettingsKey, kFirstMenuSize, kLastMenuSize);
}

void AppSettings::setMenuSizeSettings(std::int64_t size) {
  m_watch.write(kMenuSizeSettingsKey, size);
  post(kOrbelMenuMenuSizeSettingsChangedNotification);
}

bool AppSettings::swiftMode() const {
  return preferences().boolean(kSwiftModeKey);
}

void AppSettings::setSwiftMode(bool swift) {
  m_watch.write(kSwiftModeKey, swift);
}

bool AppSettings::launchAtLogin() const {
  return preferences().boolean(kLaunchAtLoginKey);
}

void AppSettings::setLaunchAtLogin(bool launch) {
  m_watch.write(kLaunchAtLoginKey, launch);
  updateLaunchSettings();
}

void AppSettings::startHandlers() {
  stopHandlers();
  MASShortcut::registerGlobalShortcutWithUserDefaultsKey(kGlobalShortcutKey,
                                                         [this] { postShouldShow(kShowEventShortcut); });
  m_mouseUpEventTap->setEnabled(true);
  if (gestureSettings() == static_cast<std::int64_t>(Gesture::pointerCircle)) {
    // A display that reports no movements would only be kept awake for nothing.
    m_mouseMovedEventTap->setEnabled(Platform::current().eventTaps.tellsMovements());
  } else {
    m_touchEventTap->setEnabled(true);
  }
}

void AppSettings::stopHandlers() {
  MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(kGlobalShortcutKey);
  m_touchEventTap->setEnabled(false);
  m_mouseUpEventTap->setEnabled(false);
  m_mouseMovedEventTap->setEnabled(false);
}

void AppSettings::reset() {
  m_watch.write(kGestureSettingsKey, kFirstGesture);
  m_watch.write(kMagnifySettingsKey, true);
}

void AppSettings::updateLaunchSettings() {
  LoginItem& item = Platform::current().loginItem;
  const bool launch = launchAtLogin();
  if (!launch && loginItemState() != LoginItem::State::registered) return;
  // Also when it is registered: the program may have moved since.
  const auto done = item.setRegistered(launch);
  if (done) return;
  Log::warning(done.cause());
  const bool isRegistered = loginItemState() == LoginItem::State::registered;
  if (isRegistered != launch) m_watch.write(kLaunchAtLoginKey, isRegistered);
}

void AppSettings::takeOverLoginItem() {
  const auto state = loginItemState();
  if (!state || state == LoginItem::State::undecided) return;
  const bool isRegistered = state == LoginItem::State::registered;
  if (isRegistered == launchAtLogin()) return;
  Log::information(isRegistered ? "the desktop starts the program at login now"
                                : "the desktop does not start the program at login any more");
  m_watch.write(kLaunchAtLoginKey, isRegistered);
}

// As if the setter had been called, but for the writing.
void AppSettings::changedFromOutside(const std::string& key) {
  if (key == kMagnifySettingsKey) post(kOrbelMenuMagnifySettingsChangedNotification);
  if (key == kWindowTintColorKey) post(kOrbelMenuWindowTintSettingsChangedNotification);
  if (key == kShowRunningAppsKey) post(kOrbelMenuShowRunningAppsChangedNotification);
  if (key == kMenuSizeSettingsKey) post(kOrbelMenuMenuSizeSettingsChangedNotification);
  if (key == kLaunchAtLoginKey) updateLaunchSettings();
  // Handlers that are stopped stay stopped.
  if (key == kGestureSettingsKey && m_mouseUpEventTap->isEnabled()) startHandlers();
}

void AppSettings::mouseUp() {
  post(kOrbelMenuShouldHideNotification);
}

EventTaps::MovementUse AppSettings::mouseMoved() {
  const Platform& platform = Platform::current();
  const double now = platform.runLoop.clock().now();
  // Asking for the pointer is the expensive part, and only every twentieth of a second needs it.
  if (!m_pointerCircle.isSampleDue(now)) return EventTaps::MovementUse::ignored;
  const auto position = platform.windows.pointerLocation();
  if (position && m_pointerCircle.addSample(*position, now)) postShouldShow(kShowEventTrackpad);
  return EventTaps::MovementUse::taken;
}

void AppSettings::touchesChanged(const std::vector<Touch>& touches) {
  // What the summoning sets off must not break the stream of touches.
  try {
    switch (static_cast<Gesture>(gestureSettings())) {
    case Gesture::threeFingersResting:
      watchRest(touches, 3);
      break;
    case Gesture::fourFingersResting:
      watchRest(touches, 4);
      break;
    case Gesture::threeFingersSpreading:
      watchSpread(touches, 3);
      break;
    case Gesture::fourFingersSpreading:
      watchSpread(touches, 4);
      break;
    case Gesture::pointerCircle:
      break;
    }
  } catch (const std::exception& exception) {
    Log::error(exception.what());
  }
}

void AppSettings::watchRest(const std::vector<Touch>& touches, std::int64_t fingerCount) {
  auto startTouches = m_restingFingers.touchesChanged(touches, fingerCount);
  if (!startTouches) return;
  Platform::current().runLoop.after(RestingFingersRecognizer::kRestDuration,
                                    [this, life = m_lifetime.watch(), start = std::move(*startTouches)] {
                                      if (!life.hasEnded() && m_restingFingers.isRest(start))
                                        postShouldShow(kShowEventTrackpad);
                                    });
}

void AppSettings::watchSpread(const std::vector<Touch>& touches, std::size_t fingerCount) {
  if (m_spreadingFingers.touchesChanged(touches, fingerCount)) postShouldShow(kShowEventTrackpad);
}

void AppSettings::magnified() {
  const auto gesture = static_cast<Gesture>(gestureSettings());
  if (gesture == Gesture::threeFingersResting || gesture == Gesture::fourFingersResting)
    m_restingFingers.magnified();
}

void AppSettings::post(const char* name) const {
  NotificationCenter::defaultCenter().post(name, this);
}

void AppSettings::postShouldShow(const char* eventType) const {
  NotificationCenter::defaultCenter().post(kOrbelMenuShouldShowNotification, this,
                                           {{kShowEventType, eventType}});
}

} // namespace orbel
