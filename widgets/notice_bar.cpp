#include "widgets/notice_bar.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <utility>

#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr std::size_t kMostButtons = 2;
constexpr int kRetryMilliseconds = 100;

}  // namespace

NoticeBar::NoticeBar(Guard run, std::function<bool()> isBusy)
    : run_(std::move(run)),
      isBusy_(std::move(isBusy)),
      sentence_(MakeText("lblNotice", "")),
      count_(new QLabel),
      close_(new QToolButton) {
  setObjectName("noticeBar");
  MakeAlert(*this);
  setFrameShape(StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::AlternateBase);
  auto* row = new QHBoxLayout(this);
  const int gap = fontMetrics().height() / 2;
  row->setContentsMargins(gap, gap / 2, gap, gap / 2);
  row->setSpacing(gap);
  const int size = fontMetrics().height() * 5 / 4;
  auto* icon = new QLabel;
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(size, size));
  row->addWidget(icon);
  row->addWidget(sentence_, 1);
  row->addWidget(count_);
  for (std::size_t i = 0; i < kMostButtons; ++i) {
    buttons_.push_back(MakeButton("cmdNotice" + std::to_string(i + 1), ""));
    connect(buttons_.back(), &QPushButton::clicked, this, [this, i] { Choose(i); });
    row->addWidget(buttons_.back());
  }
  close_->setObjectName("cmdCloseNotice");
  close_->setAutoRaise(true);
  close_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close_->setAccessibleName(tr("Decide later"));
  close_->setToolTip(tr("Decide later (Esc)"));
  close_->setFocusPolicy(Qt::StrongFocus);
  connect(close_, &QToolButton::clicked, this, [this] { board_->Remove(shown_.about); });
  row->addWidget(close_);
  retry_.setInterval(kRetryMilliseconds);
  connect(&retry_, &QTimer::timeout, this, &NoticeBar::Update);
  hide();
}

void NoticeBar::Watch(NoticeBoard& board) {
  board_ = &board;
  board.onChange = [this] { Update(); };
  Update();
}

void NoticeBar::Update() {
  const bool mustWait = QGuiApplication::mouseButtons() != Qt::NoButton || isBusy_();
  if (mustWait) {
    retry_.start();
  } else {
    retry_.stop();
    ShowFirst();
  }
}

void NoticeBar::ShowFirst() {
  const std::vector<Notice>& waiting = board_->Waiting();
  if (waiting.empty()) {
    hide();
    shown_ = {};
    return;
  }
  count_->setText(tr("1 of %1").arg(waiting.size()));
  count_->setVisible(waiting.size() > 1);
  const Notice& first = waiting.front();
  const bool isNew = first.about != shown_.about || first.sentence != shown_.sentence;
  shown_ = first;
  if (isNew) ShowNotice(first);
  show();
}

void NoticeBar::ShowNotice(const Notice& notice) {
  sentence_->setText(QString::fromStdString(notice.sentence));
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const bool isUsed = i < notice.buttons.size();
    buttons_[i]->setVisible(isUsed);
    if (isUsed) buttons_[i]->setText(QString::fromStdString(notice.buttons[i].caption));
  }
  setAccessibleName(sentence_->text());
  Announce(*this);
}

void NoticeBar::Choose(std::size_t button) {
  const std::function<void()> action = shown_.buttons.at(button).action;
  board_->Remove(shown_.about);
  run_(action);
}

void NoticeBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    board_->Remove(shown_.about);
  } else {
    QFrame::keyPressEvent(event);
  }
}

}  // namespace polefit
