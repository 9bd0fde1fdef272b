// What the person in front of the test screen sees: the pixels of the root window with everything on it.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/Picture.h"
#include "tests/support/x11/ScreenGeometry.h"

#include <filesystem>
#include <string>

namespace orbel::test {

class Screen {
public:
  // Pictures are saved into the folder.
  Screen(DisplayConnection& display, std::filesystem::path pictureFolder);

  ScreenRect bounds() const;
  // The part of the rectangle that lies on the screen. Never shows the pointer.
  Picture capture(const ScreenRect& rect) const;
  Picture capture() const { return capture(bounds()); }
  Rgb pixel(ScreenPoint point) const;

  // Returns the file's path: `<picture folder>/<name>.png`.
  std::filesystem::path save(const std::string& name) const;
  std::filesystem::path save(const std::string& name, const ScreenRect& rect) const;

  // For readers of the frame buffer itself, into which the server draws the pointer.
  void hidePointer();
  void showPointer();

private:
  DisplayConnection& m_display;
  std::filesystem::path m_pictureFolder;
};

} // namespace orbel::test
