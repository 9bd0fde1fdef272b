// Reports when the file at a path is created, removed or changed, by watching its folder; without polling.
// Reports on the main thread, from GLib's default main context. Used by the preferences file.
#pragma once

#include "foundation/Result.h"

#include <functional>
#include <memory>
#include <string>

namespace orbel::linux {

class FolderWatch {
public:
  // Fails when the path's folder cannot be watched. The block is called once for several changes read
  // together; also when the folder itself is removed, after which the watch is dead (isAlive).
  static Result<std::unique_ptr<FolderWatch>> start(const std::string& path, std::function<void()> block);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  const std::string& path() const; // as given
  bool isAlive() const;

private:
  struct State;
  explicit FolderWatch(std::shared_ptr<State> state);
  std::shared_ptr<State> m_state;
};

} // namespace orbel::linux
