// The command line that the windowed test clients share.
//
//   --title TEXT --class NAME --frame WxH+X+Y --color #rrggbb --application-id ID --log FILE
//   --without-process-id --without-input --take-focus --ask-before-closing --skip-taskbar --fullscreen
//   and, after these, the documents to open.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orbel::test {

struct ClientOptions {
  std::string title = "Test client";
  std::string className = "TestClient";
  int x = 0;
  int y = 0;
  int width = 300;
  int height = 200;
  std::uint32_t color = 0x808080; // a pixel of a 24-bit visual
  std::string applicationId;
  std::string log;
  bool hasProcessId = true;
  bool acceptsInput = true;
  bool takesFocus = false;
  bool asksBeforeClosing = false;
  bool skipsTaskbar = false;
  bool isFullscreen = false;
  std::vector<std::string> documents;

  // Throws std::invalid_argument for an unknown or unreadable option.
  static ClientOptions parse(const std::vector<std::string>& arguments);
};

} // namespace orbel::test
