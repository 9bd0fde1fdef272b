// What every UserNotifications keeps to.
//
// Subject: a desktop that shows messages.
//   UserNotifications& notifications();
//   void stopShowingMessages();   nothing on the desktop shows any from now on
//   std::vector<std::string> titles();  of the messages that were shown, oldest first
//   bool runUntil(std::function<bool()> condition);  lets the program run; false when it does not come to hold
#pragma once

#include "platform/UserNotifications.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class UserNotificationsContract : public testing::Test {
protected:
  void deliver(const std::string& title) {
    subject.notifications().deliver({title, "one line\nanother"}, [this](const auto& taken) {
      answers.push_back(static_cast<bool>(taken));
      if (whenAnswered) std::exchange(whenAnswered, nullptr)();
    });
  }
  testing::AssertionResult getsAnswers(const std::vector<bool>& expected) {
    if (subject.runUntil([&] { return answers.size() >= expected.size(); }) && answers == expected)
      return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the answers are " << testing::PrintToString(answers);
  }
  Subject subject;
  std::vector<bool> answers;
  std::function<void()> whenAnswered;
};

TYPED_TEST_SUITE_P(UserNotificationsContract);

TYPED_TEST_P(UserNotificationsContract, AMessageIsShownAndTheAnswerComesAfterTheCall) {
  this->deliver("Title");
  EXPECT_TRUE(this->answers.empty());
  EXPECT_TRUE(this->getsAnswers({true}));
  EXPECT_EQ(this->subject.titles(), std::vector<std::string>{"Title"});
}

TYPED_TEST_P(UserNotificationsContract, EveryMessageIsAnsweredOnce) {
  this->deliver("First");
  this->deliver("Second");
  EXPECT_TRUE(this->getsAnswers({true, true}));
  EXPECT_EQ(this->subject.titles(), (std::vector<std::string>{"First", "Second"}));
}

TYPED_TEST_P(UserNotificationsContract, WhereNothingShowsMessagesTheAnswerSaysSo) {
  this->subject.stopShowingMessages();
  this->deliver("Title");
  EXPECT_TRUE(this->answers.empty());
  EXPECT_TRUE(this->getsAnswers({false}));
}

TYPED_TEST_P(UserNotificationsContract, AnAnswerMayDeliverTheNextMessage) {
  this->whenAnswered = [this] { this->deliver("Second"); };
  this->deliver("First");
  EXPECT_TRUE(this->getsAnswers({true, true}));
  EXPECT_EQ(this->subject.titles(), (std::vector<std::string>{"First", "Second"}));
}

REGISTER_TYPED_TEST_SUITE_P(UserNotificationsContract, AMessageIsShownAndTheAnswerComesAfterTheCall,
                            EveryMessageIsAnsweredOnce, WhereNothingShowsMessagesTheAnswerSaysSo,
                            AnAnswerMayDeliverTheNextMessage);

} // namespace orbel::contracts
