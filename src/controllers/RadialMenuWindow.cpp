#include "controllers/RadialMenuWindow.h"

#include "controllers/MenuColors.h"
#include "settings/AppSettings.h"

namespace orbel {

namespace {
constexpr double kCloseButtonSide = 30;
}

RadialMenuWindow::RadialMenuWindow(SurfaceLevel level) : m_window(std::make_unique<OrbelWindow>(level)) {
  View& content = m_window->contentView();
  m_orbelView = std::make_shared<OrbelView>(content.bounds());
  m_orbelView->setAutoresizing(Autoresizing::fillsSuperview);
  refreshMagnification();
  m_orbelView->registerForFileDrags();
  content.addSubview(m_orbelView);

  m_closeButton =
      std::make_shared<CloseButton>(Rect::centeredAt(content.bounds().center(), kCloseButtonSide));
  m_closeButton->setAutoresizing(Autoresizing::staysCentered);
  content.addSubview(m_closeButton);

  m_window->setAlphaValue(0);
}

RadialMenuWindow::~RadialMenuWindow() {
  detach();
}

void RadialMenuWindow::attach(OrbelViewDataSource& dataSource, OrbelViewDelegate& delegate) {
  m_orbelView->setDataSource(&dataSource);
  m_orbelView->setDelegate(&delegate);
  m_orbelView->reloadData();
}

void RadialMenuWindow::detach() {
  m_orbelView->setDataSource(nullptr);
  m_orbelView->setDelegate(nullptr);
}

void RadialMenuWindow::setFrame(Point center, double side) {
  m_window->setFrame(Rect::centeredAt(center, side));
}

void RadialMenuWindow::refreshTint() {
  const Color tint = AppSettings::sharedInstance().windowTintColor();
  m_window->setTintColor(tint);
  m_closeButton->setDefaultColor(closeButtonColorOnTint(tint));
  m_orbelView->reloadData();
}

void RadialMenuWindow::refreshMagnification() {
  m_orbelView->setMagnifyItemsOnMouseOver(AppSettings::sharedInstance().magnifySettings());
}

void RadialMenuWindow::magnificationChanged() {
  refreshMagnification();
  m_orbelView->reloadData();
}

} // namespace orbel
