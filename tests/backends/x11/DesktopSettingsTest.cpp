#include "backends/x11/DesktopSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orbel::x11 {
namespace {

// Writes settings as a settings manager of either byte order does.
class Settings {
public:
  explicit Settings(bool bigEndian = false) : m_bigEndian(bigEndian) {}

  Settings& integer(const std::string& name, std::uint32_t value) {
    head(0, name);
    return number(value, 4);
  }
  Settings& string(const std::string& name, const std::string& value) {
    head(1, name);
    number(static_cast<std::uint32_t>(value.size()), 4);
    return text(value);
  }
  Settings& color(const std::string& name) {
    head(2, name);
    return number(0, 4).number(0, 4);
  }
  Settings& unknown(const std::string& name) {
    head(9, name);
    return *this;
  }

  std::vector<std::uint8_t> bytes() const {
    Settings whole(m_bigEndian);
    whole.number(m_bigEndian ? 1 : 0, 1).number(0, 3).number(7, 4).number(m_count, 4);
    auto result = whole.m_bytes;
    result.insert(result.end(), m_bytes.begin(), m_bytes.end());
    return result;
  }

private:
  void head(std::uint32_t type, const std::string& name) {
    ++m_count;
    number(type, 1).number(0, 1).number(static_cast<std::uint32_t>(name.size()), 2).text(name).number(3, 4);
  }
  Settings& number(std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
      const int place = m_bigEndian ? size - 1 - i : i;
      m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * place)));
    }
    return *this;
  }
  Settings& text(const std::string& value) {
    m_bytes.insert(m_bytes.end(), value.begin(), value.end());
    while (m_bytes.size() % 4 != 0)
      m_bytes.push_back(0);
    return *this;
  }

  bool m_bigEndian;
  std::uint32_t m_count = 0;
  std::vector<std::uint8_t> m_bytes;
};

TEST(DesktopSettingsTest, AnIntegerIsFoundAmongSettingsOfAllKinds) {
  const auto bytes = Settings()
                         .string("Net/ThemeName", "Adwaita")
                         .color("Gtk/Some")
                         .integer("Xft/DPI", 98304)
                         .integer("Gtk/EnableAnimations", 0)
                         .bytes();
  EXPECT_EQ(DesktopSettings::integer(bytes, "Gtk/EnableAnimations"), 0);
  EXPECT_EQ(DesktopSettings::integer(bytes, "Xft/DPI"), 98304);
  EXPECT_EQ(DesktopSettings::integer(bytes, "Net/ThemeName"), std::nullopt);
  EXPECT_EQ(DesktopSettings::integer(bytes, "Gtk/Enable"), std::nullopt);
}

TEST(DesktopSettingsTest, EitherByteOrderIsRead) {
  const auto bytes =
      Settings(true).string("Net/ThemeName", "Clear").integer("Gtk/EnableAnimations", 1).bytes();
  EXPECT_EQ(DesktopSettings::integer(bytes, "Gtk/EnableAnimations"), 1);
}

TEST(DesktopSettingsTest, NegativeNumbersKeepTheirSign) {
  const auto bytes = Settings().integer("Gtk/CursorThemeSize", 0xffffffff).bytes();
  EXPECT_EQ(DesktopSettings::integer(bytes, "Gtk/CursorThemeSize"), -1);
}

TEST(DesktopSettingsTest, BytesThatEndEarlyHoldNothing) {
  const auto bytes = Settings().string("Net/ThemeName", "Adwaita").integer("Gtk/EnableAnimations", 0).bytes();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(DesktopSettings::integer({bytes.data(), length}, "Gtk/EnableAnimations"), std::nullopt)
        << length;
  }
}

TEST(DesktopSettingsTest, NothingBehindASettingOfUnknownKindIsGuessed) {
  const auto bytes = Settings().unknown("Future/Setting").integer("Gtk/EnableAnimations", 0).bytes();
  EXPECT_EQ(DesktopSettings::integer(bytes, "Gtk/EnableAnimations"), std::nullopt);
}

TEST(DesktopSettingsTest, AHugeCountEnds) {
  auto bytes = Settings().integer("Xft/DPI", 1).bytes();
  for (std::size_t i = 8; i < 12; ++i)
    bytes[i] = 0xff;
  EXPECT_EQ(DesktopSettings::integer(bytes, "Gtk/EnableAnimations"), std::nullopt);
}

TEST(DesktopSettingsTest, ATextIsFoundByItsNameAndNothingElseIsOne) {
  for (const bool bigEndian : {false, true}) {
    const auto bytes = Settings(bigEndian)
                           .color("Colour")
                           .integer("Number", 5)
                           .string("Net/ThemeName", "Adwaita-dark")
                           .bytes();
    EXPECT_EQ(DesktopSettings::text(bytes, "Net/ThemeName"), "Adwaita-dark");
    EXPECT_EQ(DesktopSettings::text(bytes, "Number"), std::nullopt);
    EXPECT_EQ(DesktopSettings::text(bytes, "Colour"), std::nullopt);
    EXPECT_EQ(DesktopSettings::text(bytes, "Missing"), std::nullopt);
    EXPECT_EQ(DesktopSettings::integer(bytes, "Net/ThemeName"), std::nullopt);
  }
}

TEST(DesktopSettingsTest, ATextThatEndsTooEarlyIsNone) {
  auto bytes = Settings().string("Net/ThemeName", "Adwaita-dark").bytes();
  bytes.erase(bytes.end() - 4, bytes.end());
  EXPECT_EQ(DesktopSettings::text(bytes, "Net/ThemeName"), std::nullopt);
}

} // namespace
} // namespace orbel::x11
