// One of the desktop's own applications, known by its name alone ("Finder", "Safari", ...): launched, matched
// and drawn by that name. The six names of a first run are resolved by the role they play; see Workspace.
#pragma once

#include "model/MenuItem.h"
#include "model/RepresentsRunningApplication.h"

#include <utility>

namespace orbel {

class CoreMenuItem : public MenuItem, public RepresentsRunningApplication {
public:
  static constexpr const char* kClassName = "CoreMenuItem";
  // The name of the one that shows folders, which commands leave alone.
  static constexpr const char* kFinder = "Finder";

  static std::shared_ptr<CoreMenuItem> withName(const std::string& name);
  static std::shared_ptr<CoreMenuItem> withDictionaryRepresentation(const PropertyList& dictionary);

  std::string identity() const override;
  std::optional<std::string> name() const override { return m_name; }
  void setName(std::string name) { m_name = std::move(name); }
  // The program's own picture of that name; empty when there is none. Not in the image cache.
  ImagePointer image() const override;
  void open() override;
  bool isRunning() const override;
  // Every document, except for the two names that open none: "Launchpad" and "App Store".
  bool canOpenPath(const std::string& path) const override;
  void openPath(const std::string& path) override;
  bool canQuit() const override { return isRunning(); }
  void quit() override;
  std::optional<PropertyList> dictionaryRepresentation() const override;

  // The program's localized name is the item's name, or it plays the role of that name.
  bool representsRunningApplication(const RunningApplication& application) const override;

private:
  explicit CoreMenuItem(std::optional<std::string> name);

  std::optional<std::string> m_name;
};

} // namespace orbel
