#include "programs/video/VideoPlayback.h"

#include "protocols/video/VideoMessage.h"

#include <QCoreApplication>
#include <QImage>

#include <array>
#include <cstdio>
#include <unistd.h>
#include <utility>

namespace orbel {

namespace {
// Waits while the reader is busy. A reader that has ended makes the system end this process by SIGPIPE.
void send(const void* bytes, std::size_t size) {
  std::fwrite(bytes, 1, size, stdout);
}
} // namespace

VideoPlayback::VideoPlayback(const QUrl& video) : m_commands(STDIN_FILENO, QSocketNotifier::Read) {
  QObject::connect(&m_commands, &QSocketNotifier::activated, &m_player, [this] { obey(); });
  QObject::connect(&m_sink, &QVideoSink::videoFrameChanged, &m_player,
                   [this](const QVideoFrame& frame) { frameCame(frame); });
  QObject::connect(&m_player, &QMediaPlayer::mediaStatusChanged, &m_player,
                   [this](QMediaPlayer::MediaStatus status) { statusChanged(status); });
  QObject::connect(&m_player, &QMediaPlayer::errorOccurred, &m_player,
                   [](QMediaPlayer::Error, const QString& cause) {
                     std::fprintf(stderr, "%s\n", qUtf8Printable(cause));
                     QCoreApplication::exit(1);
                   });
  m_player.setVideoSink(&m_sink);
  m_player.setSource(video);
}

void VideoPlayback::obey() {
  std::array<char, 16> bytes;
  const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count <= 0) {
    m_commands.setEnabled(false);
    QCoreApplication::exit(0);
    return;
  }
  for (ssize_t index = 0; index < count; ++index) {
    switch (static_cast<VideoCommand>(bytes[static_cast<std::size_t>(index)])) {
    case VideoCommand::seekToStart:
      m_player.setPosition(0);
      break;
    case VideoCommand::play:
      m_player.play();
      break;
    case VideoCommand::frameTaken:
      m_isReaderBusy = false;
      if (m_waiting.isValid()) sendFrame(std::exchange(m_waiting, {}));
      break;
    }
  }
}

void VideoPlayback::frameCame(const QVideoFrame& frame) {
  if (m_isReaderBusy) {
    m_waiting = frame;
  } else {
    sendFrame(frame);
  }
}

void VideoPlayback::sendFrame(const QVideoFrame& frame) {
  const QImage image = frame.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return;
  m_isReaderBusy = true;
  const QByteArray header = VideoMessage::frameHeader(static_cast<std::uint32_t>(image.width()),
                                                      static_cast<std::uint32_t>(image.height()));
  send(header.constData(), static_cast<std::size_t>(header.size()));
  for (int y = 0; y < image.height(); ++y)
    send(image.constScanLine(y), static_cast<std::size_t>(image.width()) * 4);
  std::fflush(stdout);
}

void VideoPlayback::statusChanged(QMediaPlayer::MediaStatus status) {
  if (status != QMediaPlayer::EndOfMedia) return;
  m_waiting = {}; // it would come after the end
  const QByteArray end = VideoMessage::playedToEndBytes();
  send(end.constData(), static_cast<std::size_t>(end.size()));
  std::fflush(stdout);
}

} // namespace orbel
