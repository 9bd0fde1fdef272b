#include "backends/qt/video/VideoProcess.h"

#include "foundation/Log.h"

#include <QProcessEnvironment>

#include <utility>

namespace orbel::qt {

VideoProcess::VideoProcess(const QString& program, std::string video, VideoPlayerHandlers handlers)
    : m_video(std::move(video)), m_handlers(std::move(handlers)) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  // The other backend needs plugins that few desktops have.
  environment.insert(QStringLiteral("QT_MEDIA_BACKEND"), QStringLiteral("ffmpeg"));
  m_process.setProcessEnvironment(environment);
  QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] { readMessages(); });
  QObject::connect(&m_process, &QProcess::finished, &m_process, [this] { processEnded(); });
  QObject::connect(&m_process, &QProcess::errorOccurred, &m_process, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) report(m_process.errorString().toStdString());
  });
  m_process.start(program, {QString::fromStdString(m_video)});
}

VideoProcess::~VideoProcess() {
  m_process.disconnect();
  m_process.kill();
  m_process.waitForFinished(1000);
}

void VideoProcess::tell(VideoCommand command) {
  const char byte = static_cast<char>(command);
  m_process.write(&byte, 1);
}

void VideoProcess::readMessages() {
  m_messages.add(m_process.readAllStandardOutput());
  const auto life = m_lifetime.watch();
  while (auto message = m_messages.next()) {
    if (message->kind == VideoMessage::Kind::frame) {
      tell(VideoCommand::frameTaken);
      const Size size{message->frame.width * kPointsPerPixel, message->frame.height * kPointsPerPixel};
      if (m_handlers.frameReady) m_handlers.frameReady(Image::withBitmap(size, std::move(message->frame)));
    } else if (m_handlers.didPlayToEnd) {
      m_handlers.didPlayToEnd();
    }
    if (life.hasEnded()) return;
  }
  if (!m_messages.isBroken()) return;
  report("the video program does not speak our language");
  m_process.kill();
}

void VideoProcess::processEnded() {
  const QByteArray errors = m_process.readAllStandardError().trimmed();
  const std::string said = errors.mid(errors.lastIndexOf('\n') + 1).toStdString();
  report(said.empty() ? "the video program has ended" : said);
}

void VideoProcess::report(const std::string& cause) {
  if (std::exchange(m_isReported, true)) return;
  Log::warning("the video " + m_video + " is shown as a still picture: " + cause);
}

} // namespace orbel::qt
