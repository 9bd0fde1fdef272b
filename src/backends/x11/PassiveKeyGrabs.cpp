#include "backends/x11/PassiveKeyGrabs.h"

#include "backends/common/VirtualKeyCodes.h"
#include "backends/x11/Connection.h"
#include "backends/x11/XcbEvent.h"
#include "foundation/Log.h"
#include "platform/HotKeyModifier.h"

#include <algorithm>
#include <string>

namespace orbel::x11 {

namespace {

std::string describe(KeyCombination combination) {
  std::string text;
  if (combination.modifiers & kHotKeyControl) text += "Control+";
  if (combination.modifiers & kHotKeyOption) text += "Alt+";
  if (combination.modifiers & kHotKeyShift) text += "Shift+";
  if (combination.modifiers & kHotKeyCommand) text += "Super+";
  return text + "key " + std::to_string(combination.evdevCode);
}

} // namespace

PassiveKeyGrabs::PassiveKeyGrabs(Connection& connection)
    : m_connection(connection), m_extensionGrabs(connection), m_modifiers(ModifierMap::current(connection)),
      m_xkb(XkbEvents::selectKeymapChanges(connection)), m_mappingChange([this] { mappingChanged(); }),
      m_events(connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); })) {
  if (m_xkb) m_xkb->makeAutoRepeatDetectable(connection);
}

PassiveKeyGrabs::~PassiveKeyGrabs() {
  for (const auto& entry : m_entries)
    release(entry->grabs);
  m_connection.flush();
}

Result<Registration> PassiveKeyGrabs::grab(KeyCombination combination, std::function<void()> pressed) {
  auto grabs = grabsFor(combination);
  if (grabs.empty()) return Failure{"the keyboard has no " + describe(combination)};
  if (!take(grabs)) return Failure{"another program holds " + describe(combination)};
  auto entry = std::make_shared<Entry>(Entry{combination, std::move(pressed), std::move(grabs)});
  m_entries.push_back(entry);
  return Registration([this, life = m_lifetime.watch(), entry] {
    if (!life.hasEnded()) remove(entry);
  });
}

Result<Registration> PassiveKeyGrabs::grabIfFree(KeyCombination combination, std::function<void()> pressed) {
  auto grabbed = grab(combination, std::move(pressed));
  if (grabbed && isHeldByExtension(grabsFor(combination)))
    return Failure{"another program holds " + describe(combination) + " by the input extension"};
  return grabbed;
}

bool PassiveKeyGrabs::isHeldByAnother(KeyCombination combination) {
  const auto grabs = grabsFor(combination);
  if (grabs.empty()) return false;
  if (!take(grabs)) return true;
  release(grabs);
  m_connection.flush();
  return isHeldByExtension(grabs);
}

bool PassiveKeyGrabs::isHeldByExtension(const std::vector<Grab>& grabs) {
  std::vector<std::uint32_t> masks;
  for (const Grab& grab : grabs)
    masks.push_back(grab.second);
  return m_extensionGrabs.isHeldByAnother(grabs.front().first, masks);
}

void PassiveKeyGrabs::remove(const std::shared_ptr<Entry>& entry) {
  if (std::erase(m_entries, entry) == 0) return;
  release(entry->grabs);
  m_connection.flush(); // the combination is free for others from now on
}

std::vector<PassiveKeyGrabs::Grab> PassiveKeyGrabs::grabsFor(KeyCombination combination) const {
  const unsigned keyCode = combination.evdevCode + common::VirtualKeyCodes::kXKeyCodeOffset;
  if (keyCode < m_connection.setup().min_keycode || keyCode > m_connection.setup().max_keycode) return {};
  std::vector<Grab> grabs;
  for (const std::uint16_t mask :
       m_modifiers.lockVariants(m_modifiers.maskForModifiers(combination.modifiers)))
    grabs.emplace_back(static_cast<xcb_keycode_t>(keyCode), mask);
  return grabs;
}

