// Shows folders in the desktop's file manager, over the session bus without ever waiting for it.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace orbel::linux {

class FileManager {
public:
  // Called, later or never, when no file manager on the bus has shown the folder.
  using Fallback = std::function<void(const std::string& path)>;

  explicit FileManager(Fallback fallback);
  ~FileManager();
  FileManager(const FileManager&) = delete;
  FileManager& operator=(const FileManager&) = delete;

  void showFolder(const std::string& path, const std::string& startupId);

private:
  struct State;
  std::unique_ptr<State> m_state;
};

} // namespace orbel::linux
