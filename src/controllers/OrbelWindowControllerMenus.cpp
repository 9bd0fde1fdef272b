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

bool OrbelWindowController::hasContextMenu(const MenuItem& item) const {
  return !dynamic_cast<const CoreMenuItem*>(&item) || item.name() != CoreMenuItem::kFinder;
}

std::vector<MenuEntry> OrbelWindowController::itemMenuEntries() {
  const MenuItem& target = *targetMenuItem();
  const auto subitems = target.subitems();
  return {
      openWithEntry(),
      ItemContextMenu::entry("Rename Collection", target.canRename(),
                             weakly(&OrbelWindowController::renameCollectionClicked)),
      ItemContextMenu::entry("Ungroup Collection", subitems && !subitems->empty(),
                             weakly(&OrbelWindowController::ungroupCollectionClicked)),
      quitEntry(),
      removeEntry(),
      ItemContextMenu::entry("Keep in Orbel Menu", targetRunningApp() != nullptr,
                             weakly(&OrbelWindowController::keepAppClicked)),
  };
}

void OrbelWindowController::didRightClickOutsideOfItem(ItemPath path) {
  if (closeItemMenu()) return;
  setTargetMenuItem(menuItem(path));
  m_outsideItemMenu = Platform::current().contextMenus.popUp(
      {ItemContextMenu::entry("New Collection", true, weakly(&OrbelWindowController::newCollectionClicked))},
      nullptr, window().surface(), window().pointerLocationOrCenter());
}

void OrbelWindowController::renameCollectionClicked() {
  const MenuItemPointer target = targetMenuItem();
  if (!target || !target->canRename()) return;
  setCanClose(false);
  const TextPrompt prompt{localized("Rename Collection"), localized("Rename"), target->name().value_or("")};
  Platform::current().dialogs.runTextPrompt(prompt, &window().surface(),
                                            [self = self(), target](const std::optional<std::string>& text) {
                                              // The list may have been loaded anew under the prompt.
                                              const auto index = indexOfItem(self->m_menuItems, target);
                                              if (index && text && !text->empty()) {
                                                self->m_menuItems[*index]->rename(*text);
                                                self->persistItems();
                                                self->orbelView().reloadData();
                                              }
                                              self->setCanClose(true);
                                            });
}

void OrbelWindowController::newCollectionClicked() {
  setCanClose(false);
  const TextPrompt prompt{localized("New Collection"), localized("Create"), localized("Collection Name")};
  Platform::current().dialogs.runTextPrompt(
      prompt, &window().surface(),
      [self = self(), target = targetMenuItem()](const std::optional<std::string>& text) {
        if (text && !text->empty()) {
          // At the end where the place has no item, or has lost it since.
          const std::size_t index = indexOfItem(self->m_menuItems, target).value_or(self->m_menuItems.size());
          self->m_menuItems.insert(self->m_menuItems.begin() + static_cast<std::ptrdiff_t>(index),
                                   CollectionMenuItem::withName(*text));
          self->persistItems();
          self->orbelView().reloadData();
        }
        self->setCanClose(true);
      });
}

void OrbelWindowController::ungroupCollectionClicked() {
  const auto index = indexOfItem(m_menuItems, targetMenuItem());
  const auto subitems = index ? m_menuItems[*index]->subitems() : std::nullopt;
  if (!subitems || subitems->empty()) return;
  const auto place = m_menuItems.erase(m_menuItems.begin() + static_cast<std::ptrdiff_t>(*index));
  m_menuItems.insert(place, subitems->begin(), subitems->end());
  persistItems();
  orbelView().reloadData();
}

std::shared_ptr<RunningAppMenuItem> OrbelWindowController::targetRunningApp() const {
  return std::dynamic_pointer_cast<RunningAppMenuItem>(targetMenuItem());
}

void OrbelWindowController::keepAppClicked() {
  const auto target = targetRunningApp();
  if (!target) return;
  const auto bundle = target->app()->bundlePath();
  if (!bundle) {
    Log::warning(target->app()->localizedName() + " cannot be kept: no file is known to start it from");
    return;
  }
  setCanClose(false);
  OpenPanel panel;
  panel.title = "Orbel Menu";
  panel.message =
      localized("To add the application to Orbel Menu, please allow Orbel Menu to open the selected app.");
  panel.prompt = localized("Allow");
  panel.startPath = *bundle;
  panel.shouldEnable = [controller = std::weak_ptr(self())](const std::string& path) {
    const auto living = controller.lock();
    return living && living->shouldEnableUrl(path);
  };
  Platform::current().dialogs.runOpenPanel(
      panel, &window().surface(),
      [self = self(), target, bundle = *bundle](const std::optional<std::string>& chosen) {
        const auto index = indexOfItem(self->m_menuItems, target);
        if (index && chosen && withTrailingSlash(*chosen) == withTrailingSlash(bundle)) {
          // Without the slash, which a desktop entry, being a file, cannot have.
          self->m_menuItems[*index] = AppMenuItem::withPath(bundle);
          self->persistItems();
          self->orbelView().reloadData();
        }
        self->setCanClose(true);
      });
}

bool OrbelWindowController::shouldEnableUrl(const std::string& path) const {
  const auto target = targetRunningApp();
  const auto bundle = target ? target->app()->bundlePath() : std::nullopt;
  return bundle && withTrailingSlash(path) == withTrailingSlash(*bundle);
}

} // namespace orbel
