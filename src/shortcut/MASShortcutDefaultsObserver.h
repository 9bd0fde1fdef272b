// Keeps a shortcut view and a key of the preferences store in step in both directions. Owned by the view.
#pragma once

#include "foundation/Registration.h"
#include "shortcut/MASShortcut.h"

#include <memory>
#include <optional>
#include <string>

namespace orbel {

class MASShortcutView;

class MASShortcutDefaultsObserver {
public:
  // Shows what is stored under the key, and follows the store and the view from then on.
  MASShortcutDefaultsObserver(const std::shared_ptr<MASShortcutView>& shortcutView,
                              std::string userDefaultsKey);
  // Puts the shortcut back that the view had before.
  ~MASShortcutDefaultsObserver();
  MASShortcutDefaultsObserver(const MASShortcutDefaultsObserver&) = delete;
  MASShortcutDefaultsObserver& operator=(const MASShortcutDefaultsObserver&) = delete;

  const std::string& userDefaultsKey() const { return m_userDefaultsKey; }
  const std::optional<MASShortcut>& originalShortcut() const { return m_originalShortcut; }

private:
  void showStoredShortcut();
  void storeShownShortcut();

  std::weak_ptr<MASShortcutView> m_shortcutView;
  std::string m_userDefaultsKey;
  std::optional<MASShortcut> m_originalShortcut;
  bool m_internalPreferenceChange = false; // the store changes because the view did
  bool m_internalShortcutChange = false;   // the view changes because the store did
  Registration m_storeObservation;
  Registration m_viewObservation;
};

} // namespace orbel
