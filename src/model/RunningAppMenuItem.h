// A program that is running but not among the user's items, with a grey icon. Made by the main menu
// controller while the menu is shown, and never stored.
#pragma once

#include "model/MenuItem.h"
#include "model/RepresentsRunningApplication.h"

#include <utility>

namespace orbel {

class RunningAppMenuItem : public MenuItem, public RepresentsRunningApplication {
public:
  static constexpr const char* kClassName = "RunningAppMenuItem";

  // The record must not be empty.
  static std::shared_ptr<RunningAppMenuItem> withRunningApplication(RunningApplicationPointer application);

  // By the bundle's path; by the name for a program of which no path is known.
  std::string identity() const override;
  std::optional<std::string> name() const override;
  ImagePointer image() const override { return m_image; }
  void setImage(ImagePointer image) { m_image = std::move(image); }
  // Launches from the executable, which brings the program forward; activates it directly where that fails,
  // as it does for one of several programs that run the same executable.
  void open() override;
  bool isRunning() const override { return true; }
  bool canOpenPath(const std::string& path) const override;
  void openPath(const std::string& path) override;
  bool canQuit() const override { return isRunning(); }
  void quit() override;

  // The same process only.
  bool representsRunningApplication(const RunningApplication& application) const override;

  const RunningApplicationPointer& app() const { return m_app; }
  void setApp(RunningApplicationPointer application) { m_app = std::move(application); }

  // Sets the image: the one in the cache under the identity, else the program's icon in grey, which is then
  // cached. Called at creation; the pixels are filtered when they are first drawn, once a size.
  void createImage();

private:
  explicit RunningAppMenuItem(RunningApplicationPointer application);

  RunningApplicationPointer m_app; // never empty
  ImagePointer m_image;
};

} // namespace orbel
