// An application that the user keeps in the menu. Opening launches it, or brings it forward when it runs.
#pragma once

#include "model/BookmarkedTarget.h"
#include "model/MenuItem.h"
#include "model/RepresentsRunningApplication.h"

namespace orbel {

class AppMenuItem : public MenuItem, public RepresentsRunningApplication {
public:
  static constexpr const char* kClassName = "AppMenuItem";

  // Absolute path of an application bundle; the name is the workspace's display name of it.
  static std::shared_ptr<AppMenuItem> withPath(const std::string& path);
  // Empty when resolving the bookmark gave an error and no path.
  static std::shared_ptr<AppMenuItem> withDictionaryRepresentation(const PropertyList& dictionary);

  std::string identity() const override;
  std::optional<std::string> name() const override { return m_name; }
  ImagePointer image() const override;
  void open() override;
  bool isRunning() const override;
  bool canOpenPath(const std::string& path) const override;
  void openPath(const std::string& path) override;
  bool canQuit() const override { return isRunning(); }
  void quit() override;
  std::optional<PropertyList> dictionaryRepresentation() const override;

  // True when the executable's path begins with the item's path and what follows holds no further ".app"
  // (an executable of a helper inside the bundle, or of another bundle whose name merely begins alike), or
  // when the workspace says that the program runs this bundle, as for a desktop entry, whose executable
  // lies elsewhere.
  bool representsRunningApplication(const RunningApplication& application) const override;

  const PropertyList::Data& bookmarkData() const { return m_target.bookmarkData(); }
  // The bundle as an absolute path; none when the bookmark could not be resolved.
  const std::optional<std::string>& url() const { return m_target.path(); }

private:
  AppMenuItem(BookmarkedTarget target, std::optional<std::string> name);

  BookmarkedTarget m_target;
  std::optional<std::string> m_name;
};

} // namespace orbel
