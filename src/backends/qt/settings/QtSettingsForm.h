// The settings window's form: puts the controls in groups on the window, names them, gives them their keys,
// and tells the delegate what the user does. Made by QtSettingsForms.
#pragma once

#include "backends/qt/settings/FormButton.h"
#include "backends/qt/settings/FormCard.h"
#include "backends/qt/settings/FormCheckBox.h"
#include "backends/qt/settings/FormPopUpButton.h"
#include "backends/qt/settings/QtManagedWindow.h"
#include "backends/qt/settings/ViewHost.h"
#include "platform/SettingsForm.h"
#include "platform/TextServices.h"

#include <string_view>

class QVBoxLayout;

namespace orbel::qt {

struct SettingsFormEnvironment {
  DisplayServer& display;
  const TextServices& text;
  RunLoop& runLoop;
  // Gives a window the keyboard as the user's own act; may be empty.
  std::function<void(WId)> activate;
};

class QtSettingsForm : public SettingsForm {
public:
  // Everything in the environment outlives the form.
  QtSettingsForm(const SettingsFormEnvironment& environment, SettingsFormContents contents,
                 SettingsFormDelegate& delegate);
  ~QtSettingsForm() override;

  ManagedWindow& window() override { return m_window; }
  void setValues(const SettingsValues& values) override;
  void setHelpButtonVisible(bool visible) override;
  std::unique_ptr<Popover> makePopover(std::function<void()> didClose) override;

  // The widget that stands in the window; for tests.
  QWidget& widget() { return m_window.widget(); }

private:
  using Checked = void (SettingsFormDelegate::*)(bool);
  using Tagged = void (SettingsFormDelegate::*)(std::int64_t);
  using Plain = void (SettingsFormDelegate::*)();

  QString localized(std::string_view english) const;
  FormCheckBox* makeCheckBox(const QString& text, Checked clicked);
  FormPopUpButton* makePopUpButton(const std::vector<SettingsChoice>& choices, const QString& name,
                                   Tagged clicked);
  FormButton* makeButton(FormButton::Shape shape, const QString& text, const QString& name, Plain clicked);
  ViewHost* makeHost(HostedView& view);

  void build(SettingsFormContents& contents);
  QLayout* makeHeader(SettingsFormContents& contents);
  QLayout* makeFooter(const SettingsFormContents& contents);
  void addGroup(QVBoxLayout& column, const QString& heading, FormCard& card);
  void addKeys();
  void closePopovers();
  void setTabOrder(const std::vector<QWidget*>& order);

  SettingsFormEnvironment m_environment;
  SettingsFormDelegate& m_delegate;
  QtManagedWindow m_window;

  FormPopUpButton* m_gesturePopUpButton = nullptr;
  FormPopUpButton* m_menuSizePopUpButton = nullptr;
  FormCheckBox* m_magnifyCheckbox = nullptr;
  FormCheckBox* m_showRunningAppsCheckbox = nullptr;
  FormCheckBox* m_startOnLoginCheckbox = nullptr;
  FormCheckBox* m_swiftModeCheckbox = nullptr;
  FormButton* m_helpButton = nullptr;
  FormButton* m_swiftModeInfoButton = nullptr;
  FormButton* m_websiteButton = nullptr;
  FormButton* m_quitButton = nullptr;
  ViewHost* m_closeButton = nullptr;
  ViewHost* m_windowTintButton = nullptr;
  ViewHost* m_shortcutView = nullptr;
};

} // namespace orbel::qt
