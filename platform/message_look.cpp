#include "platform/message_look.h"

namespace polefit {

namespace {

std::vector<Answer> ButtonsOf(int style) {
  switch (style & 0xF) {
    case 1:
      return {Answer::ok, Answer::cancel};
    case 3:
      return {Answer::yes, Answer::no, Answer::cancel};
    case 4:
      return {Answer::yes, Answer::no};
    default:
      return {Answer::ok};
  }
}

MessageIcon IconOf(int style) {
  switch (style & 0xF0) {
    case 16:
      return MessageIcon::critical;
    case 32:
      return MessageIcon::question;
    case 48:
      return MessageIcon::exclamation;
    case 64:
      return MessageIcon::information;
    default:
      return MessageIcon::none;
  }
}

}  // namespace

MessageLook LookOf(int style) {
  MessageLook look{ButtonsOf(style), IconOf(style)};
  const std::size_t wanted = static_cast<unsigned>(style) >> 8U & 3U;
  look.defaultButton = look.buttons[wanted < look.buttons.size() ? wanted : 0];
  return look;
}

}  // namespace polefit
