// A message with one button, as an alert shows it: picture, bold message, explanation. The button answers to
// Return; Escape and closing the window dismiss. Takes the colours, fonts and pictures of the desktop. Made
// by QtDialogs.
#pragma once

#include <QDialog>
#include <QPixmap>
#include <QPoint>
#include <QString>

class QVBoxLayout;

namespace orbel::qt {

class MessageDialog : public QDialog {
public:
  struct Contents {
    QPixmap picture; // kPictureSide points square
    QString message;
    QString explanation; // may be empty
    QString button;
  };
  static constexpr int kPictureSide = 48; // points

  explicit MessageDialog(const Contents& contents);

  // The screen that it appears on is the one with that place, in Qt's coordinates. Before it is shown.
  void appearOnScreenAt(QPoint place) { m_place = place; }

  // The program's own picture, and the desktop's for a failure.
  static QPixmap programPicture();
  static QPixmap criticalPicture();

protected:
  // Below the texts, left aligned; the dialog grows to fit.
  void addControl(QWidget* control);
  // Sized, and placed in the middle of its screen.
  void showEvent(QShowEvent* event) override;

private:
  void addText(const QString& text);

  QVBoxLayout* m_texts = nullptr;
  QPoint m_place;
};

} // namespace orbel::qt
