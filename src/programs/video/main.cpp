// Plays the video of our own that is named on the command line ("ThreeFingerRest.mp4").
#include "programs/video/VideoPlayback.h"

#include <QFile>
#include <QGuiApplication>
#include <QUrl>

#include <cstdio>
#include <unistd.h>

namespace {
// Without a media plug-in Qt ends the process with a fatal message. That is no crash worth a memory dump.
void handleMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  std::fprintf(stderr, "%s\n", qUtf8Printable(message));
  if (type == QtFatalMsg) _exit(1);
}
} // namespace

int main(int argumentCount, char** arguments) {
  qInstallMessageHandler(handleMessage);
  QGuiApplication application(argumentCount, arguments);
  const QString name = QCoreApplication::arguments().value(1);
  if (name.isEmpty() || !QFile::exists(QStringLiteral(":/video/") + name)) {
    std::fprintf(stderr, "there is no video \"%s\"\n", qUtf8Printable(name));
    return 2;
  }
  const orbel::VideoPlayback playback(QUrl(QStringLiteral("qrc:/video/") + name));
  if (!playback.isAvailable()) {
    std::fprintf(stderr, "no media plugin can be loaded\n");
    return 1;
  }
  return QCoreApplication::exec();
}
