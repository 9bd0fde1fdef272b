// What every Dialogs keeps to.
//
// Subject: the dialogs of a program, and a user. Each action is taken on the dialog in front and returns when
// all that comes of it has come.
//   Dialogs& dialogs();
//   const Surface* owner();                      a surface on the screen
//   bool isAnyOpen();
//   void answerPrompt(const std::string& text);  types it and presses the button
//   void cancelPrompt();
//   void closeAlert();
//   std::string file(const std::string& name);   a file of that name that is there, in a folder of the
//                                                subject's own
//   bool choose(const std::string& path);        in the open panel; whether that was possible; if not, the
//                                                panel stays
//   void cancelPanel();
#pragma once

#include "platform/Dialogs.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class DialogsContract : public testing::Test {
protected:
  using Answer = std::optional<std::string>;
  void prompt(const std::string& message = "Name") {
    subject.dialogs().runTextPrompt({message, "OK", ""}, subject.owner(),
                                    [this](Answer answer) { answers.push_back(answer); });
  }
  void openPanel(const std::string& startPath,
                 std::function<bool(const std::string&)> shouldEnable = nullptr) {
    subject.dialogs().runOpenPanel({"Title", "Message", "Choose", startPath, std::move(shouldEnable)},
                                   subject.owner(), [this](Answer answer) { answers.push_back(answer); });
  }
  Subject subject;
  std::vector<Answer> answers;
};

TYPED_TEST_SUITE_P(DialogsContract);

TYPED_TEST_P(DialogsContract, APromptReturnsAtOnceAndAnswersItsTextOnce) {
  this->prompt();
  EXPECT_TRUE(this->answers.empty());
  EXPECT_TRUE(this->subject.isAnyOpen());
  this->subject.answerPrompt("Work");
  EXPECT_EQ(this->answers, (std::vector<std::optional<std::string>>{"Work"}));
  EXPECT_FALSE(this->subject.isAnyOpen());
}

TYPED_TEST_P(DialogsContract, AnEmptyTextIsAnAnswerAndACancelledPromptIsNone) {
  this->prompt();
  this->subject.answerPrompt("");
  this->prompt();
  this->subject.cancelPrompt();
  EXPECT_EQ(this->answers, (std::vector<std::optional<std::string>>{"", std::nullopt}));
  EXPECT_FALSE(this->subject.isAnyOpen());
}

TYPED_TEST_P(DialogsContract, AnAlertTellsOnceThatItWasClosed) {
  int closed = 0;
  this->subject.dialogs().runAlert({"Message", "Explanation", "OK", false}, nullptr, [&] { ++closed; });
  EXPECT_EQ(closed, 0);
  EXPECT_TRUE(this->subject.isAnyOpen());
  this->subject.closeAlert();
  EXPECT_EQ(closed, 1);
  EXPECT_FALSE(this->subject.isAnyOpen());
}

TYPED_TEST_P(DialogsContract, ThePanelAnswersTheChosenPathOrNothing) {
  const std::string file = this->subject.file("chosen.txt");
  this->openPanel(file);
  EXPECT_TRUE(this->answers.empty());
  EXPECT_TRUE(this->subject.choose(file));
  this->openPanel(file);
  this->subject.cancelPanel();
  EXPECT_EQ(this->answers, (std::vector<std::optional<std::string>>{file, std::nullopt}));
  EXPECT_FALSE(this->subject.isAnyOpen());
}

TYPED_TEST_P(DialogsContract, AFileThatIsNotEnabledCannotBeChosen) {
  const std::string enabled = this->subject.file("enabled.txt");
  const std::string disabled = this->subject.file("disabled.txt");
  this->openPanel(enabled, [disabled](const std::string& path) { return path != disabled; });
  EXPECT_FALSE(this->subject.choose(disabled));
  EXPECT_TRUE(this->subject.isAnyOpen());
  EXPECT_TRUE(this->answers.empty());
  EXPECT_TRUE(this->subject.choose(enabled));
  EXPECT_EQ(this->answers, (std::vector<std::optional<std::string>>{enabled}));
}

TYPED_TEST_P(DialogsContract, AnAnswerMayAskTheNextQuestion) {
  this->subject.dialogs().runTextPrompt({"First", "OK", ""}, this->subject.owner(),
                                        [this](std::optional<std::string> answer) {
                                          this->answers.push_back(answer);
                                          this->prompt("Second");
                                        });
  this->subject.answerPrompt("one");
  EXPECT_TRUE(this->subject.isAnyOpen());
  this->subject.answerPrompt("two");
  EXPECT_EQ(this->answers, (std::vector<std::optional<std::string>>{"one", "two"}));
  EXPECT_FALSE(this->subject.isAnyOpen());
}

TYPED_TEST_P(DialogsContract, ADialogThatComesWhileAnotherIsUpIsAnsweredFirstAndNoAnswerIsLost) {
  this->prompt("First");
  this->prompt("Second");
  this->subject.answerPrompt("second");
  EXPECT_TRUE(this->subject.isAnyOpen());
  this->subject.answerPrompt("first");
  EXPECT_EQ(this->answers, (std::vector<std::optional<std::string>>{"second", "first"}));
}

TYPED_TEST_P(DialogsContract, NobodyNeedsToWaitForTheAnswer) {
  this->subject.dialogs().runAlert({"Message", "", "OK", true}, this->subject.owner(), nullptr);
  this->subject.closeAlert();
  this->subject.dialogs().runTextPrompt({"Name", "OK", ""}, nullptr, nullptr);
  this->subject.answerPrompt("text");
  EXPECT_FALSE(this->subject.isAnyOpen());
}

REGISTER_TYPED_TEST_SUITE_P(DialogsContract, APromptReturnsAtOnceAndAnswersItsTextOnce,
                            AnEmptyTextIsAnAnswerAndACancelledPromptIsNone, AnAlertTellsOnceThatItWasClosed,
                            ThePanelAnswersTheChosenPathOrNothing, AFileThatIsNotEnabledCannotBeChosen,
                            AnAnswerMayAskTheNextQuestion,
                            ADialogThatComesWhileAnotherIsUpIsAnsweredFirstAndNoAnswerIsLost,
                            NobodyNeedsToWaitForTheAnswer);

} // namespace orbel::contracts
