// Drags from another program over a surface.
#include "tests/backends/qt/surface_DragSource.h"
#include "tests/backends/qt/surface_WindowSystemFixture.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

using Strings = std::vector<std::string>;

class DragsOnDisplay : public WindowSystemFixture {
protected:
  void SetUp() override {
    WindowSystemFixture::SetUp();
    if (!testDisplay()) return;
    surface = makeSurface(delegate, squareAround(500, 400, 400));
    surface->show();
    ASSERT_TRUE(showsOwnWindows(1));
  }
  // Everything that uses the window system is destroyed before it.
  void TearDown() override {
    source.reset();
    surface.reset();
  }
  void startDrag(const std::string& data, const Strings& actions, const std::string& type = "text/uri-list") {
    source = std::make_unique<DragSource>(session().environment().at("DISPLAY"), data, actions, type);
    source->enter(ownWindows().front());
  }
  testing::AssertionResult isAnswered() {
    const int before = source->answerCount();
    source->moveTo({540, 350});
    return becomesTrue([&] { return source->answerCount() > before; }, "the move is answered");
  }

  RecordingDelegate delegate;
  std::unique_ptr<Surface> surface;
  std::unique_ptr<DragSource> source;
};

TEST_F(DragsOnDisplay, FilesAreCarriedToTheDrop) {
  startDrag("file:///etc/hosts\r\nfile:///usr/share/with%20space\r\n", {"XdndActionCopy", "XdndActionMove"});
  ASSERT_TRUE(isAnswered());
  EXPECT_TRUE(source->isWelcome());
  EXPECT_EQ(source->answeredAction(), "XdndActionCopy");
  EXPECT_TRUE(delegate.carriesFiles);
  EXPECT_EQ(delegate.paths, (Strings{"/etc/hosts", "/usr/share/with space"}));
  EXPECT_EQ(delegate.location, (Point{240, 250}));
  source->drop();
  ASSERT_TRUE(becomesTrue([&] { return source->isFinished(); }, "the drop is answered"));
  EXPECT_EQ(delegate.dropped, (Strings{"/etc/hosts", "/usr/share/with space"}));
  EXPECT_EQ(source->finishedAction(), "XdndActionCopy");
  EXPECT_EQ(delegate.count("dropped"), 1);
  EXPECT_EQ(delegate.count("drag exited"), 0);
}

TEST_F(DragsOnDisplay, DraggedTextCarriesNoFiles) {
  delegate.carriesFiles = true;
  startDrag("file:///etc/hosts", {"XdndActionCopy"}, "text/plain");
  ASSERT_TRUE(isAnswered());
  EXPECT_FALSE(delegate.carriesFiles);
}

TEST_F(DragsOnDisplay, ALinkToAnotherMachineCarriesNoFiles) {
  delegate.carriesFiles = true;
  startDrag("https://example.org/\r\n", {"XdndActionCopy"});
  ASSERT_TRUE(isAnswered());
  EXPECT_FALSE(delegate.carriesFiles);
}

TEST_F(DragsOnDisplay, AMoveIsNeverAnswered) {
  delegate.dragAnswer = DragOperation::link;
  startDrag("file:///etc/hosts\r\n", {"XdndActionMove", "XdndActionLink"});
  ASSERT_TRUE(isAnswered());
  EXPECT_EQ(source->answeredAction(), "XdndActionLink");
}

TEST_F(DragsOnDisplay, ADragThatOffersOnlyAMoveIsRefused) {
  startDrag("file:///etc/hosts\r\n", {"XdndActionMove"});
  ASSERT_TRUE(isAnswered());
  EXPECT_FALSE(source->isWelcome());
}

TEST_F(DragsOnDisplay, ARefusedPlaceMayBeFollowedByAWelcomeOne) {
  delegate.dragAnswer = DragOperation::none;
  startDrag("file:///etc/hosts\r\n", {"XdndActionCopy"});
  ASSERT_TRUE(isAnswered());
  EXPECT_FALSE(source->isWelcome());
  delegate.dragAnswer = DragOperation::copy;
  ASSERT_TRUE(isAnswered());
  EXPECT_TRUE(source->isWelcome());
}

TEST_F(DragsOnDisplay, ADragThatLeavesIsForgotten) {
  startDrag("file:///etc/hosts\r\n", {"XdndActionCopy"});
  ASSERT_TRUE(isAnswered());
  source->leave();
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("drag exited") == 1; }, "the leave is reported"));
  EXPECT_EQ(delegate.count("dropped"), 0);
}

TEST_F(DragsOnDisplay, ADropOnARefusedPlaceDropsNothing) {
  delegate.dragAnswer = DragOperation::none;
  startDrag("file:///etc/hosts\r\n", {"XdndActionCopy"});
  ASSERT_TRUE(isAnswered());
  source->drop();
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("drag exited") == 1; }, "the drag is over"));
  EXPECT_EQ(delegate.count("dropped"), 0);
}

} // namespace
} // namespace orbel::qt
