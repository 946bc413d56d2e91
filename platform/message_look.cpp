#include "platform/message_look.h"

namespace polefit {

namespace {

std::vector<Reply> ButtonsOf(int style) {
  switch (style & 0xF) {
    case 1:
      return {Reply::ok, Reply::cancel};
    case 3:
      return {Reply::yes, Reply::no, Reply::cancel};
    case 4:
      return {Reply::yes, Reply::no};
    default:
      return {Reply::ok};
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
