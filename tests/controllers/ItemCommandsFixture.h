// The main menu with a companion that quits programs, and short ways to give commands to its items.
#pragma once

#include "tests/controllers/ControllerFixture.h"

namespace orbel {

class ItemCommandsFixture : public ControllerTest {
protected:
  ItemCommandsFixture() { platform.workspace.urlHandlers["orbelmenu-toolkit"] = "/toolkit.desktop"; }
  Names actions() {
    Names result;
    for (const auto& action : platform.workspace.actions) {
      if (action != "openUrl orbelmenu-toolkit:") result.push_back(action);
    }
    return result;
  }
  Names memberNames(std::int64_t position) {
    return names(*controller().menuItems().at(static_cast<std::size_t>(position))->subitems());
  }
  void letMenuFlagPass() { platform.runLoop.advance(0.51); }
  bool choose(std::int64_t position, const std::string& title) {
    controller().didRightClickItem(at(position));
    const bool found = platform.contextMenus.choose(title);
    letMenuFlagPass();
    return found;
  }
};

} // namespace orbel
