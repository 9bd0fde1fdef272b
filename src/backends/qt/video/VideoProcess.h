// One video that plays in a process of its own. Made by QtVideoPlayerFactory.
#pragma once

#include "foundation/Lifetime.h"
#include "platform/VideoPlayer.h"
#include "protocols/video/VideoMessage.h"

#include <QProcess>
#include <QString>

#include <string>

namespace orbel::qt {

class VideoProcess : public VideoPlayer {
public:
  // Points for each pixel of a frame: the videos are drawn for twice the scale.
  static constexpr double kPointsPerPixel = 0.5;

  VideoProcess(const QString& program, std::string video, VideoPlayerHandlers handlers);
  ~VideoProcess() override;
  VideoProcess(const VideoProcess&) = delete;
  VideoProcess& operator=(const VideoProcess&) = delete;

  void seekToStart() override { tell(VideoCommand::seekToStart); }
  void play() override { tell(VideoCommand::play); }

private:
  void tell(VideoCommand command);
  void readMessages();
  void processEnded();
  void report(const std::string& cause);

  std::string m_video;
  VideoPlayerHandlers m_handlers;
  QProcess m_process;
  VideoMessageReader m_messages;
  Lifetime m_lifetime; // handlers may end this object
  bool m_isReported = false;
};

} // namespace orbel::qt
