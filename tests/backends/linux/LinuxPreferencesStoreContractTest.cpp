#include "backends/linux/LinuxPreferencesStore.h"

#include "foundation/PropertyListCoder.h"
#include "tests/backends/linux/DesktopSandbox.h"
#include "tests/contracts/PreferencesStoreContract.h"
#include "tests/doubles/ManualRunLoop.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/glib/MainLoop.h"

#include <filesystem>
#include <memory>

namespace orbel::contracts {
using namespace linux;
namespace {

class LinuxPreferencesStoreSubject {
public:
  PreferencesStore& store() {
    if (!m_store) m_store = std::make_unique<linux::LinuxPreferencesStore>(m_file, m_loop);
    return *m_store;
  }
  void changeFromOutside(const PropertyList::Dictionary& values) {
    // What the watch reports of the store's own saves comes first.
    test::iterateWhatIsPending();
    m_loop.advance(1);
    const auto bytes = PropertyListCoder::write(values, PropertyListCoder::Format::xml);
    DesktopSandbox::write(m_file, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    EXPECT_TRUE(test::iterateUntil([this] { return m_loop.pendingDelays() > 0; }))
        << "the watch tells nothing";
    m_loop.advance(linux::LinuxPreferencesStore::kSettleDelay);
  }
  void letAMomentPass() { m_loop.advance(linux::LinuxPreferencesStore::kSaveDelay); }
  PropertyList::Dictionary saved() const { return decoded(m_file); }
  std::optional<PropertyList::Dictionary> datedCopy() const {
    std::optional<PropertyList::Dictionary> newest;
    for (const auto& name : DesktopSandbox::list(m_folder))
      if (name.starts_with("preferences-")) newest = decoded(m_folder + "/" + name);
    return newest;
  }
  // A plain file where the folder should be.
  void setDiskFails(bool fails) {
    std::filesystem::remove_all(m_folder);
    if (fails) DesktopSandbox::write(m_folder, "in the way");
  }

private:
  static PropertyList::Dictionary decoded(const std::string& file) {
    const auto result = PropertyListCoder::read(DesktopSandbox::bytes(DesktopSandbox::read(file)));
    return result && result->dictionary() ? *result->dictionary() : PropertyList::Dictionary{};
  }

  const std::string m_folder = DesktopSandbox::shared().makeFolder() + "/orbelmenu";
  const std::string m_file = m_folder + "/preferences.plist";
  test::LogCapture m_log;
  ManualRunLoop m_loop;
  std::unique_ptr<linux::LinuxPreferencesStore> m_store;
};

INSTANTIATE_TYPED_TEST_SUITE_P(LinuxPreferencesStoreContract, PreferencesStoreContract,
                               LinuxPreferencesStoreSubject);

} // namespace
} // namespace orbel::contracts
