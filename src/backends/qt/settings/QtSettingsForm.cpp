#include "backends/qt/settings/QtSettingsForm.h"

#include "backends/qt/resources/OwnResources.h"
#include "backends/qt/settings/QtPopover.h"
#include "backends/qt/windows/DisplayServer.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>
#include <variant>

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

FormButton::Shape shapeOf(SettingsButton::Style style) {
  switch (style) {
  case SettingsButton::Style::field:
    return FormButton::Shape::field;
  case SettingsButton::Style::disc:
    return FormButton::Shape::disc;
  case SettingsButton::Style::link:
    return FormButton::Shape::link;
  }
  return FormButton::Shape::field;
}

QKeySequence sequenceOf(const SettingsKey& key) {
  int code = Qt::Key_Escape;
  if (key.keyEquivalent != kEscapeKeyEquivalent)
    code = QString::fromStdString(key.keyEquivalent).toUpper().front().unicode();
  for (const auto& [flag, modifier] : {std::pair(kControlFlag, Qt::CTRL), std::pair(kCommandFlag, Qt::META),
                                       std::pair(kOptionFlag, Qt::ALT), std::pair(kShiftFlag, Qt::SHIFT)}) {
    if (key.modifierFlags & flag) code |= static_cast<int>(modifier);
  }
  return QKeySequence(code);
}
} // namespace

QtSettingsForm::QtSettingsForm(const SettingsFormEnvironment& environment,
                               const SettingsFormDescription& description)
    : m_environment(environment), m_window(environment.display, environment.activate) {
  OwnResources::load();
  widget().setWindowTitle(QString::fromStdString(description.windowTitle));
  build(description);
  setTabOrder(description);
  for (const SettingsKey& key : description.keys)
    addKey(key);
  m_window.widget().setDidHide([this] { closePopovers(); });
  widget().adjustSize();
}

QtSettingsForm::~QtSettingsForm() = default;

void QtSettingsForm::build(const SettingsFormDescription& description) {
  std::vector<FormCard*> cards;
  int labelWidth = 0;
  for (const SettingsGroup& group : description.groups) {
    cards.push_back(makeCard(group));
    labelWidth = std::max(labelWidth, cards.back()->widestLabel());
  }

  auto* column = new QVBoxLayout(&widget());
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(0);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addLayout(makeHeader(description));
  for (std::size_t index = 0; index < cards.size(); ++index) {
    cards[index]->setLabelWidth(labelWidth);
    addGroup(*column, QString::fromStdString(description.groups[index].title), *cards[index]);
  }
  column->addSpacing(kGroupGap);
  column->addLayout(makeFooter(description));
}

FormCard* QtSettingsForm::makeCard(const SettingsGroup& group) {
  auto* card = new FormCard(&widget());
  for (const SettingsRow& row : group.rows) {
    QWidget* widget = makeControl(row.control);
    QWidget* accessory = makeAccessory(row);
    if (row.label.empty()) {
      card->addRow(widget, accessory);
    } else {
      card->addRow(QString::fromStdString(row.label), widget, accessory);
    }
  }
  return card;
}

QWidget* QtSettingsForm::makeAccessory(const SettingsRow& row) {
  if (!row.accessory) return nullptr;
  QWidget* accessory = makeControl(*row.accessory);
  // The window keeps its size whatever is chosen beside it.
  QSizePolicy keepsItsPlace = accessory->sizePolicy();
  keepsItsPlace.setRetainSizeWhenHidden(true);
  accessory->setSizePolicy(keepsItsPlace);
  return accessory;
}

QLayout* QtSettingsForm::makeHeader(const SettingsFormDescription& description) {
  QWidget* closeButton = makeControl(description.closeButton);
  auto* picture = new QLabel(&widget());
  picture->setPixmap(QIcon(QStringLiteral(":/icons/orbelmenu.svg"))
                         .pixmap(QSize(kPictureSide, kPictureSide), widget().devicePixelRatioF()));
  auto* title = new QLabel(QString::fromStdString(description.heading), &widget());
  QFont titleFont = scaledFont(widget().font(), kTitleScale);
  titleFont.setBold(true);
  title->setFont(titleFont);

  auto* header = new QHBoxLayout;
  header->setSpacing(10);
  header->addWidget(picture);
  header->addWidget(title);
  header->addStretch(1);
  header->addWidget(closeButton, 0, Qt::AlignTop);
  return header;
}

