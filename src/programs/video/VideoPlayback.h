// Plays a video without a window and without sound: frames and the end are written to standard output,
// commands come from standard input. Needs a QGuiApplication, which it ends. One for the process.
#pragma once

#include <QMediaPlayer>
#include <QSocketNotifier>
#include <QUrl>
#include <QVideoFrame>
#include <QVideoSink>

namespace orbel {

class VideoPlayback {
public:
  explicit VideoPlayback(const QUrl& video);
  VideoPlayback(const VideoPlayback&) = delete;
  VideoPlayback& operator=(const VideoPlayback&) = delete;

  // False where no media backend can be loaded.
  bool isAvailable() const { return m_player.isAvailable(); }

private:
  void obey();
  void frameCame(const QVideoFrame& frame);
  void sendFrame(const QVideoFrame& frame);
  void statusChanged(QMediaPlayer::MediaStatus status);

  QMediaPlayer m_player;
  QVideoSink m_sink;
  QSocketNotifier m_commands;
  bool m_isReaderBusy = false;
  QVideoFrame m_waiting; // the latest that came while the reader was busy; invalid for none
};

} // namespace orbel
