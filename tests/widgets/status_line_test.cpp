#include "widgets/status_line.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFont>

#include "widgets/cut_label.h"

namespace polefit::testing {
namespace {

const QStringList kFindings = {"1 warning: Question 11a: the zero 1 lies on passband point 21.",
                               "1 warning: question 11a", "1 warning"};
const QStringList kRun = {
    "Good: rms 0.31 %, worst 0.13 dB at 7.5 MHz, delay ripple 7.5 ns; 1 on a bound or held.",
    "Good: rms 0.31 %, worst 0.13 dB at 7.5 MHz", "Good"};
const QStringList kAll = {
    "wanted, typed and result 13:00, 0 to 10 MHz, worst error 0.71 dB at 9.5 MHz, 8 poles, 6 zeros",
    "result 13:00, worst error 0.71 dB at 9.5 MHz, 8 poles, 6 zeros"};
const QStringList kRow = {
    "row 20: 9.5 MHz, wanted -32.85 dB, typed -44.01 dB, error -11.16 dB, result 13:00 -33.56 dB, "
    "error -0.71 dB",
    "row 20: 9.5 MHz, wanted -32.85 dB, result 13:00 -33.56 dB, error -0.71 dB",
    "row 20: 9.5 MHz, result 13:00 -33.56 dB, error -0.71 dB"};

class StatusLineTest : public ::testing::Test {
 protected:
  /// As wide as a window on a screen of 1024 pixels is at first, times the font's own size.
  explicit StatusLineTest(int points = 10) {
    bar.setFont(QFont("DejaVu Sans", points));
    bar.resize(921, bar.sizeHint().height());
    bar.show();
  }

  QString Seen(const char* place, const QStringList& texts) {
    QCoreApplication::processEvents();
    return FittingText(*bar.findChild<QWidget*>(place), texts);
  }

  ::testing::AssertionResult IsWhole(const char* place, const QStringList& texts) {
    const QString seen = Seen(place, texts);
    if (texts.contains(seen)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << place << " shows " << seen.toStdString();
  }

  StatusLine bar;
};

TEST_F(StatusLineTest, SaysLessRatherThanBeingCut) {
  for (const QStringList& findings : {QStringList("No findings"), kFindings}) {
    for (const QStringList& run : {QStringList(), kRun}) {
      bar.ShowFindings(findings);
      bar.ShowRun(run);
      for (const QStringList& readOut : {kAll, kRow}) {
        bar.ShowReadOut(readOut);
        EXPECT_TRUE(IsWhole("lblReadOut", readOut));
        EXPECT_TRUE(IsWhole("cmdFindings", findings));
        EXPECT_TRUE(run.isEmpty() || IsWhole("cmdRunState", run));
        EXPECT_EQ(bar.findChild<QLabel*>("lblReadOut")->text(), readOut[0]) << "is its name";
        EXPECT_TRUE(bar.findChild<QWidget*>("cmdFindings")->toolTip().startsWith(findings[0]));
      }
    }
  }
  bar.ShowFindings({"No findings"});
  bar.ShowRun({});
  bar.ShowReadOut(kAll);
  EXPECT_EQ(Seen("lblReadOut", kAll), kAll[0]) << "has what the others leave";
}

TEST_F(StatusLineTest, TheReadOutMovesNothingAndLeavesItsPlaceWhenItGoes) {
  bar.ShowFindings(kFindings);
  bar.ShowRun(kRun);
  bar.ShowReadOut({"8 poles, 6 zeros"});
  QCoreApplication::processEvents();
  const QRect before = bar.findChild<QWidget*>("cmdRunState")->geometry();
  bar.ShowReadOut(kAll);
  EXPECT_EQ(Seen("cmdRunState", kRun), kRun[2]);
  EXPECT_EQ(bar.findChild<QWidget*>("cmdRunState")->geometry(), before);
  bar.ShowReadOut({});
  EXPECT_EQ(Seen("cmdFindings", kFindings), kFindings[0]);
  bar.ShowReadOut(kAll);
  bar.resize(2000, bar.height());
  EXPECT_EQ(Seen("cmdRunState", kRun), kRun[1]);
  EXPECT_EQ(Seen("cmdFindings", kFindings), kFindings[0]);
}

}  // namespace
}  // namespace polefit::testing
