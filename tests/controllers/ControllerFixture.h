// A platform of doubles with a few programs and files, a main menu controller and short ways to look at
// its list.
#pragma once

#include "controllers/OrbelWindowController.h"
#include "model/AppMenuItem.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/FileMenuItem.h"
#include "settings/AppSettings.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orbel {

class FakeDrag : public DragInfo {
public:
  explicit FakeDrag(std::optional<std::vector<std::string>> dragged) : paths(std::move(dragged)) {}
  Point locationInWindow() const override { return {}; }
  const std::optional<std::vector<std::string>>& filePaths() const override { return paths; }
  std::optional<std::vector<std::string>> paths;
};

class ControllerTest : public testing::Test {
protected:
  ~ControllerTest() override { letControllerGo(); }

  static PropertyList storedCore(const std::string& name) {
    return PropertyList::Dictionary{{"class", "CoreMenuItem"}, {"name", name}};
  }
  static PropertyList storedFile(const std::string& path, const std::string& name) {
    return PropertyList::Dictionary{
        {"class", "FileMenuItem"}, {"name", name}, {"bookmarkData", FakeWorkspace::bookmark(path)}};
  }
  static PropertyList storedApp(const std::string& path, const std::string& name) {
    return PropertyList::Dictionary{
        {"class", "AppMenuItem"}, {"name", name}, {"bookmarkData", FakeWorkspace::bookmark(path)}};
  }
  static PropertyList storedCollection(const std::string& name, PropertyList::List members) {
    return PropertyList::Dictionary{
        {"class", "CollectionMenuItem"}, {"name", name}, {"subitems", std::move(members)}};
  }
  void store(PropertyList::List items) { platform.preferences.values["menuItems"] = std::move(items); }

  OrbelWindowController& controller() {
    if (!m_controller) m_controller = OrbelWindowController::create();
    return *m_controller;
  }
  std::shared_ptr<OrbelWindowController> shared() {
    controller();
    return m_controller;
  }
  // As the program does at its end, whatever it is in the middle of.
  void letControllerGo() {
    platform.runLoop.dropPending();
    if (m_controller) m_controller->window().setAlphaValue(0);
    m_controller.reset();
  }
  // Shown around (500, 500) with the pointer there, and faded in.
  OrbelWindowController& shown() {
    platform.windows.movePointer({500, 500});
    controller().showWindowAtScreenPosition({500, 500});
    platform.runLoop.advance(0.2);
    return controller();
  }
  void fadeOut() { platform.runLoop.advance(0.2); }

  static std::vector<std::string> names(const MenuItemList& items) {
    std::vector<std::string> result;
    for (const auto& item : items)
      result.push_back(item->name().value_or("(none)"));
    return result;
  }
  std::vector<std::string> names() { return names(controller().menuItems()); }
  std::vector<std::string> storedNames() {
    std::vector<std::string> result;
    const auto stored = platform.preferences.values.find("menuItems");
    if (stored == platform.preferences.values.end()) return {"(nothing stored)"};
    for (const auto& item : *stored->second.list())
      result.push_back(*item.find("name")->string());
    return result;
  }
  static ItemPath at(std::int64_t position) { return {0, position}; }
  std::vector<bool> dots() {
    std::vector<bool> result;
    for (std::int64_t index = 0; index < controller().numberOfItems(0); ++index) {
      result.push_back(controller().item(at(index))->highlighted());
    }
    return result;
  }

  FakePlatform platform;

private:
  std::shared_ptr<OrbelWindowController> m_controller;
};

using Names = std::vector<std::string>;

} // namespace orbel
