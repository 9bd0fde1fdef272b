#include "backends/qt/icons/KeyFile.h"

#include "tests/backends/qt/TestPictures.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

class KeyFileTest : public testing::Test {
protected:
  KeyFile read(const std::string& text) {
    writeText(m_folder.path() / "file", text);
    return KeyFile(QString::fromStdString((m_folder.path() / "file").string()));
  }
  test::TemporaryDirectory m_folder{"orbel-keyfile"};
};

TEST_F(KeyFileTest, ReadsValuesOfTheirGroupWithoutBlanksAndQuotes) {
  const KeyFile file = read(
      "# Theme=comment\nTheme=outside\n[Icons]\n Theme = Breeze \nName=\"Two words\"\n[Other]\nTheme=x\n");
  EXPECT_EQ(file.value("Icons", "Theme"), "Breeze");
  EXPECT_EQ(file.value("Icons", "Name"), "Two words");
  EXPECT_EQ(file.value("Other", "Theme"), "x");
  EXPECT_EQ(file.value("Other", "Name"), QString());
}

TEST_F(KeyFileTest, KeepsGroupsWhoseNamesHaveSlashesApart) {
  const KeyFile file = read("[16x16/apps]\nSize=16\n[16x16@2/apps]\nSize=17\n");
  EXPECT_EQ(file.value("16x16/apps", "Size"), "16");
  EXPECT_EQ(file.value("16x16@2/apps", "Size"), "17");
}

TEST_F(KeyFileTest, SplitsListsAtCommasAndDropsEmptyParts) {
  EXPECT_EQ(read("[A]\nL=one, two,,three,\n").list("A", "L"), (QStringList{"one", "two", "three"}));
}

TEST_F(KeyFileTest, IsEmptyForAMissingFileAndForBytesThatAreNoText) {
  EXPECT_EQ(KeyFile("/nowhere/at-all").value("A", "B"), QString());
  EXPECT_EQ(read(std::string("\0\xff[=\n[\n]\n=x\n[]\n", 14)).value("A", "B"), QString());
}

} // namespace
} // namespace orbel::qt
