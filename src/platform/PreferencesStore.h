// The per-user preferences: a dictionary of property-list values by key, saved by the platform. Read and
// written by the settings store, the stored menu items, the shortcut's bindings and the application. Main
// thread only.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Registration.h"
#include "foundation/Result.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace orbel {

class PreferencesStore {
public:
  virtual ~PreferencesStore() = default;
  // The value under the key, or none. The pointer is valid until the next change of the store.
  virtual const PropertyList* object(const std::string& key) const = 0;
  // Visible to object() at once; reaches the disk soon, at the latest with synchronize().
  virtual void setObject(const std::string& key, PropertyList value) = 0;
  virtual void removeObject(const std::string& key) = 0;
  // Writes what is not on disk yet. After a failure what is in memory stays and is tried again. The store
  // logs a failure itself, once until a save works again, as most saves are its own and have no caller.
  virtual Result<> synchronize() = 0;
  // Keeps a dated copy of the file as it is on disk, before entries of it are dropped for good.
  virtual void keepDatedCopy() = 0;

  // Calls the block after every change, ours or from outside, once the new values can be read.
  virtual Registration observeChanges(std::function<void()> block) = 0;

  // The stored value read leniently, as the store's own accessors do: absent or of another type is false,
  // or 0.
  bool boolean(const std::string& key) const;
  std::int64_t integer(const std::string& key) const;
};

} // namespace orbel
