// A preferences store in memory, with a disk that takes what is saved and may fail.
#pragma once

#include "platform/PreferencesStore.h"
#include "tests/doubles/ObserverList.h"

#include <optional>

namespace orbel {

class FakePreferences : public PreferencesStore {
public:
  const PropertyList* object(const std::string& key) const override {
    const auto entry = values.find(key);
    return entry == values.end() ? nullptr : &entry->second;
  }
  void setObject(const std::string& key, PropertyList value) override {
    ++writes;
    if (const PropertyList* present = object(key); present && *present == value) return;
    values.insert_or_assign(key, std::move(value));
    m_observers.call();
  }
  void removeObject(const std::string& key) override {
    if (values.erase(key) > 0) m_observers.call();
  }
  Result<> synchronize() override {
    ++synchronizations;
    return save();
  }
  void keepDatedCopy() override {
    ++datedCopies;
    datedCopy = saved;
  }
  Registration observeChanges(std::function<void()> block) override {
    return m_observers.add(std::move(block));
  }

  // As if another program had rewritten the file.
  void changeFromOutside(PropertyList::Dictionary newValues) {
    saved = newValues;
    if (values == newValues) return;
    values = std::move(newValues);
    m_observers.call();
  }
  // What a store does by itself a moment after a change.
  Result<> save() {
    if (savingFails) return Failure{"the disk fails"};
    saved = values;
    return {};
  }

  PropertyList::Dictionary values;
  PropertyList::Dictionary saved;                    // what a program that starts now would read
  std::optional<PropertyList::Dictionary> datedCopy; // the newest one
  bool savingFails = false;
  int writes = 0; // calls of setObject(), also with the value that is there
  int synchronizations = 0;
  int datedCopies = 0; // times that one was asked for

private:
  ObserverList m_observers;
};

} // namespace orbel
