#include "platform/message_look.h"

#include <gtest/gtest.h>

namespace polefit::testing {
namespace {

TEST(MessageLookTest, EveryStyleThatTheProgramUsesHasItsLook) {
  using enum Reply;
  using enum MessageIcon;
  const std::tuple<int, std::vector<Reply>, MessageIcon, Reply> cases[] = {
      {0, {ok}, none, ok},
      {16, {ok}, critical, ok},
      {33, {ok, cancel}, question, ok},
      {35, {yes, no, cancel}, question, yes},
      {36, {yes, no}, question, yes},
      {48, {ok}, exclamation, ok},
      {52, {yes, no}, exclamation, yes},
      {448, {ok}, none, ok},
      {480, {ok}, none, ok},
      {481, {ok, cancel}, none, cancel}};
  for (const auto& [style, buttons, icon, defaultButton] : cases) {
    const MessageLook look = LookOf(style);
    EXPECT_EQ(look.buttons, buttons) << style;
    EXPECT_EQ(std::pair(look.icon, look.defaultButton), std::pair(icon, defaultButton)) << style;
  }
}

}  // namespace
}  // namespace polefit::testing
