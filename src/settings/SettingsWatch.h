// Distinguishes settings that others have changed in the preferences store from those that we have written
// ourselves. Owned by AppSettings, which writes through it.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Registration.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orbel {

class SettingsWatch {
public:
  // The block is called once for each of the keys whose stored value has changed from outside, when the new
  // value can be read.
  SettingsWatch(const std::vector<std::string>& keys, std::function<void(const std::string& key)> changed);

  void write(const std::string& key, PropertyList value);

private:
  void storeChanged();

  std::function<void(const std::string& key)> m_changed;
  std::map<std::string, std::optional<PropertyList>> m_known; // as last seen or written
  Registration m_observation;
};

} // namespace orbel
