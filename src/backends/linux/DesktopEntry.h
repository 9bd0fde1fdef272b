// One desktop entry of type Application: what the menu needs to name, draw, match and start a program.
// A plain value; read by the index for the installed ones, on its own for an entry file that lies elsewhere.
#pragma once

#include "foundation/Result.h"

#include <functional>
#include <string>
#include <vector>

namespace orbel::linux {

struct DesktopEntry {
  // "org.example.App.desktop"; the file's name for an entry outside of the data folders
  std::string identifier;
  std::string path; // of the entry's file, absolute
  std::string name; // in the user's language
  std::string icon; // a name in the icon theme or an absolute path; may be empty
  // The program that Exec names, absolute, symbolic links followed; empty when it is not installed or Exec
  // is missing.
  std::string executable;
  std::string startupWindowClass;      // StartupWMClass; may be empty
  std::vector<std::string> categories; // Categories, as written
  std::string program;                 // what Exec runs, a name or a path; may be empty
  std::string requiredProgram;         // TryExec; may be empty
  bool isStartedOverBus = false;       // DBusActivatable: it may then do without Exec
  bool hasOwnArguments = false;        // Exec gives the program arguments besides the files to open
  bool runsInTerminal = false;
  bool isShown = true; // false by NoDisplay, Hidden, OnlyShowIn or NotShowIn

  // Reads an entry file anywhere. A missing program is no failure here; a file that is no application entry
  // is one.
  static Result<DesktopEntry> read(const std::string& path);

  // How the values of an entry's keys are asked for, whoever has read the file: "" or false for an
  // absent key.
  struct Values {
    std::function<std::string(const char* key)> text;
    std::function<std::string(const char* key)> localizedText;
    std::function<bool(const char* key)> flag;
  };
  static DesktopEntry withValues(std::string identifier, std::string path, const Values& values);

  // Fails when the entry cannot be started ("names no program", "the program x is not installed").
  Result<> checkLaunch() const;

  // Whether a path looks like an entry file, by its name alone.
  static bool isEntryPath(const std::string& path);
};

} // namespace orbel::linux
