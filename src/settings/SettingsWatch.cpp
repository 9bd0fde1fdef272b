#include "settings/SettingsWatch.h"

#include "platform/Platform.h"

#include <utility>

namespace orbel {

namespace {
std::optional<PropertyList> stored(const std::string& key) {
  const PropertyList* value = Platform::current().preferences.object(key);
  return value ? std::optional(*value) : std::nullopt;
}
} // namespace

SettingsWatch::SettingsWatch(const std::vector<std::string>& keys,
                             std::function<void(const std::string& key)> changed)
    : m_changed(std::move(changed)) {
  for (const std::string& key : keys)
    m_known.emplace(key, stored(key));
  m_observation = Platform::current().preferences.observeChanges([this] { storeChanged(); });
}

void SettingsWatch::write(const std::string& key, PropertyList value) {
  // Before the store is written to, which answers with its notification.
  if (const auto known = m_known.find(key); known != m_known.end()) known->second = value;
  Platform::current().preferences.setObject(key, std::move(value));
}

void SettingsWatch::storeChanged() {
  // All are compared before any observer is notified, because an observer may write.
  std::vector<std::string> changed;
  for (auto& [key, known] : m_known) {
    auto value = stored(key);
    if (value == known) continue;
    known = std::move(value);
    changed.push_back(key);
  }
  for (const std::string& key : changed)
    m_changed(key);
}

} // namespace orbel
