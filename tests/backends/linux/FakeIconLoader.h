// Pictures that are there because the test says so; each call is recorded as "theme NAME SIZE", "file PATH
// SIZE" or "own NAME SIZE".
#pragma once

#include "backends/common/IconLoader.h"

#include <set>
#include <string>
#include <vector>

namespace orbel::linux {

class FakeIconLoader : public common::IconLoader {
public:
  Bitmap themeIcon(const std::vector<std::string>& names, int pixelSize) override {
    for (const auto& name : names) {
      if (themeNames.contains(name)) return drawn("theme " + name, pixelSize);
    }
    return {};
  }
  bool hasThemeIcon(const std::vector<std::string>& names) override {
    for (const auto& name : names) {
      if (themeNames.contains(name)) return true;
    }
    return false;
  }
  Bitmap pictureFile(const std::string& path, int pixelSize) override {
    return files.contains(path) ? drawn("file " + path, pixelSize) : Bitmap();
  }
  Bitmap ownPicture(const std::string& name, int pixelSize) override {
    return own.contains(name) ? drawn("own " + name, pixelSize) : Bitmap();
  }
  bool hasOwnPicture(const std::string& name) override { return own.contains(name); }

  std::set<std::string> themeNames;
  std::set<std::string> files;
  std::set<std::string> own{"fallback-application", "fallback-folder", "fallback-file", "Finder"};
  std::vector<std::string> calls;

private:
  Bitmap drawn(const std::string& what, int pixelSize) {
    calls.push_back(what + " " + std::to_string(pixelSize));
    return Bitmap(pixelSize, pixelSize);
  }
};

} // namespace orbel::linux
