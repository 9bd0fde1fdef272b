#include "tests/backends/qt/TestPictures.h"

#include <QImage>

#include <fstream>
#include <stdexcept>

namespace orbel::qt {

void writeText(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

void writePicture(const std::filesystem::path& file, int width, int height, QColor color) {
  std::filesystem::create_directories(file.parent_path());
  QImage image(width, height, QImage::Format_ARGB32);
  image.fill(color);
  if (!image.save(QString::fromStdString(file.string())))
    throw std::runtime_error("cannot write " + file.string());
}

void writeDrawing(const std::filesystem::path& file, QColor color, int width, int height) {
  writeText(file, QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' width='%1' height='%2'>"
                                 "<rect width='%1' height='%2' fill='%3'/></svg>")
                      .arg(width)
                      .arg(height)
                      .arg(color.name())
                      .toStdString());
}

void writeThemeIndex(const std::filesystem::path& theme, const QStringList& directories,
                     const QString& inherits) {
  QStringList names;
  QString sections;
  for (const QString& directory : directories) {
    const QStringList parts = directory.split(QLatin1Char(' '));
    names << parts[0];
    sections += QStringLiteral("\n[%1]\nType=%2\nSize=%3\n").arg(parts[0], parts[1], parts[2]);
    if (parts.size() > 4) sections += QStringLiteral("MinSize=%1\nMaxSize=%2\n").arg(parts[3], parts[4]);
    std::filesystem::create_directories(theme / parts[0].toStdString());
  }
  const QString head = QStringLiteral("[Icon Theme]\nName=Test\nInherits=%1\nDirectories=%2\n");
  writeText(theme / "index.theme",
            (head.arg(inherits, names.join(QLatin1Char(','))) + sections).toStdString());
}

std::uint32_t pixelOf(QColor color) {
  return color.rgba();
}

} // namespace orbel::qt
