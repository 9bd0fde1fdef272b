#include "model/RunningAppMenuItem.h"

#include "tests/model/ModelFixture.h"

#include <algorithm>

namespace orbel {
namespace {

class RunningAppMenuItemTest : public ModelFixture {
protected:
  // A red icon that counts how often its pixels are made.
  ImagePointer redIcon() {
    return std::make_shared<Image>(Size{48, 48}, [this](int width, int height) {
      ++renderings;
      Bitmap bitmap(width, height);
      std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), 0xFFFF0000u);
      return bitmap;
    });
  }
  std::shared_ptr<FakeRunningApplication> editor() {
    auto application = platform.workspace.launch(9, "Editor", "/share/editor.desktop", "/usr/bin/editor");
    application->iconImage = redIcon();
    return application;
  }
  static std::shared_ptr<RunningAppMenuItem> itemFor(const RunningApplicationPointer& application) {
    return RunningAppMenuItem::withRunningApplication(application);
  }

  int renderings = 0;
};

TEST_F(RunningAppMenuItemTest, IsCalledAsTheProgramAndIdentifiedByItsBundle) {
  const auto item = itemFor(editor());
  EXPECT_EQ(item->name(), "Editor");
  EXPECT_EQ(item->identity(), "RunningAppMenuItem/share/editor.desktop");
}

TEST_F(RunningAppMenuItemTest, ProgramsOfUnknownPathsDoNotShareAnIcon) {
  const auto one = std::make_shared<FakeRunningApplication>(1, "One");
  const auto two = std::make_shared<FakeRunningApplication>(2, "Two");
  one->iconImage = redIcon();
  two->iconImage = redIcon();
  EXPECT_NE(itemFor(one)->identity(), itemFor(two)->identity());
  EXPECT_NE(itemFor(one)->image(), itemFor(two)->image());
}

TEST_F(RunningAppMenuItemTest, IsNeverStored) {
  EXPECT_EQ(itemFor(editor())->dictionaryRepresentation(), std::nullopt);
}

TEST_F(RunningAppMenuItemTest, HasAGreyIconOf320PointsFromItsCreationWithoutAnyPixels) {
  const auto item = itemFor(editor());
  const auto image = item->image();
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (Size{320, 320}));
  EXPECT_EQ(renderings, 0);
  // Luminance of red by Rec. 709: (0.2126 - 0.5) * 1.1 + 0.5 = 0.18386, of 255 and rounded: 47.
  const Bitmap& bitmap = image->representation(64, 64);
  ASSERT_FALSE(bitmap.isEmpty());
  EXPECT_EQ(bitmap.pixels[0], 0xFF2F2F2Fu);
}

TEST_F(RunningAppMenuItemTest, FiltersTheIconOncePerSize) {
  const auto image = itemFor(editor())->image();
  image->representation(64, 64);
  image->representation(64, 64);
  image->representation(30, 30);
  EXPECT_EQ(renderings, 1);
  image->representation(128, 128);
  EXPECT_EQ(renderings, 2);
}

TEST_F(RunningAppMenuItemTest, TwoItemsOfOneBundleShareOneGreyIcon) {
  const auto application = editor();
  const auto image = itemFor(application)->image();
  EXPECT_EQ(itemFor(application)->image(), image);
  EXPECT_EQ(ImageCache::sharedCache().keys(), Strings{"RunningAppMenuItem/share/editor.desktop"});
}

TEST_F(RunningAppMenuItemTest, WithoutAnIconShowsTheWorkspacesIconOfTheBundleInGrey) {
  const auto application = platform.workspace.launch(9, "Editor", "/share/editor.desktop");
  const auto item = itemFor(application);
  ASSERT_TRUE(item->image());
  EXPECT_EQ(item->image()->size(), (Size{320, 320}));
  EXPECT_EQ(platform.workspace.iconsAsked, 1);
}

TEST_F(RunningAppMenuItemTest, WithoutIconAndBundleHasNoImageAndCachesNone) {
  const auto item = itemFor(platform.workspace.launch(9, "Editor"));
  EXPECT_EQ(item->image(), nullptr);
  EXPECT_TRUE(ImageCache::sharedCache().keys().empty());
}