bool PassiveKeyGrabs::take(const std::vector<Grab>& grabs) {
  // All asked before the first answer is awaited: one round trip.
  std::vector<std::pair<Grab, xcb_void_cookie_t>> requests;
  for (const Grab& grab : grabs)
    if (!m_holders.contains(grab))
      requests.emplace_back(grab,
                            xcb_grab_key_checked(m_connection.xcb(), 0, m_connection.root(), grab.second,
                                                 grab.first, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  std::vector<Grab> taken;
  for (const auto& [grab, cookie] : requests)
    if (!ownReply(xcb_request_check(m_connection.xcb(), cookie))) taken.push_back(grab);

  if (taken.size() != requests.size()) {
    for (const Grab& grab : taken)
      xcb_ungrab_key(m_connection.xcb(), grab.first, m_connection.root(), grab.second);
    m_connection.flush();
    return false;
  }
  for (const Grab& grab : grabs)
    ++m_holders[grab];
  return true;
}

void PassiveKeyGrabs::release(const std::vector<Grab>& grabs) {
  for (const Grab& grab : grabs) {
    const auto holders = m_holders.find(grab);
    if (holders == m_holders.end() || --holders->second > 0) continue;
    m_holders.erase(holders);
    xcb_ungrab_key(m_connection.xcb(), grab.first, m_connection.root(), grab.second);
  }
}

void PassiveKeyGrabs::handleEvent(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
  case XCB_KEY_PRESS:
    handlePress(reinterpret_cast<const xcb_key_press_event_t&>(event));
    return;
  case XCB_KEY_RELEASE:
    handleRelease(reinterpret_cast<const xcb_key_release_event_t&>(event));
    return;
  case XCB_MAPPING_NOTIFY:
    m_mappingChange.schedule();
    return;
  default:
    if (m_xkb && m_xkb->isKeymapChange(event)) m_mappingChange.schedule();
  }
}

void PassiveKeyGrabs::handlePress(const xcb_key_press_event_t& press) {
  if (press.event != m_connection.root()) return;
  if (m_down[press.detail]) return; // the keyboard repeats it
  m_down.set(press.detail);
  if (m_activatingKey == 0) m_activatingKey = press.detail;

  // While a grab is active every key comes here, whatever is held with it: compare in full.
  const auto modifiers = static_cast<std::uint16_t>(press.state & m_modifiers.significantMask());
  std::vector<std::shared_ptr<Entry>> matching;
  for (const auto& entry : m_entries)
    if (!entry->grabs.empty() && entry->grabs.front() == Grab{press.detail, modifiers})
      matching.push_back(entry);
  for (const auto& entry : matching) {
    // An earlier one may have ended this one.
    if (std::ranges::find(m_entries, entry) != m_entries.end()) entry->pressed();
  }
}

void PassiveKeyGrabs::handleRelease(const xcb_key_release_event_t& release) {
  m_down.reset(release.detail);
  if (release.detail != m_activatingKey) return;
  // The grab ends here, and releases of other keys are sent elsewhere.
  m_activatingKey = 0;
  m_down.reset();
}

void PassiveKeyGrabs::mappingChanged() {
  m_modifiers = ModifierMap::current(m_connection);
  // What is no longer wanted is released first, so that two combinations that swap their grabs both get them.
  std::vector<std::pair<std::shared_ptr<Entry>, std::vector<Grab>>> moved;
  for (const auto& entry : m_entries) {
    auto grabs = grabsFor(entry->combination);
    if (grabs == entry->grabs) continue; // the server keeps grabs through a change of the keymap
    release(entry->grabs);
    entry->grabs.clear();
    moved.emplace_back(entry, std::move(grabs));
  }
  for (auto& [entry, grabs] : moved) {
    if (take(grabs))
      entry->grabs = std::move(grabs);
    else
      Log::warning("after a change of the keyboard layout another program holds " +
                   describe(entry->combination));
  }
  m_connection.flush();
}

} // namespace orbel::x11
