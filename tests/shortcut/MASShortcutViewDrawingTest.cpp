// What the recorder shows in each of its states.
#include "scene/ViewTree.h"
#include "shortcut/MASShortcutView.h"
#include "tests/doubles/FakeKeyRecorder.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orbel {
namespace {

const MASShortcut kShortcut(kSpaceKeyCode, kOptionFlag | kCommandFlag);

// Remembers each cell that was drawn: its rectangle, title, alignment and state.
class CellCanvas : public RecordingCanvas {
public:
  struct Cell {
    Rect rect;
    Color fill;
    std::string title;
    TextStyle style;
  };
  void drawText(const std::string& text, const Rect& rect, const TextStyle& style) override {
    RecordingCanvas::drawText(text, rect, style);
    const Call& bezel = calls[calls.size() - 3];
    const Call& border = calls[calls.size() - 2];
    cells.push_back(
        {border.rect.insetBy(-border.lineWidth / 2, -border.lineWidth / 2), bezel.color, text, style});
  }
  std::vector<Cell> cells;
};

class MASShortcutViewDrawingTest : public testing::Test {
protected:
  std::vector<CellCanvas::Cell> drawn() {
    CellCanvas canvas;
    m_view->draw(canvas);
    EXPECT_EQ(canvas.calls.size(), canvas.cells.size() * 3);
    for (const auto& cell : canvas.cells)
      EXPECT_EQ(cell.style.pointSize, 11);
    return canvas.cells;
  }
  static Color fillOf(ButtonState state) {
    RecordingCanvas canvas;
    ShortcutCell().drawInRect(canvas, {0, 0, 10, 10}, "", TextAlignment::center, state);
    return canvas.calls[0].color;
  }
  void expectGlyph(const CellCanvas::Cell& cell, const char* glyph) {
    EXPECT_EQ(cell.title, glyph);
    EXPECT_EQ(cell.rect, m_view->bounds());
    EXPECT_EQ(cell.style.alignment, TextAlignment::right);
    EXPECT_EQ(cell.fill, fillOf(ButtonState::off));
  }
  void expectTitle(const CellCanvas::Cell& cell, const std::string& title, ButtonState state) {
    EXPECT_EQ(cell.title, title);
    EXPECT_EQ(cell.rect, m_view->shortcutArea());
    EXPECT_EQ(cell.style.alignment, TextAlignment::center);
    EXPECT_EQ(cell.fill, fillOf(state));
  }

