#include "widgets/wrapped_tabs.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFont>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>

#include "record/question_catalogue.h"
#include "widgets/controls.h"

namespace polefit::testing {
namespace {

TEST(WrappedTabsTest, ACaptionBreaksNearItsMiddleButNotBehindItsNumber) {
  for (const auto& [caption, lines] : {std::pair("&1. Start", "&1. Start"),
                                       {"&2. Poles && Zeros", "&2. Poles\n&& Zeros"},
                                       {"&6. Solver Settings", "&6. Solver\nSettings"},
                                       {"Run", "Run"},
                                       {"", ""}}) {
    EXPECT_EQ(InTwoLines(caption).toStdString(), lines);
  }
}

bool ScrollsTabs(const QTabBar& bar) {
  const auto arrows = bar.findChildren<QToolButton*>();
  return std::any_of(arrows.begin(), arrows.end(),
                     [](const auto* one) { return one->isVisible(); });
}

TEST(WrappedTabsTest, AllCaptionsAreSeenInTwoLinesWhereOneIsTooShort) {
  for (const int points : {10, 14}) {
    WrappedTabs tabs;
    tabs.setFont(QFont("DejaVu Sans", points));
    for (const std::string_view caption : kTabCaptions)
      tabs.addTab(new QWidget, ToQString(caption));
    const int line = tabs.fontMetrics().height();
    tabs.resize(80 * line, 300);
    tabs.show();
    const int oneLine = tabs.tabBar()->height();
    EXPECT_FALSE(ScrollsTabs(*tabs.tabBar()));
    tabs.resize(std::max(560, 35 * line), 300);
    EXPECT_FALSE(ScrollsTabs(*tabs.tabBar()));
    EXPECT_EQ(tabs.tabBar()->height(), oneLine + tabs.fontMetrics().lineSpacing());
    tabs.setFont(QFont("DejaVu Sans", 7));
    QCoreApplication::sendPostedEvents();
    EXPECT_LT(tabs.tabBar()->height(), oneLine + 1) << "a font that fits again";
    tabs.setFont(QFont("DejaVu Sans", points));
    tabs.resize(80 * line, 300);
    EXPECT_EQ(tabs.tabBar()->height(), oneLine);
  }
}

}  // namespace
}  // namespace polefit::testing
