#include "foundation/KeyedArchive.h"

#include "foundation/PropertyListCoder.h"
#include "tests/foundation/ListBytes.h"
#include "tests/foundation/RandomPropertyList.h"

#include <gtest/gtest.h>

#include <limits>

namespace orbel {
namespace {

using Dictionary = PropertyList::Dictionary;
using List = PropertyList::List;

PropertyList uid(std::int64_t number) {
  return Dictionary{{"CF$UID", number}};
}

class KeyedArchiveTest : public testing::Test {
protected:
  // The object in the archive; none in an archive of nothing.
  static std::optional<KeyedArchive::Object> objectIn(const PropertyList::Data& data) {
    const auto object = KeyedArchive::unarchive(data);
    EXPECT_TRUE(object) << object.cause();
    return object ? *object : std::nullopt;
  }
  static PropertyList::Data binary(const PropertyList& value) {
    return PropertyListCoder::write(value, PropertyListCoder::Format::binary);
  }
  // An archive of a shortcut, one of whose parts may be replaced.
  static Dictionary shortcutArchive() {
    return {{"$archiver", "NSKeyedArchiver"},
            {"$version", 100000},
            {"$top", Dictionary{{"root", uid(1)}}},
            {"$objects",
             List{"$null", Dictionary{{"$class", uid(2)}, {"KeyCode", 31}, {"ModifierFlags", 1179648}},
                  Dictionary{{"$classname", "MASShortcut"}, {"$classes", List{"MASShortcut", "NSObject"}}}}}};
  }
  static void expectRefused(const PropertyList::Data& data, const std::string& cause) {
    EXPECT_EQ(KeyedArchive::unarchive(data).cause(), "a stored archive cannot be read: " + cause);
  }
  static void expectRefused(const std::string& part, const PropertyList& replacement,
                            const std::string& cause) {
    Dictionary archive = shortcutArchive();
    archive.insert_or_assign(part, replacement);
    expectRefused(binary(archive), cause);
  }

