#include "backends/qt/popups/MessageDialog.h"

#include "backends/qt/icons/PictureReader.h"
#include "backends/qt/resources/OwnResources.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace orbel::qt {

namespace {
constexpr int kMargin = 20;              // points
constexpr int kPictureGap = 16;          // between picture and texts
constexpr int kTextGap = 8;              // between message and explanation
constexpr int kControlGap = 12;          // above a control
constexpr int kButtonGap = 20;           // above the button
constexpr int kNarrowestText = 200;      // points
constexpr int kWidestText = 380;         // points
constexpr int kNarrowestButton = 88;     // points
constexpr int kLowestButton = 26;        // points
constexpr qsizetype kLongestText = 2000; // characters; more would push the button off the screen

QString shortened(const QString& text) {
  return text.size() <= kLongestText ? text : text.left(kLongestText) + QChar(0x2026);
}

QLabel* makeLabel(const QString& text, const QFont& font) {
  auto* label = new QLabel(shortened(text));
  label->setTextFormat(Qt::PlainText); // names of the user's files are no markup
  label->setWordWrap(true);
  label->setFont(font);
  const int natural =
      label->fontMetrics()
          .boundingRect(QRect(0, 0, kWidestText, QWIDGETSIZE_MAX), Qt::TextWordWrap, label->text())
          .width() +
      1;
  label->setFixedWidth(std::clamp(natural, kNarrowestText, kWidestText));
  return label;
}
} // namespace

MessageDialog::MessageDialog(const Contents& contents) {
  setWindowTitle(QGuiApplication::applicationDisplayName());
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);

  auto* picture = new QLabel;
  picture->setPixmap(contents.picture);
  QFont bold = font();
  bold.setBold(true);
  bold.setPointSizeF(font().pointSizeF() * 1.15);
  m_texts = new QVBoxLayout;
  m_texts->setSpacing(0);
  // Several lines in bold would shout: the first says what it is about.
  const qsizetype firstLine = contents.message.indexOf(QLatin1Char('\n'));
  m_texts->addWidget(makeLabel(contents.message.left(firstLine), bold));
  if (firstLine >= 0) addText(contents.message.mid(firstLine + 1));
  addText(contents.explanation);

  auto* button = new QPushButton(QString(contents.button).replace(QLatin1Char('&'), QLatin1String("&&")));
  button->setDefault(true);
  button->setMinimumSize(kNarrowestButton, kLowestButton);
  connect(button, &QPushButton::clicked, this, &QDialog::accept);

  auto* upper = new QHBoxLayout;
  upper->setSpacing(kPictureGap);
  upper->addWidget(picture, 0, Qt::AlignTop);
  upper->addLayout(m_texts, 1);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  all->setSpacing(kButtonGap);
  all->setSizeConstraint(QLayout::SetFixedSize);
  all->addLayout(upper);
  all->addWidget(button, 0, Qt::AlignRight);
}

void MessageDialog::addText(const QString& text) {
  if (text.isEmpty()) return;
  m_texts->addSpacing(kTextGap);
  m_texts->addWidget(makeLabel(text, font()));
}

void MessageDialog::addControl(QWidget* control) {
  m_texts->addSpacing(kControlGap);
  m_texts->addWidget(control, 0, Qt::AlignLeft);
}

QPixmap MessageDialog::programPicture() {
  OwnResources::load();
  const double scale = qGuiApp->devicePixelRatio();
  const Bitmap bitmap = PictureReader::read(QStringLiteral(":/icons/orbelmenu.svg"),
                                            static_cast<int>(std::lround(kPictureSide * scale)));
  const QImage borrowed(reinterpret_cast<const uchar*>(bitmap.pixels.data()), bitmap.width, bitmap.height,
                        QImage::Format_ARGB32_Premultiplied);
  QPixmap pixmap = QPixmap::fromImage(borrowed.copy());
  pixmap.setDevicePixelRatio(scale);
  return pixmap;
}

QPixmap MessageDialog::criticalPicture() {
  return QWidget().style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(kPictureSide, kPictureSide);
}

void MessageDialog::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) {
    adjustSize();
    const QScreen* screen = QGuiApplication::screenAt(m_place);
    if (!screen) screen = QGuiApplication::primaryScreen();
    QRect placed = geometry();
    placed.moveCenter(screen->availableGeometry().center());
    move(placed.topLeft());
  }
  QDialog::showEvent(event);
}

} // namespace orbel::qt
