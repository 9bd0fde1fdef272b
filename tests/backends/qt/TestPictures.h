// Picture files and icon themes made for a test.
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <filesystem>
#include <string>

namespace orbel::qt {

// Make missing folders, too.
void writeText(const std::filesystem::path& file, const std::string& text);
void writePicture(const std::filesystem::path& file, int width, int height, QColor color);
void writeDrawing(const std::filesystem::path& file, QColor color, int width = 16, int height = 16);
// An index.theme with folders described as "48x48/apps Fixed 48" or "scalable/apps Scalable 128 8 512".
void writeThemeIndex(const std::filesystem::path& theme, const QStringList& directories,
                     const QString& inherits = {});

// Premultiplied ARGB of an opaque colour.
std::uint32_t pixelOf(QColor color);

} // namespace orbel::qt
