#include "tests/desktop/clients/ClientOptions.h"

#include <cstdio>
#include <map>
#include <stdexcept>

namespace orbel::test {

namespace {

const std::map<std::string, bool ClientOptions::*> kSwitchesOn{
    {"--take-focus", &ClientOptions::takesFocus},
    {"--ask-before-closing", &ClientOptions::asksBeforeClosing},
    {"--skip-taskbar", &ClientOptions::skipsTaskbar},
    {"--fullscreen", &ClientOptions::isFullscreen},
};
const std::map<std::string, bool ClientOptions::*> kSwitchesOff{
    {"--without-process-id", &ClientOptions::hasProcessId},
    {"--without-input", &ClientOptions::acceptsInput},
};
const std::map<std::string, std::string ClientOptions::*> kTexts{
    {"--title", &ClientOptions::title},
    {"--class", &ClientOptions::className},
    {"--application-id", &ClientOptions::applicationId},
    {"--log", &ClientOptions::log},
};

void setFrame(ClientOptions& options, const std::string& text) {
  if (std::sscanf(text.c_str(), "%dx%d+%d+%d", &options.width, &options.height, &options.x, &options.y) !=
      4) {
    throw std::invalid_argument("no frame: " + text);
  }
}

void setColor(ClientOptions& options, const std::string& text) {
  unsigned color = 0;
  if (std::sscanf(text.c_str(), "#%6x", &color) != 1) throw std::invalid_argument("no colour: " + text);
  options.color = color;
}

} // namespace

ClientOptions ClientOptions::parse(const std::vector<std::string>& arguments) {
  ClientOptions options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string& name = *argument;
    if (!name.starts_with("--")) {
      options.documents.push_back(name);
    } else if (const auto on = kSwitchesOn.find(name); on != kSwitchesOn.end()) {
      options.*on->second = true;
    } else if (const auto off = kSwitchesOff.find(name); off != kSwitchesOff.end()) {
      options.*off->second = false;
    } else if (++argument == arguments.end()) {
      throw std::invalid_argument(name + " is unknown or lacks its value");
    } else if (const auto text = kTexts.find(name); text != kTexts.end()) {
      options.*text->second = *argument;
    } else if (name == "--frame") {
      setFrame(options, *argument);
    } else if (name == "--color") {
      setColor(options, *argument);
    } else {
      throw std::invalid_argument("unknown option " + name);
    }
  }
  return options;
}

} // namespace orbel::test