  const KeyedArchive::Object shortcut = {"MASShortcut", {{"KeyCode", 31}, {"ModifierFlags", 1179648}}};
};

// As Python's plistlib writes the archive, in other order and with other sizes of fields than ours.
constexpr const char* kArchiveOfPlistlib = "62706c6973743030d401020304050615185924617263686976657258246f626a6"
                                           "56374735424746f70582476657273696f6e5f100f4e534b"
                                           "657965644172636869766572a307080f55246e756c6cd3090a0b0c0d0e5624636"
                                           "c617373574b6579436f64655d4d6f646966696572466c61"
                                           "67738002101f1200120000d2101112135824636c61737365735a24636c6173736"
                                           "e616d65a213145b4d415353686f7274637574584e534f62"
                                           "6a656374d1161754726f6f74800112000186a008111b24293244484e555c64727"
                                           "4767b80899497a3acafb4b6000000000000010100000000"
                                           "00000019000000000000000000000000000000bb";

TEST_F(KeyedArchiveTest, ReadsAnArchiveThatAnotherProgramWrote) {
  EXPECT_EQ(objectIn(bytesOfHex(kArchiveOfPlistlib)), shortcut);
}

// Python's plistlib was seen to read exactly these bytes as an archive with UIDs.
TEST_F(KeyedArchiveTest, WritesABinaryListWithReferences) {
  EXPECT_EQ(
      KeyedArchive::archive(shortcut),
      bytesOfHex(
          "62706c6973743030d40103131702041418592461726368697665725f100f4e534b65796564417263686976657258246f"
          "626a65637473a305060d55246e756c6cd307090b080a0c5624636c6173738002574b6579436f6465101f5d4d6f6469"
          "66696572466c6167731200120000d20e120f105824636c6173736573a210115b4d415353686f7274637574584e534f"
          "626a6563745a24636c6173736e616d655424746f70d1151654726f6f748001582476657273696f6e12000186a00811"
          "1b2d363a40474e50585a686d727b7e8a939ea3a6abadb600000000000001010000000000000019000000000000000000"
          "000000000000bb"));
}

TEST_F(KeyedArchiveTest, HasTheShapeOfAnArchive) {
  const auto result = PropertyListCoder::read(KeyedArchive::archive(shortcut));
  ASSERT_TRUE(result);
  EXPECT_EQ(*result, PropertyList(shortcutArchive()));
}

TEST_F(KeyedArchiveTest, KeepsNegativeAndLargeFields) {
  const KeyedArchive::Object object = {"MASShortcut",
                                       {{"KeyCode", -1},
                                        {"ModifierFlags", std::numeric_limits<std::int64_t>::max()},
                                        {"Least", std::numeric_limits<std::int64_t>::min()}}};
  EXPECT_EQ(objectIn(KeyedArchive::archive(object)), object);
}

TEST_F(KeyedArchiveTest, KeepsAnObjectWithoutFields) {
  const KeyedArchive::Object object = {"Empty", {}};
  EXPECT_EQ(objectIn(KeyedArchive::archive(object)), object);
}

TEST_F(KeyedArchiveTest, KeepsWhateverFieldsAreMadeByChance) {
  RandomPropertyList random(31);
  for (int count = 0; count < 300; ++count) {
    KeyedArchive::Object object = {"Class" + std::to_string(count), {}};
    for (std::size_t fields = random.below(6); fields > 0; --fields) {
      object.fields["Field" + std::to_string(fields)] =
          static_cast<std::int64_t>(random.below(1u << 31)) - (1 << 30);
    }
    ASSERT_EQ(objectIn(KeyedArchive::archive(object)), object);
  }
}

TEST_F(KeyedArchiveTest, AnArchiveOfNothingReadsAsNothingAndIsNoFailure) {
  EXPECT_FALSE(objectIn(KeyedArchive::archive(std::nullopt)));
  // As Python's plistlib writes it.
  EXPECT_FALSE(objectIn(bytesOfHex(
      "62706c6973743030d4010203040506080b5924617263686976657258246f626a656374735424746f70582476657273696f6e5f"
      "100f4e534b657965644172636869766572a10755246e756c6cd1090a54726f6f74800012000186a008111b24293244464c4f"
      "54560000000000000101000000000000000c0000000000000000000000000000005b")));
}

TEST_F(KeyedArchiveTest, ReadsTheXmlFormWhereReferencesAreDictionaries) {
  const auto xml = PropertyListCoder::write(shortcutArchive(), PropertyListCoder::Format::xml);
  EXPECT_EQ(objectIn(xml), shortcut);
}

TEST_F(KeyedArchiveTest, ReadsAFieldThatIsArchivedAsAnObject) {
  Dictionary archive = shortcutArchive();
  archive.insert_or_assign(
      "$objects",
      List{"$null", Dictionary{{"$class", uid(2)}, {"KeyCode", uid(3)}, {"ModifierFlags", 1179648}},
           Dictionary{{"$classname", "MASShortcut"}}, 31});
  EXPECT_EQ(objectIn(binary(archive)), shortcut);
}

TEST_F(KeyedArchiveTest, LeavesOutFieldsThatAreNoIntegers) {
  Dictionary archive = shortcutArchive();
  archive.insert_or_assign("$objects", List{"$null",
                                            Dictionary{{"$class", uid(2)},
                                                       {"KeyCode", "31"},
                                                       {"ModifierFlags", 1.5},
                                                       {"Label", uid(2)},
                                                       {"Far", uid(99)},
                                                       {"Number", 7}},
                                            Dictionary{{"$classname", "MASShortcut"}}});
  EXPECT_EQ(objectIn(binary(archive)), (KeyedArchive::Object{"MASShortcut", {{"Number", 7}}}));
}

TEST_F(KeyedArchiveTest, RefusesBytesThatAreNoPropertyList) {
  expectRefused({}, "there is nothing in it");
  expectRefused(bytesOfText("hello"), "it is no property list");
  const auto whole = KeyedArchive::archive(shortcut);
  for (std::size_t length = 1; length < whole.size(); ++length) {
    EXPECT_FALSE(
        KeyedArchive::unarchive({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}));
  }
}

TEST_F(KeyedArchiveTest, RefusesAPropertyListThatIsNoArchive) {
  expectRefused(binary("text"), "it is no keyed archive");
  expectRefused(binary(Dictionary{}), "it is no keyed archive");
  expectRefused("$archiver", "OtherArchiver", "it is no keyed archive");
  expectRefused("$archiver", 1, "it is no keyed archive");
  expectRefused("$objects", "text", "it has no list of objects");
}

TEST_F(KeyedArchiveTest, RefusesARootThatLeadsNowhere) {
  for (const std::int64_t number :
       {std::int64_t{3}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::max()}) {
    expectRefused("$top", Dictionary{{"root", uid(number)}}, "its root leads to no object");
  }
  expectRefused("$top", Dictionary{{"root", 1}}, "its root leads to no object");
  expectRefused("$top", Dictionary{}, "its root leads to no object");
  expectRefused("$top", List{}, "its root leads to no object");
  expectRefused("$objects", List{}, "its root leads to no object");
}

TEST_F(KeyedArchiveTest, RefusesARootWithoutAClass) {
  const std::string cause = "its root is no object of a named class";
  expectRefused("$objects", List{"$null", "text"}, cause);
  expectRefused("$objects", List{"$null", Dictionary{{"KeyCode", 31}}}, cause);
  expectRefused("$objects", List{"$null", Dictionary{{"$class", uid(1)}, {"KeyCode", 31}}}, cause);
  expectRefused("$objects", List{"$null", Dictionary{{"$class", uid(2)}}, Dictionary{{"$classname", 5}}},
                cause);
}

} // namespace
} // namespace orbel
