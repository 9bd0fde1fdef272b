#include "backends/qt/settings/QtSettingsForm.h"

#include "backends/qt/resources/OwnResources.h"
#include "backends/qt/settings/QtPopover.h"
#include "backends/qt/windows/DisplayServer.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orbel::qt {

namespace {
constexpr int kMargin = 18;
constexpr int kGroupGap = 12;
constexpr int kHeadingGap = 4;
constexpr int kPictureSide = 44;
constexpr double kTitleScale = 1.35;   // of the interface font
constexpr double kHeadingScale = 0.92; // of the interface font

QFont scaledFont(const QFont& font, double scale) {
  QFont scaled = font;
  if (font.pointSizeF() > 0) {
    scaled.setPointSizeF(font.pointSizeF() * scale);
  } else {
    scaled.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * scale)));
  }
  return scaled;
}
} // namespace

QtSettingsForm::QtSettingsForm(const SettingsFormEnvironment& environment, SettingsFormContents contents,
                               SettingsFormDelegate& delegate)
    : m_environment(environment), m_delegate(delegate), m_window(environment.display, environment.activate) {
  OwnResources::load();
  widget().setWindowTitle(localized("Settings"));
  build(contents);
  addKeys();
  m_window.widget().setDidHide([this] { closePopovers(); });
  widget().adjustSize();
}

QtSettingsForm::~QtSettingsForm() = default;

QString QtSettingsForm::localized(std::string_view english) const {
  return QString::fromStdString(m_environment.text.localized(english));
}

void QtSettingsForm::build(SettingsFormContents& contents) {
  m_gesturePopUpButton =
      makePopUpButton(contents.gestures, localized("Gesture"), &SettingsFormDelegate::gesturePopUpClicked);
  m_menuSizePopUpButton =
      makePopUpButton(contents.menuSizes, localized("Menu size"), &SettingsFormDelegate::menuSizeClicked);
  m_magnifyCheckbox = makeCheckBox(localized("&Magnify items under the pointer"),
                                   &SettingsFormDelegate::magnifyCheckboxClicked);
  m_showRunningAppsCheckbox =
      makeCheckBox(localized("Show &running applications"), &SettingsFormDelegate::showRunningAppsClicked);
  m_swiftModeCheckbox =
      makeCheckBox(localized("S&wift Mode"), &SettingsFormDelegate::swiftModeCheckboxClicked);
  m_startOnLoginCheckbox =
      makeCheckBox(localized("&Launch at login"), &SettingsFormDelegate::startOnLoginCheckboxClicked);
  m_helpButton = makeButton(FormButton::Shape::disc, QStringLiteral("?"),
                            localized("Show how to make the gesture"), &SettingsFormDelegate::helpClicked);
  // The window keeps its size whatever is chosen beside it.
  QSizePolicy keepsItsPlace = m_helpButton->sizePolicy();
  keepsItsPlace.setRetainSizeWhenHidden(true);
  m_helpButton->setSizePolicy(keepsItsPlace);
  m_swiftModeInfoButton =
      makeButton(FormButton::Shape::disc, QStringLiteral("i"), localized("What is Swift Mode?"),
                 &SettingsFormDelegate::swiftModeInfoClicked);
  m_windowTintButton = makeHost(contents.windowTintButton);
  m_shortcutView = makeHost(contents.shortcutView);

  auto* summoning = new FormCard(&widget());
  summoning->addRow(localized("&Shortcut:"), m_shortcutView);
  summoning->addRow(localized("&Gesture:"), m_gesturePopUpButton, m_helpButton);
  auto* look = new FormCard(&widget());
  look->addRow(localized("Menu si&ze:"), m_menuSizePopUpButton);
  look->addRow(localized("Menu &color:"), m_windowTintButton);
  look->addRow(m_magnifyCheckbox);
  auto* behavior = new FormCard(&widget());
  behavior->addRow(m_showRunningAppsCheckbox);
  behavior->addRow(m_swiftModeCheckbox, m_swiftModeInfoButton);
  behavior->addRow(m_startOnLoginCheckbox);
  const int labelWidth = std::max({summoning->widestLabel(), look->widestLabel(), behavior->widestLabel()});
  for (FormCard* card : {summoning, look, behavior})
    card->setLabelWidth(labelWidth);

  auto* column = new QVBoxLayout(&widget());
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(0);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addLayout(makeHeader(contents));
  addGroup(*column, localized("Open the menu"), *summoning);
  addGroup(*column, localized("Appearance"), *look);
  addGroup(*column, localized("Behavior"), *behavior);
  column->addSpacing(kGroupGap);
  column->addLayout(makeFooter(contents));

  setTabOrder({m_shortcutView, m_gesturePopUpButton, m_helpButton, m_menuSizePopUpButton, m_windowTintButton,
               m_magnifyCheckbox, m_showRunningAppsCheckbox, m_swiftModeCheckbox, m_swiftModeInfoButton,
               m_startOnLoginCheckbox, m_websiteButton, m_quitButton, m_closeButton});
}

QLayout* QtSettingsForm::makeHeader(SettingsFormContents& contents) {
  m_closeButton = makeHost(contents.closeButton);
  auto* picture = new QLabel(&widget());
  picture->setPixmap(QIcon(QStringLiteral(":/icons/orbelmenu.svg"))
                         .pixmap(QSize(kPictureSide, kPictureSide), widget().devicePixelRatioF()));
  auto* title = new QLabel(localized("Orbel Menu"), &widget());
  QFont titleFont = scaledFont(widget().font(), kTitleScale);
  titleFont.setBold(true);
  title->setFont(titleFont);

  auto* header = new QHBoxLayout;
  header->setSpacing(10);
  header->addWidget(picture);
  header->addWidget(title);
  header->addStretch(1);
  header->addWidget(m_closeButton, 0, Qt::AlignTop);
  return header;
}

