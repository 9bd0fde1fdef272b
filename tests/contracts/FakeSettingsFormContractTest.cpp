#include "tests/contracts/SettingsFormContract.h"
#include "tests/doubles/FakeSettingsForm.h"

namespace orbel::contracts {
namespace {

class FakeSettingsFormSubject {
public:
  SettingsFormFactory& forms() { return m_forms; }
  static void click(SettingsForm& form, const std::string& name) {
    FakeSettingsForm& shown = fake(form);
    if (shown.values.contains(name)) {
      shown.click(name, !shown.isOn(name));
    } else {
      shown.press(name);
    }
  }
  static void choose(SettingsForm& form, const std::string& name, std::size_t index) {
    fake(form).choose(name, fake(form).control<SettingsPopUpButton>(name).choices.at(index).tag);
  }
  static bool isOn(SettingsForm& form, const std::string& name) { return fake(form).isOn(name); }
  static std::int64_t selectedTag(SettingsForm& form, const std::string& name) {
    return fake(form).selectedTag(name);
  }
  static bool isVisible(SettingsForm& form, const std::string& name) { return fake(form).visible.at(name); }

private:
  static FakeSettingsForm& fake(SettingsForm& form) { return dynamic_cast<FakeSettingsForm&>(form); }
  FakeSettingsFormFactory m_forms;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeSettingsFormContract, SettingsFormContract, FakeSettingsFormSubject);

} // namespace
} // namespace orbel::contracts
