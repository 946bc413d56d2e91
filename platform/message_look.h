#pragma once

#include <vector>

#include "platform/host.h"

namespace polefit {

enum class MessageIcon { none, critical, question, exclamation, information };

/// What a message box with a numeric style shows.
struct MessageLook {
  std::vector<Reply> buttons;
  MessageIcon icon = MessageIcon::none;
  Reply defaultButton = Reply::ok;
};

/// Takes a style apart: the low four bits are the buttons, the next four the icon, then two for
/// the default button. A button set or icon that is none of the usual ones gives OK and no icon; a
/// default beyond the last button gives the first.
MessageLook LookOf(int style);

}  // namespace polefit
