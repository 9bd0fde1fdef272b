// A preferences store in memory.
#pragma once

#include "platform/PreferencesStore.h"

#include <memory>
#include <vector>

namespace orbel {

class FakePreferences : public PreferencesStore {
public:
  const PropertyList* object(const std::string& key) const override {
    const auto entry = values.find(key);
    return entry == values.end() ? nullptr : &entry->second;
  }
  void setObject(const std::string& key, PropertyList value) override {
    values.insert_or_assign(key, std::move(value));
    ++writes;
    notify();
  }
  void removeObject(const std::string& key) override {
    if (values.erase(key) > 0) notify();
  }
  bool synchronize() override {
    ++synchronizations;
    return true;
  }
  void keepDatedCopy() override { ++datedCopies; }
  Registration observeChanges(std::function<void()> block) override {
    auto entry = std::make_shared<std::function<void()>>(std::move(block));
    m_observers->push_back(entry);
    return Registration([entry, observers = std::weak_ptr(m_observers)] {
      if (const auto list = observers.lock()) std::erase(*list, entry);
    });
  }

  // As if another program had rewritten the file.
  void changeFromOutside(PropertyList::Dictionary newValues) {
    values = std::move(newValues);
    notify();
  }

  PropertyList::Dictionary values;
  int writes = 0;
  int synchronizations = 0;
  int datedCopies = 0;

private:
  void notify() const {
    const auto observers = *m_observers;
    for (const auto& observer : observers)
      (*observer)();
  }
  using Observers = std::vector<std::shared_ptr<std::function<void()>>>;
  std::shared_ptr<Observers> m_observers = std::make_shared<Observers>();
};

} // namespace orbel
