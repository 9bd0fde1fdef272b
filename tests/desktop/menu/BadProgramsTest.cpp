// Items whose desktop entry, program or icon is not what it should be.
#include "tests/desktop/menu/MenuFixture.h"

#include "tests/support/base/TextFile.h"

#include <algorithm>
#include <array>

using namespace orbel::test;

namespace {

constexpr ScreenPoint kPlace{640, 500};
constexpr Rgb kOrange{230, 120, 20};

std::string chunk(const std::string& nameAndData) {
  const auto number = [](std::uint32_t value) {
    return std::string{static_cast<char>(value >> 24), static_cast<char>(value >> 16),
                       static_cast<char>(value >> 8), static_cast<char>(value)};
  };
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char letter : nameAndData) {
    sum ^= static_cast<unsigned char>(letter);
    for (int bit = 0; bit < 8; ++bit)
      sum = (sum >> 1) ^ ((sum & 1) ? 0xEDB88320 : 0);
  }
  return number(static_cast<std::uint32_t>(nameAndData.size() - 4)) + nameAndData + number(~sum);
}

// A sound header that announces 65,000 by 65,000 pixels: 16 gigabytes once they are unpacked.
std::string enormousPng() {
  using namespace std::string_literals;
  return "\x89PNG\r\n\x1a\n"s + chunk("IHDR\x00\x00\xFD\xE8\x00\x00\xFD\xE8\x08\x06\x00\x00\x00"s) +
         chunk("IDAT\x78\x9c\x03\x00\x00\x00\x00\x01"s) + chunk("IEND"s);
}

long peakMemoryInMegabytes(pid_t process) {
  for (const std::string& line : readLines("/proc/" + std::to_string(process) + "/status")) {
    if (line.starts_with("VmHWM:")) return std::stol(line.substr(6)) / 1024;
  }
  return -1;
}

class BadProgramsTest : public MenuFixture {
protected:
  // Clicks the first of two items and expects a line in the log and a menu that works on.
  void expectClickToLog(const std::string& text) {
    ASSERT_TRUE(summonAt(kPlace));
    clickItem(0, 2);
    EXPECT_TRUE(waitForLog(text));
    ASSERT_TRUE(waitUntilMenuHidden());
    ASSERT_TRUE(summonAt(kPlace));
  }
};

TEST_F(BadProgramsTest, AnEntryWithoutExecIsReportedOnAClick) {
  const auto entry =
      m_session.entries().installText("empty", "[Desktop Entry]\nType=Application\nName=Empty\n");
  startAgent({StoredItem::application("Empty", entry.string()), StoredItem::core("Mail")});
  expectClickToLog(entry.string());
}

TEST_F(BadProgramsTest, AMissingProgramIsReportedOnAClick) {
  const auto entry =
      m_session.entries().install({.id = "gone", .name = "Gone", .command = {"/nowhere/program"}});
  startAgent({StoredItem::application("Gone", entry.string()), StoredItem::core("Mail")});
  expectClickToLog("/nowhere/program");
}

TEST_F(BadProgramsTest, AnEntryThatVanishesWhileTheMenuIsOpenIsReportedAndDroppedAfterACopyIsKept) {
  const InstalledProgram letters = installProgram("letters", {.title = "Letters"}, kOrange);
  startAgent({letters.item(), StoredItem::core("Mail")});
  const std::string before = m_session.preferences().bytes();
  ASSERT_TRUE(summonAt(kPlace));
  m_session.entries().remove("letters");
  clickItem(0, 2);
  EXPECT_TRUE(waitForLog(letters.entry.string()));
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_EQ(letters.startCount(), 0);
  EXPECT_EQ(m_session.preferences().bytes(), before);

  // The next time the item cannot be found any more.
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(
      waitFor([&] { return m_session.preferences().menuItems() == std::vector{StoredItem::core("Mail")}; },
              "the list is rewritten"));
  const auto copies = filesBeside(m_session.preferences().path(), "preferences-");
  ASSERT_EQ(copies.size(), 1U);
  EXPECT_EQ(readFile(copies.front()), before);
}

TEST_F(BadProgramsTest, ABuiltInNameThatNothingPlaysIsReportedOnAClick) {
  startAgent({StoredItem::core("iTunes"), StoredItem::core("Mail")});
  expectClickToLog("there is no application iTunes");
}

TEST_F(BadProgramsTest, AFileThatNothingOpensIsReportedOnAClick) {
  const auto letter = m_session.home() / "letter.txt";
  writeFile(letter, "Dear reader,\n");
  startAgent({StoredItem::file("letter.txt", letter.string()), StoredItem::core("Mail")});
  expectClickToLog("no application opens " + letter.string());
}

TEST_F(BadProgramsTest, BrokenAndEnormousIconsCostNeitherTheMenuNorItsMemory) {
  using std::filesystem::path;
  const path home = m_session.home();
  const InstalledProgram good = installProgram("good", {.title = "Good"}, kOrange);
  writeFile(home / "broken.png", "\x89PNG\r\n\x1a\nnonsense");
  writeFile(home / "pixels.png", enormousPng());
  writeFile(home / "vector.svg",
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9000000\" height=\"9000000\">"
            "<rect width=\"9000000\" height=\"9000000\"/></svg>");
  writeFile(home / "bytes.png", "\x89PNG");
  std::filesystem::resize_file(home / "bytes.png", std::uintmax_t{8} << 30); // takes no room: it is one hole
  std::vector<StoredItem> items;
  for (const char* icon : {"broken.png", "pixels.png", "vector.svg", "bytes.png", "missing.png"}) {
    const std::string id = path(icon).stem().string();
    const auto entry = m_session.entries().install(
        {.id = id, .name = id, .command = {good.executable.string()}, .icon = (home / icon).string()});
    items.push_back(StoredItem::application(id, entry.string()));
  }
  items.push_back(good.item());
  const int count = static_cast<int>(items.size());
  startAgent(items);
  ASSERT_TRUE(summonAt(kPlace));
  const auto menu = menuFrame().value();
  EXPECT_TRUE(waitFor([&] { return hasColor(itemCenter(menu, count - 1, count), kOrange); },
                      "the good icon is seen"));
  savePicture("bad icons");
  for (const char* name : {"broken.png", "pixels.png", "bytes.png"})
    EXPECT_TRUE(waitForLog(name));
  EXPECT_LT(peakMemoryInMegabytes(agent().pid()), 400);
}

} // namespace
