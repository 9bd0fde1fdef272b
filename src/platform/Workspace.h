// The desktop's programs and files: what runs, what opens what, names and icons, bookmarks.
// Paths are absolute and local. "Bundle" is what stands for an application on disk: a desktop entry, an
// AppImage, or any path that holds ".app". Nothing throws. Causes of failures are for the log that the caller
// writes. Called by the menu items, the menu controllers, the settings window's controller and what starts
// the companion program.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Registration.h"
#include "foundation/Result.h"
#include "platform/RunningApplication.h"
#include "scene/Image.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel {

struct ResolvedBookmark {
  std::string path;
  bool isStale = false;            // the bookmark should be made anew from the path
  std::optional<Failure> drawback; // what failed although the path was found
};

class Workspace {
public:
  virtual ~Workspace() = default;

  // In the order in which their first windows appeared. Empty while the display has not reported them yet,
  // and where it never does.
  virtual std::vector<RunningApplicationPointer> runningApplications() const = 0;
  // Calls the block after the list of running applications has changed, its arrival included.
  virtual Registration observeRunningApplications(std::function<void()> block) = 0;
  // The program whose window is active, remembering that very window for ActivationReason::restore. Empty
  // where there is none, and where the display does not report it: that display gives the focus back
  // by itself.
  virtual RunningApplicationPointer frontmostApplication() = 0;
  // Whether the record runs the program of this bundle: equal desktop-entry identifiers. For a bundle that is
  // a file and not a folder, this stands beside the rule on executable paths.
  virtual bool runsBundle(const RunningApplication& application, const std::string& bundlePath) const = 0;
  // Whether the record is the program that plays the role of a built-in name ("Finder" the folder
  // handler, ...).
  virtual bool playsRole(const RunningApplication& application, const std::string& name) const = 0;

  // Ambiguous, and nothing has happened: several programs run that executable, and the path does not say
  // which of them is meant.
  enum class Launch { done, ambiguous };
  // By a built-in name (resolved by role), any application's name, or a path of a bundle or an executable.
  // Brings a running one forward, else launches it. Fails when there is none or it cannot be started.
  virtual Result<Launch> launchApplication(const std::string& nameOrPath) = 0;
  virtual Result<> launchApplicationAtPath(const std::string& bundlePath) = 0;
  // With the default application; a folder is shown. Fails when there is no such file or nothing opens it.
  virtual Result<> openFile(const std::string& path) = 0;
  // With the application of that name or bundle path. Fails when there is none.
  virtual Result<> openFileWithApplication(const std::string& path, const std::string& nameOrPath) = 0;
  // Fails when nothing opens its scheme.
  virtual Result<> openUrl(const std::string& url) = 0;
  // Shows the folder in the file browser. Fails when it is none.
  virtual Result<> showFolder(const std::string& path) = 0;
  // Whether the path is a program of the desktop that can stand as an application: a desktop entry or
  // an AppImage.
  virtual bool isApplicationBundle(const std::string& path) const = 0;
  // The application that opens the URL's scheme, if there is one.
  virtual std::optional<std::string> applicationForUrl(const std::string& url) const = 0;

  enum class FileKind { missing, file, directory };
  virtual FileKind fileKind(const std::string& path) const = 0;
  // The name shown for a path: an entry's localized Name, else the file's name whether or not the file
  // exists; never empty for a non-empty path.
  virtual std::string displayName(const std::string& path) const = 0;
  // 320 by 320 points; a generic icon where there is no better, never empty. Missing files have one too.
  virtual ImagePointer iconForFile(const std::string& path) const = 0;
  // The program's own picture of that name (the six built-in entries); empty when there is none.
  virtual ImagePointer imageNamed(const std::string& name) const = 0;

  virtual std::optional<std::string> defaultApplicationForFile(const std::string& path) const = 0;
  // All that can open it, the default included, in the platform's order, possibly with duplicates.
  virtual std::vector<std::string> applicationsForFile(const std::string& path) const = 0;

  virtual Result<PropertyList::Data> makeBookmark(const std::string& path) const = 0;
  virtual Result<ResolvedBookmark> resolveBookmark(const PropertyList::Data& bookmark) const = 0;
};

} // namespace orbel
