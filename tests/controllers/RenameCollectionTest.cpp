#include "tests/controllers/ItemCommandsFixture.h"

namespace orbel {
namespace {

class RenameCollectionTest : public ItemCommandsFixture {
protected:
  void ask() {
    store({storedCollection("Work", {storedCore("Mail")})});
    shown();
    ASSERT_TRUE(choose(0, "Rename Collection"));
  }
};

TEST_F(RenameCollectionTest, AsksWithTheOldNameAsPlaceholderAndSavesTheNewOne) {
  ask();
  ASSERT_TRUE(platform.dialogs.prompt);
  EXPECT_EQ(platform.dialogs.prompt->message, "Rename Collection");
  EXPECT_EQ(platform.dialogs.prompt->button, "Rename");
  EXPECT_EQ(platform.dialogs.owner, &controller().window().surface());
  EXPECT_EQ(platform.dialogs.prompt->placeholder, "Work");
  platform.dialogs.answerPrompt("Arbeit");
  EXPECT_EQ(names(), Names{"Arbeit"});
  EXPECT_EQ(storedNames(), Names{"Arbeit"});
}

TEST_F(RenameCollectionTest, WhileThePromptIsUpNothingHidesTheMenu) {
  ask();
  controller().hideWindow(true, true);
  EXPECT_FALSE(controller().window().isFadingOut());
  EXPECT_FALSE(controller().canClose());
  platform.dialogs.answerPrompt(std::nullopt);
  EXPECT_TRUE(controller().canClose());
  controller().hideWindow(true, true);
  EXPECT_TRUE(controller().window().isFadingOut());
}

TEST_F(RenameCollectionTest, AnEmptyNameAndACancelledPromptChangeNothing) {
  ask();
  platform.dialogs.answerPrompt("");
  EXPECT_EQ(names(), Names{"Work"});
  EXPECT_TRUE(choose(0, "Rename Collection"));
  platform.dialogs.answerPrompt(std::nullopt);
  EXPECT_EQ(names(), Names{"Work"});
  EXPECT_EQ(platform.preferences.writes, 0);
}

TEST_F(RenameCollectionTest, ANameOfTenThousandCharactersIsKeptWhole) {
  ask();
  const std::string name(10000, 'x');
  platform.dialogs.answerPrompt(name);
  EXPECT_EQ(storedNames(), Names{name});
}

TEST_F(RenameCollectionTest, AListLoadedAnewUnderThePromptGetsTheNewNameToo) {
  ask();
  controller().refreshItems();
  platform.dialogs.answerPrompt("Arbeit");
  EXPECT_EQ(names(), Names{"Arbeit"});
  EXPECT_EQ(storedNames(), Names{"Arbeit"});
}

TEST_F(RenameCollectionTest, ACollectionThatWentUnderThePromptIsNotBroughtBackAndNothingElseIsRenamed) {
  ask();
  store({storedCore("Mail"), storedCollection("Play", {})});
  controller().refreshItems();
  platform.dialogs.answerPrompt("Arbeit");
  EXPECT_EQ(names(), (Names{"Mail", "Play"}));
  EXPECT_EQ(platform.preferences.writes, 0);
  EXPECT_TRUE(controller().canClose());
}

TEST_F(RenameCollectionTest, SpacesLineBreaksAndRightToLeftTextAreNamesAsTheyAre) {
  for (const char* name : {"   ", "two\nlines", "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d"}) {
    store({storedCollection("Work", {storedCore("Mail")})});
    shown();
    platform.runLoop.advance(1);
    ASSERT_TRUE(choose(0, "Rename Collection"));
    platform.dialogs.answerPrompt(name);
    EXPECT_EQ(storedNames(), Names{name});
  }
}

} // namespace
} // namespace orbel
