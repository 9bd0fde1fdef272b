#include "tests/contracts/PreferencesStoreContract.h"
#include "tests/doubles/FakePreferences.h"

namespace orbel::contracts {
namespace {

class FakePreferencesSubject {
public:
  PreferencesStore& store() { return m_store; }
  void changeFromOutside(PropertyList::Dictionary values) { m_store.changeFromOutside(std::move(values)); }
  void letAMomentPass() { static_cast<void>(m_store.save()); } // the disk may fail
  PropertyList::Dictionary saved() const { return m_store.saved; }
  std::optional<PropertyList::Dictionary> datedCopy() const { return m_store.datedCopy; }
  void setDiskFails(bool fails) { m_store.savingFails = fails; }

private:
  FakePreferences m_store;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakePreferencesContract, PreferencesStoreContract, FakePreferencesSubject);

} // namespace
} // namespace orbel::contracts
