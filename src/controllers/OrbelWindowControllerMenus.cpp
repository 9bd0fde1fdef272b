#include "controllers/OrbelWindowController.h"

#include "controllers/ItemLookup.h"
#include "foundation/Log.h"
#include "model/AppMenuItem.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "platform/Platform.h"

#include <utility>

namespace orbel {

namespace {
std::string localized(const char* english) {
  return Platform::current().text.localized(english);
}

// Paths are compared as those of folders, whether or not one was written so.
std::string withTrailingSlash(std::string path) {
  if (!path.ends_with('/')) path += '/';
  return path;
}
} // namespace

void OrbelWindowController::didRightClickItem(ItemPath path) {
  if (itemMenuVisible()) {
    m_itemMenu->cancelTracking();
    return;
  }
  m_targetMenuItem = menuItem(path);
  if (!m_targetMenuItem) return;
  if (dynamic_cast<const CoreMenuItem*>(m_targetMenuItem.get()) &&
      m_targetMenuItem->name() == CoreMenuItem::kFinder)
    return;
  m_itemMenu->popUp(itemMenuEntries());
}

std::vector<MenuEntry> OrbelWindowController::itemMenuEntries() {
  const MenuItem& target = *m_targetMenuItem;
  const auto subitems = target.subitems();
  const bool isRunningApp = targetRunningApp() != nullptr;
  return {
      ItemContextMenu::openWithEntry(target,
                                     [self = weak_from_this()](std::int64_t tag) {
                                       if (const auto controller = self.lock()) controller->openClicked(tag);
                                     }),
      ItemContextMenu::entry("Rename Collection", target.canRename(),
                             weakly(&OrbelWindowController::renameCollectionClicked)),
      ItemContextMenu::entry("Ungroup Collection", subitems && !subitems->empty(),
                             weakly(&OrbelWindowController::ungroupCollectionClicked)),
      ItemContextMenu::entry("Quit Application", target.canQuit() && toolkitAvailable(),
                             weakly(&OrbelWindowController::quitAppClicked)),
      ItemContextMenu::entry("Remove from Orbel Menu", !isRunningApp,
                             weakly(&OrbelWindowController::removeClicked)),
      ItemContextMenu::entry("Keep in Orbel Menu", isRunningApp,
                             weakly(&OrbelWindowController::keepAppClicked)),
  };
}

void OrbelWindowController::didRightClickOutsideOfItem(ItemPath path) {
  if (itemMenuVisible()) {
    m_itemMenu->cancelTracking();
    return;
  }
  m_targetMenuItem = menuItem(path);
  m_outsideItemMenu = Platform::current().contextMenus.popUpAtPointer(
      {ItemContextMenu::entry("New Collection", true, weakly(&OrbelWindowController::newCollectionClicked))},
      nullptr);
}

void OrbelWindowController::openClicked(std::int64_t tag) {
  if (m_targetMenuItem && ItemContextMenu::openWithTag(*m_targetMenuItem, tag)) hideWindow(false);
}

void OrbelWindowController::quitAppClicked() {
  if (m_targetMenuItem) m_targetMenuItem->quit();
}

void OrbelWindowController::renameCollectionClicked() {
  const MenuItemPointer target = m_targetMenuItem;
  if (!target || !target->canRename()) return;
  m_canClose = false;
  const TextPrompt prompt{localized("Rename Collection"), localized("Rename"), target->name().value_or("")};
  Platform::current().dialogs.runTextPrompt(
      prompt, [self = shared_from_this(), target](const std::optional<std::string>& text) {
        // The list may have been loaded anew under the prompt.
        const auto index = indexOfItem(self->m_menuItems, target);
        if (index && text && !text->empty()) {
          self->m_menuItems[*index]->rename(*text);
          self->persistItems();
          self->orbelView().reloadData();
        }
        self->m_canClose = true;
      });
}

void OrbelWindowController::newCollectionClicked() {
  m_canClose = false;
  const TextPrompt prompt{localized("New Collection"), localized("Create"), localized("Collection Name")};
  Platform::current().dialogs.runTextPrompt(
      prompt, [self = shared_from_this(), target = m_targetMenuItem](const std::optional<std::string>& text) {
        if (text && !text->empty()) {
          // At the end where the place has no item, or has lost it since.
          const std::size_t index = indexOfItem(self->m_menuItems, target).value_or(self->m_menuItems.size());
          self->m_menuItems.insert(self->m_menuItems.begin() + static_cast<std::ptrdiff_t>(index),
                                   CollectionMenuItem::withName(*text));
          self->persistItems();
          self->orbelView().reloadData();
        }
        self->m_canClose = true;
      });
}

void OrbelWindowController::ungroupCollectionClicked() {
  const auto index = indexOfItem(m_menuItems, m_targetMenuItem);
  const auto subitems = index ? m_menuItems[*index]->subitems() : std::nullopt;
  if (!subitems || subitems->empty()) return;
  const auto place = m_menuItems.erase(m_menuItems.begin() + static_cast<std::ptrdiff_t>(*index));
  m_menuItems.insert(place, subitems->begin(), subitems->end());
  persistItems();
  orbelView().reloadData();
}

void OrbelWindowController::removeClicked() {
  const auto index = indexOfItem(m_menuItems, m_targetMenuItem);
  if (!index) return;
  // A running program that is no longer pinned comes back among the running ones: the reload from the store
  // finds it.
  m_menuItems.erase(m_menuItems.begin() + static_cast<std::ptrdiff_t>(*index));
  persistItems();
  refreshItems();
}

std::shared_ptr<RunningAppMenuItem> OrbelWindowController::targetRunningApp() const {
  return std::dynamic_pointer_cast<RunningAppMenuItem>(m_targetMenuItem);
}

void OrbelWindowController::keepAppClicked() {
  const auto target = targetRunningApp();
  if (!target) return;
  const auto bundle = target->app()->bundlePath();
  if (!bundle) {
    Log::warning(target->app()->localizedName() + " cannot be kept: no file is known to start it from");
    return;
  }
  m_canClose = false;
  OpenPanel panel;
  panel.title = "Orbel Menu";
  panel.message =
      localized("To add the application to Orbel Menu, please allow Orbel Menu to open the selected app.");
  panel.prompt = localized("Allow");
  panel.startPath = *bundle;
  panel.shouldEnable = [self = weak_from_this()](const std::string& path) {
    const auto controller = self.lock();
    return controller && controller->shouldEnableUrl(path);
  };
  Platform::current().dialogs.runOpenPanel(
      panel, [self = shared_from_this(), target, bundle = *bundle](const std::optional<std::string>& chosen) {
        const auto index = indexOfItem(self->m_menuItems, target);
        if (index && chosen && withTrailingSlash(*chosen) == withTrailingSlash(bundle)) {
          // Without the slash, which a desktop entry, being a file, cannot have.
          self->m_menuItems[*index] = AppMenuItem::withPath(bundle);
          self->persistItems();
          self->orbelView().reloadData();
        }
        self->m_canClose = true;
      });
}

bool OrbelWindowController::shouldEnableUrl(const std::string& path) const {
  const auto target = targetRunningApp();
  const auto bundle = target ? target->app()->bundlePath() : std::nullopt;
  return bundle && withTrailingSlash(path) == withTrailingSlash(*bundle);
}

} // namespace orbel
