#include "platform/message_look.h"

#include <gtest/gtest.h>

namespace polefit {
namespace {

TEST(MessageLookTest, EveryStyleThatTheProgramUsesHasItsLook) {
  using enum Answer;
  struct Case {
    int style;
    std::vector<Answer> buttons;
    MessageIcon icon;
    Answer defaultButton;
  };
  const Case cases[] = {
      {0, {ok}, MessageIcon::none, ok},
      {16, {ok}, MessageIcon::critical, ok},
      {33, {ok, cancel}, MessageIcon::question, ok},
      {35, {yes, no, cancel}, MessageIcon::question, yes},
      {36, {yes, no}, MessageIcon::question, yes},
      {48, {ok}, MessageIcon::exclamation, ok},
      {52, {yes, no}, MessageIcon::exclamation, yes},
      {448, {ok}, MessageIcon::none, ok},
      {480, {ok}, MessageIcon::none, ok},
      {481, {ok, cancel}, MessageIcon::none, cancel},
  };
  for (const Case& expected : cases) {
    const MessageLook look = LookOf(expected.style);
    EXPECT_EQ(look.buttons, expected.buttons) << expected.style;
    EXPECT_EQ(look.icon, expected.icon) << expected.style;
    EXPECT_EQ(look.defaultButton, expected.defaultButton) << expected.style;
  }
}

}  // namespace
}  // namespace polefit