QLayout* QtSettingsForm::makeFooter(const SettingsFormDescription& description) {
  auto* footer = new QHBoxLayout;
  footer->setSpacing(8);
  for (const SettingsControl& control : description.footerAtLeft)
    footer->addWidget(makeControl(control));
  footer->addStretch(1);
  for (const SettingsControl& control : description.footerAtRight)
    footer->addWidget(makeControl(control));
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

QWidget* QtSettingsForm::makeControl(const SettingsControl& control) {
  QWidget* widget = std::visit([this](const auto& kind) { return make(kind); }, control.kind);
  m_controls[control.identifier] = widget;
  return widget;
}

QWidget* QtSettingsForm::make(const SettingsCheckBox& checkBox) {
  auto* box = new FormCheckBox(QString::fromStdString(checkBox.title), &widget());
  QObject::connect(box, &QCheckBox::clicked, box, checkBox.clicked);
  return box;
}

QWidget* QtSettingsForm::make(const SettingsPopUpButton& popUpButton) {
  auto* button = new FormPopUpButton(&widget());
  button->setAccessibleName(QString::fromStdString(popUpButton.accessibleName));
  button->setTranslucentList(m_environment.display.isCompositing());
  for (const SettingsChoice& choice : popUpButton.choices)
    button->addEntry(QString::fromStdString(choice.title), choice.tag);
  QObject::connect(button, &QComboBox::activated, button,
                   [button, chosen = popUpButton.chosen] { chosen(button->selectedTag()); });
  return button;
}

QWidget* QtSettingsForm::make(const SettingsButton& button) {
  auto* made = new FormButton(shapeOf(button.style), QString::fromStdString(button.title), &widget());
  if (!button.explanation.empty()) {
    made->setAccessibleName(QString::fromStdString(button.explanation));
    made->setToolTip(QString::fromStdString(button.explanation));
  }
  QObject::connect(made, &QPushButton::clicked, made, [pressed = button.pressed] { pressed(); });
  return made;
}

QWidget* QtSettingsForm::make(const SettingsText& text) {
  auto* words = new QLabel(QString::fromStdString(text.text), &widget());
  words->setForegroundRole(QPalette::PlaceholderText);
  return words;
}

QWidget* QtSettingsForm::make(const HostedView& view) {
  return new ViewHost(view, m_environment.runLoop, &widget());
}

void QtSettingsForm::addKey(const SettingsKey& key) {
  auto* shortcut = new QShortcut(sequenceOf(key), &widget());
  QObject::connect(shortcut, &QShortcut::activated, &widget(), key.pressed);
}

void QtSettingsForm::setTabOrder(const SettingsFormDescription& description) {
  QWidget* last = nullptr;
  const auto add = [&](const SettingsControl& next) {
    QWidget* widget = control(next.identifier);
    if (widget->focusPolicy() == Qt::NoFocus) return;
    if (last) QWidget::setTabOrder(last, widget);
    last = widget;
  };
  for (const SettingsGroup& group : description.groups) {
    for (const SettingsRow& row : group.rows) {
      add(row.control);
      if (row.accessory) add(*row.accessory);
    }
  }
  for (const auto* footer : {&description.footerAtLeft, &description.footerAtRight}) {
    for (const SettingsControl& next : *footer)
      add(next);
  }
  add(description.closeButton);
}

void QtSettingsForm::closePopovers() {
  for (QObject* child : QObjectList(widget().children())) {
    if (auto* popover = dynamic_cast<PopoverWidget*>(child)) popover->hide();
  }
}

QWidget* QtSettingsForm::control(const std::string& identifier) const {
  const auto found = m_controls.find(identifier);
  return found == m_controls.end() ? nullptr : found->second;
}

void QtSettingsForm::setValue(const std::string& identifier, SettingsValue value) {
  QWidget* widget = control(identifier);
  if (auto* box = dynamic_cast<FormCheckBox*>(widget)) box->setChecked(std::get<bool>(value));
  if (auto* button = dynamic_cast<FormPopUpButton*>(widget))
    button->selectEntryWithTag(std::get<std::int64_t>(value));
}

void QtSettingsForm::setVisible(const std::string& identifier, bool visible) {
  if (QWidget* widget = control(identifier)) widget->setVisible(visible);
}

std::unique_ptr<Popover> QtSettingsForm::makePopover(std::function<void()> didClose) {
  return std::make_unique<QtPopover>(
      m_environment.display, m_environment.runLoop, &widget(),
      [this](const std::string& identifier) { return control(identifier); }, std::move(didClose));
}

} // namespace orbel::qt
