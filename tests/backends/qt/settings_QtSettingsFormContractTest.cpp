// The settings form's contract, without a display.
#include "backends/qt/settings/QtSettingsFormFactory.h"
#include "backends/qt/windows/PlainDisplayServer.h"
#include "tests/contracts/SettingsFormContract.h"
#include "tests/doubles/ManualRunLoop.h"

#include <QTest>

#include <stdexcept>

namespace orbel::contracts {
namespace {

class QtSettingsFormSubject {
public:
  SettingsFormFactory& forms() { return m_forms; }
  static void click(SettingsForm& form, const std::string& name) {
    QTest::mouseClick(&find<QAbstractButton>(form, name), Qt::LeftButton);
  }
  static void choose(SettingsForm& form, const std::string& name, std::size_t index) {
    auto& button = find<qt::FormPopUpButton>(form, name);
    while (button.currentIndex() < static_cast<int>(index))
      QTest::keyClick(&button, Qt::Key_Down);
  }
  static bool isOn(SettingsForm& form, const std::string& name) {
    return find<QAbstractButton>(form, name).isChecked();
  }
  static std::int64_t selectedTag(SettingsForm& form, const std::string& name) {
    return find<qt::FormPopUpButton>(form, name).selectedTag();
  }
  static bool isVisible(SettingsForm& form, const std::string& name) {
    return find<QAbstractButton>(form, name).isVisible();
  }

private:
  template <class Widget>
  static Widget& find(SettingsForm& form, const std::string& name) {
    const QString wanted = QString::fromStdString(name);
    for (auto* candidate : dynamic_cast<qt::QtSettingsForm&>(form).widget().findChildren<Widget*>()) {
      if (candidate->accessibleName() == wanted) return *candidate;
      if constexpr (requires { candidate->text(); }) {
        if (candidate->text() == wanted) return *candidate;
      }
    }
    throw std::runtime_error("there is no control " + name);
  }
  qt::PlainDisplayServer m_display;
  ManualRunLoop m_runLoop;
  qt::QtSettingsFormFactory m_forms{{.display = m_display, .runLoop = m_runLoop, .activate = {}}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtSettingsFormContract, SettingsFormContract, QtSettingsFormSubject);

} // namespace
} // namespace orbel::contracts
