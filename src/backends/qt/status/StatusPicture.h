// The status icon's pixels: a picture of our own as it is, or its shape in one colour. Used by the two kinds
// of status icon.
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

#include <optional>
#include <vector>

namespace orbel::qt {

class StatusPicture {
public:
  // A picture among our resources, ":/icons/<name>.svg".
  StatusPicture(QString name, bool isTemplate);

  // A square of that many pixels, premultiplied; a template takes the colour, other pictures keep theirs.
  QImage image(int side, const QColor& color) const;

  // Under which name, and where besides the icon theme's own folders, a panel finds the same shape to draw it
  // in its own colour. Both empty for a picture that is no template. What is not installed is put into the
  // user's runtime folder first.
  struct ThemeIcon {
    QString name;
    QString searchPath;
  };
  ThemeIcon themeIcon() const;

  // What stands out from the status area: the colour that the tray itself asks for where it does (`tray`),
  // else the text colour of the desktop's theme.
  static QColor foreground(const std::optional<QColor>& tray);

private:
  QString m_name;
  bool m_isTemplate;
};

} // namespace orbel::qt
