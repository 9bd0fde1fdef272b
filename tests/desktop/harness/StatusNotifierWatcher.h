// The desktop's watcher of status items, and the panel that draws them if it is asked to have one. Destroying
// it is the panel's crash.
#pragma once

#include "tests/desktop/harness/BusService.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

enum class PanelPresence { drawsItems, absent };

class StatusNotifierWatcher {
public:
  explicit StatusNotifierWatcher(const std::string& busAddress,
                                 PanelPresence panel = PanelPresence::drawsItems);

  void setPanel(PanelPresence panel);
  // The services that have registered, as they named themselves. Serves what waits.
  const std::vector<std::string>& items();

  // What follows waits for the item's answer.
  // As a panel does on a click; "Activate" or "ContextMenu". False when the item gave an error.
  bool click(const std::string& item, const std::string& method = "Activate") const;
  std::optional<std::string> text(const std::string& item, const std::string& property) const;
  // The pixels of the side, ARGB; empty when the item has none of that size.
  std::vector<std::uint32_t> pixels(const std::string& item, int side) const;

private:
  GVariant* property(const std::string& item, const std::string& name) const;

  bool m_hasPanel;
  std::vector<std::string> m_items;
  std::unique_ptr<BusService> m_service;
};

} // namespace orbel::test
