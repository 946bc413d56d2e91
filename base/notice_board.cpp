#include "base/notice_board.h"

#include <algorithm>
#include <utility>

namespace polefit {

void NoticeBoard::Post(Notice notice) {
  Drop(notice.about);
  const auto place = std::ranges::find_if(
      waiting_, [&](const Notice& other) { return other.urgency < notice.urgency; });
  waiting_.insert(place, std::move(notice));
  if (onChange) onChange();
}

void NoticeBoard::Remove(const std::string& about) {
  Drop(about);
  if (onChange) onChange();
}

void NoticeBoard::Drop(const std::string& about) {
  std::erase_if(waiting_, [&](const Notice& notice) { return notice.about == about; });
}

}  // namespace polefit
