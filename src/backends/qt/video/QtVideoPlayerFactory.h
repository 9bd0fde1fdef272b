// Plays the program's videos in a process of its own (orbelmenu-video), which sends the frames: the media
// libraries would take a hundred megabytes that never come back, and their faults would be ours. The process
// lives as long as the player. Main thread only; needs a QApplication.
#pragma once

#include "platform/VideoPlayer.h"

#include <QString>

#include <memory>

namespace orbel::qt {

class QtVideoPlayerFactory : public VideoPlayerFactory {
public:
  // The path of the video program, which need not exist: then there is only the still picture.
  explicit QtVideoPlayerFactory(QString program) : m_program(std::move(program)) {}

  // Beside this program, or where an installation keeps it.
  static QString findProgram();

  ImagePointer still(const std::string& resource, Size size) override;
  Result<std::unique_ptr<VideoPlayer>> load(const std::string& resource, const std::string& extension,
                                            VideoPlayerHandlers handlers) override;

private:
  QString m_program;
};

} // namespace orbel::qt
