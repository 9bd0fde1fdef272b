#include "backends/qt/popups/PoppedUpMenu.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QMenu>
#include <QPixmap>
#include <QPointer>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orbel::qt {

namespace {
constexpr int kIconSide = 16;      // points
constexpr int kLargestTitle = 400; // points; a menu as wide as the screen is hard to read

QIcon iconOf(const ImagePointer& image, double scale) {
  if (!image) return {};
  const int side = static_cast<int>(std::lround(kIconSide * scale));
  const Bitmap& bitmap = image->representation(side, side);
  if (bitmap.isEmpty()) return {};
  const QImage borrowed(reinterpret_cast<const uchar*>(bitmap.pixels.data()), bitmap.width, bitmap.height,
                        QImage::Format_ARGB32_Premultiplied);
  QPixmap pixmap =
      QPixmap::fromImage(borrowed.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation).copy());
  pixmap.setDevicePixelRatio(scale);
  return QIcon(pixmap);
}

QString shownTitle(const std::string& title, const QMenu& menu) {
  // A tab would start the column of shortcuts, an ampersand underline a letter.
  QString shown = QString::fromStdString(title).simplified();
  shown = menu.fontMetrics().elidedText(shown, Qt::ElideMiddle, kLargestTitle);
  return shown.replace(QLatin1Char('&'), QLatin1String("&&"));
}

bool hasVisibleEntry(const std::vector<MenuEntry>& entries) {
  return std::any_of(entries.begin(), entries.end(),
                     [](const MenuEntry& entry) { return !entry.isHidden && !entry.isSeparator; });
}
} // namespace

// Shared by the handle and Qt's menu, because either may be destroyed first.
struct PoppedUpMenu::Tracking : std::enable_shared_from_this<Tracking> {
  std::vector<MenuEntry> entries;
  ContextMenuDelegate* delegate = nullptr;
  bool isAbandoned = false; // the handle is destroyed: nothing may be called any more
  bool isOpen = false;
  QPointer<QMenu> menu;
  Registration popUp;

  void fill(QMenu& filled, const std::vector<MenuEntry>& from, double scale);
  void open(PopUpRegistry& popUps, QPoint position);
  void closed();
};

void PoppedUpMenu::Tracking::fill(QMenu& filled, const std::vector<MenuEntry>& from, double scale) {
  for (const MenuEntry& entry : from) {
    if (entry.isHidden) continue;
    if (entry.isSeparator) {
      filled.addSeparator();
      continue;
    }
    QAction* action = nullptr;
    if (entry.submenu.empty()) {
      action = filled.addAction(shownTitle(entry.title, filled));
      QObject::connect(action, &QAction::triggered, &filled, [self = shared_from_this(), &entry] {
        if (!self->isAbandoned && entry.action) entry.action(entry);
      });
    } else {
      QMenu* submenu = filled.addMenu(shownTitle(entry.title, filled));
      fill(*submenu, entry.submenu, scale);
      action = submenu->menuAction();
    }
    action->setEnabled(entry.isEnabled);
    action->setIcon(iconOf(entry.image, scale));
    action->setIconVisibleInMenu(true); // some desktops hide the icons of all menus
  }
}

void PoppedUpMenu::Tracking::open(PopUpRegistry& popUps, QPoint position) {
  const QScreen* screen = QGuiApplication::screenAt(position);
  if (!screen) screen = QGuiApplication::primaryScreen();
  menu = new QMenu();
  fill(*menu, entries, screen ? screen->devicePixelRatio() : 1.0);
  // Held by the menu alone, so that the last reference is released with it.
  QObject::connect(menu, &QMenu::aboutToHide, menu, [self = shared_from_this()] { self->closed(); });
  popUp = popUps.add(*menu);
  isOpen = true;
  if (delegate) delegate->menuWillOpen();
  menu->popup(position);
}

void PoppedUpMenu::Tracking::closed() {
  if (!isOpen) return;
  isOpen = false;
  popUp.reset();
  // Qt is still executing code of the menu, and the chosen action has yet to be triggered.
  menu->deleteLater();
  if (!isAbandoned && delegate) delegate->menuDidClose();
}

PoppedUpMenu::PoppedUpMenu(std::vector<MenuEntry> entries, ContextMenuDelegate* delegate,
                           PopUpRegistry& popUps, QPoint position)
    : m_tracking(std::make_shared<Tracking>()) {
  m_tracking->entries = std::move(entries);
  m_tracking->delegate = delegate;
  if (hasVisibleEntry(m_tracking->entries)) m_tracking->open(popUps, position);
}

PoppedUpMenu::~PoppedUpMenu() {
  m_tracking->isAbandoned = true;
  cancelTracking();
}

void PoppedUpMenu::cancelTracking() {
  // The delegate may destroy this object when it is notified of the end.
  const auto tracking = m_tracking;
  if (tracking->isOpen && tracking->menu) tracking->menu->close();
}

} // namespace orbel::qt
