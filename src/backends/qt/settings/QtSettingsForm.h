// The settings window's form: lays out what the core describes, in groups on the window, and passes on what
// the user does. It knows no setting and has no texts of its own. Made by QtSettingsFormFactory.
#pragma once

#include "backends/qt/settings/FormButton.h"
#include "backends/qt/settings/FormCard.h"
#include "backends/qt/settings/FormCheckBox.h"
#include "backends/qt/settings/FormPopUpButton.h"
#include "backends/qt/settings/QtManagedWindow.h"
#include "backends/qt/settings/ViewHost.h"
#include "platform/SettingsForm.h"

#include <map>
#include <string>

class QVBoxLayout;

namespace orbel::qt {

struct SettingsFormEnvironment {
  DisplayServer& display;
  RunLoop& runLoop;
  // Gives a window the keyboard as the user's own act; may be empty.
  std::function<void(WId)> activate;
};

class QtSettingsForm : public SettingsForm {
public:
  // Everything in the environment outlives the form.
  QtSettingsForm(const SettingsFormEnvironment& environment, const SettingsFormDescription& description);
  ~QtSettingsForm() override;

  ManagedWindow& window() override { return m_window; }
  void setValue(const std::string& identifier, SettingsValue value) override;
  void setVisible(const std::string& identifier, bool visible) override;
  std::unique_ptr<Popover> makePopover(std::function<void()> didClose) override;

  // The widget that stands in the window; for tests.
  QWidget& widget() { return m_window.widget(); }

private:
  // Each kind of control; the identifier is that of the widget from then on.
  QWidget* makeControl(const SettingsControl& control);
  QWidget* make(const SettingsCheckBox& checkBox);
  QWidget* make(const SettingsPopUpButton& popUpButton);
  QWidget* make(const SettingsButton& button);
  QWidget* make(const SettingsText& text);
  QWidget* make(const HostedView& view);

  void build(const SettingsFormDescription& description);
  FormCard* makeCard(const SettingsGroup& group);
  QWidget* makeAccessory(const SettingsRow& row);
  QLayout* makeHeader(const SettingsFormDescription& description);
  QLayout* makeFooter(const SettingsFormDescription& description);
  void addGroup(QVBoxLayout& column, const QString& heading, FormCard& card);
  void addKey(const SettingsKey& key);
  void setTabOrder(const SettingsFormDescription& description);
  void closePopovers();
  // Null where there is none of that identifier.
  QWidget* control(const std::string& identifier) const;

  SettingsFormEnvironment m_environment;
  QtManagedWindow m_window;
  std::map<std::string, QWidget*> m_controls; // by identifier; owned by the window
};

} // namespace orbel::qt