TEST_F(RunningAppMenuItemTest, ItsImageAndItsProgramCanBeReplaced) {
  const auto item = itemFor(editor());
  const auto image = anyImage();
  item->setImage(image);
  EXPECT_EQ(item->image(), image);
  const auto other = std::make_shared<FakeRunningApplication>(10, "Other");
  item->setApp(other);
  EXPECT_EQ(item->app(), other);
  EXPECT_EQ(item->name(), "Other");
}

TEST_F(RunningAppMenuItemTest, RunsAndCanQuitWithoutAskingTheSystem) {
  const auto item = itemFor(std::make_shared<FakeRunningApplication>(1, "Gone"));
  EXPECT_TRUE(item->isRunning());
  EXPECT_TRUE(item->canQuit());
}

TEST_F(RunningAppMenuItemTest, OpensByLaunchingItsExecutable) {
  const auto application = editor();
  itemFor(application)->open();
  EXPECT_EQ(platform.workspace.actions, Strings{"launch /usr/bin/editor"});
  EXPECT_TRUE(application->activations.empty());
}

TEST_F(RunningAppMenuItemTest, ActivatesTheProgramOnlyWhenLaunchingFailed) {
  const auto application = editor();
  platform.workspace.actionsSucceed = false;
  itemFor(application)->open();
  EXPECT_EQ(application->activations, std::vector<ActivationReason>{ActivationReason::userChoice});
  EXPECT_EQ(platform.logged, Strings{"cannot launch /usr/bin/editor"});
}

TEST_F(RunningAppMenuItemTest, LogsADocumentThatCannotBeOpened) {
  platform.workspace.actionsSucceed = false;
  itemFor(editor())->openPath("/x");
  EXPECT_EQ(platform.logged, Strings{"cannot openWith /x | /share/editor.desktop"});
}

TEST_F(RunningAppMenuItemTest, ActivatesItsOwnOneOfTwoProcessesOfAnExecutable) {
  const auto first = editor();
  const auto second = platform.workspace.launch(10, "Editor", "/share/editor.desktop", "/usr/bin/editor");
  itemFor(second)->open();
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_TRUE(first->activations.empty());
  EXPECT_EQ(second->activations, std::vector<ActivationReason>{ActivationReason::userChoice});
  EXPECT_TRUE(platform.logged.empty());
}

TEST_F(RunningAppMenuItemTest, ActivatesTheProgramWhoseExecutableIsUnknown) {
  const auto application = std::make_shared<FakeRunningApplication>(1, "Program");
  itemFor(application)->open();
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_EQ(application->activations, std::vector<ActivationReason>{ActivationReason::userChoice});
}

TEST_F(RunningAppMenuItemTest, OpensDocumentsWithTheBundle) {
  const auto item = itemFor(editor());
  EXPECT_TRUE(item->canOpenPath("/x"));
  item->openPath("/x");
  EXPECT_EQ(platform.workspace.actions, Strings{"openWith /x | /share/editor.desktop"});
}

TEST_F(RunningAppMenuItemTest, OpensNoDocumentWithoutABundle) {
  itemFor(std::make_shared<FakeRunningApplication>(1, "Program"))->openPath("/x");
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_EQ(platform.logged.size(), 1u);
}

TEST_F(RunningAppMenuItemTest, RepresentsTheSameProcessAloneAlsoInAnotherRecord) {
  const auto item = itemFor(editor());
  EXPECT_TRUE(item->representsRunningApplication(FakeRunningApplication(9, "Another record of it")));
  EXPECT_FALSE(item->representsRunningApplication(
      FakeRunningApplication(10, "Editor", "/share/editor.desktop", "/usr/bin/editor")));
}

TEST_F(RunningAppMenuItemTest, QuitsItsOwnProcessThroughTheCompanion) {
  const auto application = editor();
  platform.workspace.launch(10, "Editor", "/share/editor.desktop", "/usr/bin/editor");
  const auto item = itemFor(application);
  item->quit();
  EXPECT_EQ(platform.workspace.actions, Strings{"openUrl orbelmenu-toolkit:terminate/9"});
}

TEST_F(RunningAppMenuItemTest, QuitsNothingOnceTheProgramIsGone) {
  const auto item = itemFor(editor());
  platform.workspace.terminate(9);
  item->quit();
  EXPECT_TRUE(platform.workspace.actions.empty());
}

} // namespace
} // namespace orbel