QLayout* QtSettingsForm::makeFooter(const SettingsFormContents& contents) {
  auto* version = new QLabel(
      localized("Version %@").replace(QStringLiteral("%@"), QString::fromStdString(contents.version)),
      &widget());
  version->setForegroundRole(QPalette::PlaceholderText);
  const QString site = QString::fromStdString(contents.website);
  m_websiteButton =
      makeButton(FormButton::Shape::link, site, localized("Web site: %@").replace(QStringLiteral("%@"), site),
                 &SettingsFormDelegate::websiteClicked);
  m_quitButton = makeButton(FormButton::Shape::field, localized("&Quit Orbel Menu"), {},
                            &SettingsFormDelegate::quitClicked);

  auto* footer = new QHBoxLayout;
  footer->setSpacing(8);
  footer->addWidget(version);
  footer->addWidget(m_websiteButton);
  footer->addStretch(1);
  footer->addWidget(m_quitButton);
  return footer;
}

void QtSettingsForm::addGroup(QVBoxLayout& column, const QString& heading, FormCard& card) {
  auto* words = new QLabel(heading, &widget());
  QFont font = scaledFont(widget().font(), kHeadingScale);
  font.setBold(true);
  words->setFont(font);
  words->setForegroundRole(QPalette::PlaceholderText);
  words->setContentsMargins(4, 0, 0, 0);
  card.setAccessibleName(heading);
  column.addSpacing(kGroupGap);
  column.addWidget(words);
  column.addSpacing(kHeadingGap);
  column.addWidget(&card);
}

FormCheckBox* QtSettingsForm::makeCheckBox(const QString& text, Checked clicked) {
  auto* box = new FormCheckBox(text, &widget());
  QObject::connect(box, &QCheckBox::clicked, box, [this, clicked](bool on) { (m_delegate.*clicked)(on); });
  return box;
}

FormPopUpButton* QtSettingsForm::makePopUpButton(const std::vector<SettingsChoice>& choices,
                                                 const QString& name, Tagged clicked) {
  auto* button = new FormPopUpButton(&widget());
  button->setAccessibleName(name);
  button->setTranslucentList(m_environment.display.isCompositing());
  for (const SettingsChoice& choice : choices)
    button->addEntry(QString::fromStdString(choice.title), choice.tag);
  QObject::connect(button, &QComboBox::activated, button,
                   [this, button, clicked] { (m_delegate.*clicked)(button->selectedTag()); });
  return button;
}

FormButton* QtSettingsForm::makeButton(FormButton::Shape shape, const QString& text, const QString& name,
                                       Plain clicked) {
  auto* button = new FormButton(shape, text, &widget());
  if (!name.isEmpty()) {
    button->setAccessibleName(name);
    button->setToolTip(name);
  }
  QObject::connect(button, &QPushButton::clicked, button, [this, clicked] { (m_delegate.*clicked)(); });
  return button;
}

ViewHost* QtSettingsForm::makeHost(HostedView& view) {
  return new ViewHost(std::move(view), m_environment.runLoop, &widget());
}

// Those with a modifier are in the core's main menu, too, so that none of them is recorded as the shortcut.
void QtSettingsForm::addKeys() {
  const auto add = [this](QKeyCombination keys, const std::function<void()>& act) {
    auto* shortcut = new QShortcut(QKeySequence(keys), &widget());
    QObject::connect(shortcut, &QShortcut::activated, &widget(), act);
  };
  const auto close = [this] { m_window.close(); };
  const auto quit = [this] { m_delegate.quitClicked(); };
  add(Qt::Key_Escape, close);
  add(Qt::CTRL | Qt::Key_W, close);
  add(Qt::META | Qt::Key_W, close);
  add(Qt::CTRL | Qt::Key_Q, quit);
  add(Qt::META | Qt::Key_Q, quit);
}

void QtSettingsForm::closePopovers() {
  for (QObject* child : QObjectList(widget().children())) {
    if (auto* popover = dynamic_cast<PopoverWidget*>(child)) popover->hide();
  }
}

void QtSettingsForm::setTabOrder(const std::vector<QWidget*>& order) {
  for (std::size_t index = 1; index < order.size(); ++index)
    QWidget::setTabOrder(order[index - 1], order[index]);
}

void QtSettingsForm::setValues(const SettingsValues& values) {
  m_gesturePopUpButton->selectEntryWithTag(values.gesture);
  m_menuSizePopUpButton->selectEntryWithTag(values.menuSize);
  m_magnifyCheckbox->setChecked(values.magnify);
  m_showRunningAppsCheckbox->setChecked(values.showRunningApps);
  m_startOnLoginCheckbox->setChecked(values.startOnLogin);
  m_swiftModeCheckbox->setChecked(values.swiftMode);
}

void QtSettingsForm::setHelpButtonVisible(bool visible) {
  m_helpButton->setVisible(visible);
}

std::unique_ptr<Popover> QtSettingsForm::makePopover(std::function<void()> didClose) {
  return std::make_unique<QtPopover>(
      m_environment.display, m_environment.runLoop, &widget(),
      [this](SettingsControl control) -> QWidget* {
        if (control == SettingsControl::help) return m_helpButton;
        return m_windowTintButton;
      },
      std::move(didClose));
}

} // namespace orbel::qt