  FakePlatform m_platform;
  FakeKeyRecorder m_keys;
  std::shared_ptr<MASShortcutView> m_view = std::make_shared<MASShortcutView>(Rect(0, 0, 160, 24), m_keys);
};

TEST_F(MASShortcutViewDrawingTest, AShownShortcutStandsBesideTheGlyphThatDeletesIt) {
  m_view->setShortcutValue(kShortcut);
  const auto cells = drawn();
  ASSERT_EQ(cells.size(), 2u);
  expectGlyph(cells[0], "\u232B");
  expectTitle(cells[1], "\u2325\u2318Space", ButtonState::off);
}

TEST_F(MASShortcutViewDrawingTest, RecordingOverAShortcutAsksForANewOne) {
  m_view->setShortcutValue(kShortcut);
  m_view->setRecording(true);
  auto cells = drawn();
  ASSERT_EQ(cells.size(), 2u);
  expectGlyph(cells[0], "\u238B");
  expectTitle(cells[1], "Type New Shortcut", ButtonState::on);
  m_view->setShortcutPlaceholder("\u2303");
  expectTitle(drawn()[1], "\u2303", ButtonState::on);
  m_view->setHinting(true);
  cells = drawn();
  expectGlyph(cells[0], "\u238B");
  expectTitle(cells[1], "Use Old Shortcut", ButtonState::on);
}

TEST_F(MASShortcutViewDrawingTest, RecordingTheFirstShortcutAsksForOne) {
  m_view->setRecording(true);
  const auto cells = drawn();
  ASSERT_EQ(cells.size(), 2u);
  expectGlyph(cells[0], "\u238B");
  expectTitle(cells[1], "Type Shortcut", ButtonState::on);
  m_view->setShortcutPlaceholder("\u2303");
  expectTitle(drawn()[1], "\u2303", ButtonState::on);
  m_view->setHinting(true);
  expectTitle(drawn()[1], "Cancel", ButtonState::on);
}

TEST_F(MASShortcutViewDrawingTest, AnEmptyViewOffersToRecordOverItsWholeBounds) {
  const auto cells = drawn();
  ASSERT_EQ(cells.size(), 1u);
  EXPECT_EQ(cells[0].title, "Record Shortcut");
  EXPECT_EQ(cells[0].rect, m_view->bounds());
  EXPECT_EQ(cells[0].style.alignment, TextAlignment::center);
  EXPECT_EQ(cells[0].fill, fillOf(ButtonState::off));
}

TEST_F(MASShortcutViewDrawingTest, HintingShowsNothingWhileNotRecording) {
  m_view->setShortcutValue(kShortcut);
  m_view->setHinting(true);
  expectTitle(drawn()[1], "\u2325\u2318Space", ButtonState::off);
}

TEST_F(MASShortcutViewDrawingTest, AllTextsAreInTheUsersLanguage) {
  m_platform.text.translations = {
      {"Record Shortcut", "R"},     {"Type Shortcut", "T"}, {"Type New Shortcut", "N"},
      {"Use Old Shortcut", "O"},    {"Cancel", "C"},        {"Click to record new shortcut", "click"},
      {"Delete shortcut", "delete"}};
  EXPECT_EQ(drawn()[0].title, "R");
  m_view->setRecording(true);
  EXPECT_EQ(drawn()[1].title, "T");
  m_view->setHinting(true);
  EXPECT_EQ(drawn()[1].title, "C");
  m_view->setShortcutValue(kShortcut);
  EXPECT_EQ(drawn()[1].title, "O");
  m_view->setHinting(false);
  EXPECT_EQ(drawn()[1].title, "N");
  m_view->setRecording(false);
  EXPECT_EQ(m_view->toolTips()[0].text, "click");
  EXPECT_EQ(m_view->toolTips()[1].text, "delete");
}

// Damage reaches the window through the tree.
struct Host : ViewTreeHost {
  void needsDisplay(const Rect& rect) override { damage = damage.unitedWith(rect); }
  std::optional<Point> pointerLocationInWindow() const override { return std::nullopt; }
  double backingScale() const override { return 1; }
  Rect screenFrame() const override { return {0, 0, 400, 300}; }
  Rect damage;
};

TEST_F(MASShortcutViewDrawingTest, EveryChangeOfWhatIsShownRedrawsTheView) {
  Host host;
  ViewTree tree(host, m_platform.runLoop, false);
  m_view->setFrame({50, 40, 160, 24});
  tree.contentView().addSubview(m_view);
  const std::vector<std::pair<const char*, std::function<void()>>> changes = {
      {"shortcut", [&] { m_view->setShortcutValue(kShortcut); }},
      {"recording", [&] { m_view->setRecording(true); }},
      {"placeholder", [&] { m_view->setShortcutPlaceholder("\u2303"); }},
      {"hinting", [&] { m_view->setHinting(true); }},
      {"no hinting", [&] { m_view->setHinting(false); }},
      {"no recording", [&] { m_view->setRecording(false); }},
      {"appearance", [&] { m_view->setAppearance(2); }},
      {"disabled", [&] { m_view->setEnabled(false); }},
  };
  for (const auto& [name, change] : changes) {
    host.damage = {};
    change();
    EXPECT_EQ(host.damage, m_view->frame()) << name;
  }
  host.damage = {};
  m_view->setEnabled(false);
  m_view->setHinting(false);
  m_view->setAppearance(2);
  m_view->setRecording(false);
  EXPECT_TRUE(host.damage.isEmpty()) << "what stays as it is is not drawn again";
}

TEST_F(MASShortcutViewDrawingTest, ThePointerIsWatchedOverTheHintAreaOfItsWindow) {
  Host host;
  ViewTree tree(host, m_platform.runLoop, false);
  m_view->setFrame({50, 40, 160, 24});
  tree.contentView().addSubview(m_view);
  tree.pointerMoved({{100, 50}});
  EXPECT_FALSE(m_view->isHinting());
  tree.pointerMoved({{200, 50}});
  EXPECT_TRUE(m_view->isHinting());
  tree.pointerMoved({{215, 50}});
  EXPECT_FALSE(m_view->isHinting());
}

} // namespace
} // namespace orbel
