// A file or a folder that the user dropped onto the menu. Opening shows a folder in the file browser and
// opens a file with its default application; a target that no longer exists opens nothing.
#pragma once

#include "model/BookmarkedTarget.h"
#include "model/MenuItem.h"

namespace orbel {

class FileMenuItem : public MenuItem {
public:
  static constexpr const char* kClassName = "FileMenuItem";

  // Absolute path; the name is the workspace's display name of it.
  static std::shared_ptr<FileMenuItem> withPath(const std::string& path);
  // Never empty: an item whose bookmark cannot be resolved has no path, and stays in the menu.
  static std::shared_ptr<FileMenuItem> withDictionaryRepresentation(const PropertyList& dictionary);

  std::string identity() const override;
  std::optional<std::string> name() const override { return m_name; }
  ImagePointer image() const override;
  void open() override;
  // The default application at the front, the others by their display names.
  std::optional<std::vector<std::string>> openWithAppPaths() const override;
  void openWithAppPath(const std::string& appPath) override;
  bool canQuit() const override { return false; }
  std::optional<PropertyList> dictionaryRepresentation() const override;

  const PropertyList::Data& bookmarkData() const { return m_target.bookmarkData(); }
  // The target as an absolute path; none when the bookmark could not be resolved.
  const std::optional<std::string>& url() const { return m_target.path(); }

private:
  FileMenuItem(BookmarkedTarget target, std::optional<std::string> name);

  BookmarkedTarget m_target;
  std::optional<std::string> m_name;
};

} // namespace orbel
