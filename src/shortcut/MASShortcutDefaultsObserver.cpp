#include "shortcut/MASShortcutDefaultsObserver.h"

#include "platform/Platform.h"
#include "shortcut/MASShortcutView.h"

#include <utility>

namespace orbel {

MASShortcutDefaultsObserver::MASShortcutDefaultsObserver(const std::shared_ptr<MASShortcutView>& shortcutView,
                                                         std::string userDefaultsKey)
    : m_shortcutView(shortcutView), m_userDefaultsKey(std::move(userDefaultsKey)),
      m_originalShortcut(shortcutView->shortcutValue()) {
  showStoredShortcut();
  m_storeObservation = Platform::current().preferences.observeChanges([this] {
    if (!m_internalPreferenceChange) showStoredShortcut();
  });
  m_viewObservation = shortcutView->observeShortcutValue([this] {
    if (!m_internalShortcutChange) storeShownShortcut();
  });
}

MASShortcutDefaultsObserver::~MASShortcutDefaultsObserver() {
  m_storeObservation.reset();
  m_viewObservation.reset();
  if (const auto view = m_shortcutView.lock()) view->setShortcutValue(m_originalShortcut);
}

void MASShortcutDefaultsObserver::showStoredShortcut() {
  const auto view = m_shortcutView.lock();
  if (!view) return;
  m_internalShortcutChange = true;
  const PropertyList* value = Platform::current().preferences.object(m_userDefaultsKey);
  view->setShortcutValue(MASShortcut::shortcutWithData(value ? value->data() : nullptr));
  m_internalShortcutChange = false;
}

void MASShortcutDefaultsObserver::storeShownShortcut() {
  const auto view = m_shortcutView.lock();
  if (!view) return;
  m_internalPreferenceChange = true;
  const auto& shortcut = view->shortcutValue();
  // A cleared shortcut stays in the store as an archive of nothing: the user has decided, it is not
  // merely absent.
  MASShortcut::storeGlobalShortcut(shortcut ? shortcut->data() : MASShortcut::dataOfNothing(),
                                   m_userDefaultsKey);
  static_cast<void>(Platform::current().preferences.synchronize()); // the store logs a failure
  m_internalPreferenceChange = false;
}

} // namespace orbel
