// Modal conversations with the user: a text prompt, an alert, the open panel. They stand above every surface
// of ours, have the keyboard focus and give it back. They return at once and answer later, on the main
// thread, exactly once; the answer may ask the next question. One that comes while another is up stands
// before it. Every block may be empty.
//
// The owner is the surface that the conversation began on, which lives until the answer; none where it began
// elsewhere. Prompts and alerts appear on the screen of the pointer, as the owner knows it.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace orbel {

class Surface;

struct TextPrompt {
  std::string message;
  std::string button; // the default button, also on Return; Escape cancels
  std::string placeholder;
};

struct Alert {
  std::string message;
  std::string informativeText;
  std::string button = "OK";
  bool isCritical = false;
};

struct OpenPanel {
  std::string title;
  std::string message;
  std::string prompt;                                        // the confirming button
  std::string startPath;                                     // shown and preselected
  std::function<bool(const std::string& path)> shouldEnable; // what it refuses cannot be chosen
};

class Dialogs {
public:
  virtual ~Dialogs() = default;
  // The text when the button was pressed, nothing when the prompt was cancelled.
  virtual void runTextPrompt(const TextPrompt& prompt, const Surface* owner,
                             std::function<void(std::optional<std::string>)> done) = 0;
  virtual void runAlert(const Alert& alert, const Surface* owner, std::function<void()> done) = 0;
  // The chosen path, or nothing.
  virtual void runOpenPanel(const OpenPanel& panel, const Surface* owner,
                            std::function<void(std::optional<std::string>)> done) = 0;
};

} // namespace orbel
