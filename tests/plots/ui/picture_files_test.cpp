#include "plots/ui/picture_files.h"

#include <QApplication>
#include <QClipboard>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>

#include "plots/ui/curves_form.h"
#include "plots/ui/plot_page.h"

namespace polefit::testing {
namespace {

using PictureFiles = CurvesDockTest;

TEST_F(PictureFiles, AreOfEveryKind) {
  for (const auto& [name, start] :
       {std::pair("a.png", "\x89PNG"), {"a.svg", "<?xml"}, {"a.pdf", "%PDF"}}) {
    EXPECT_TRUE(PictureOf(dock.Pane(), name).startsWith(start)) << name;
  }
  std::vector<Finding> findings;
  const auto curves = CurvesOf(ExampleRecord("Ex-Zpair.1"), CurveRole::typed, "typed", findings);
  const QImage page = QImage::fromData(PlotPage(*curves, QString(300, 'x'), "x.png"));
  EXPECT_EQ(page.size(), QSize(1600, 2000));
  EXPECT_EQ(page.pixelColor(2, 2), QColor(Qt::white));
}

/// How far two pictures differ where one looks at them from afar, in parts of 255 in the mean.
double DifferenceOf(const QImage& sharp, const QImage& otherSharp) {
  const auto seen = [&otherSharp](const QImage& image) {
    return image.scaled(otherSharp.size() / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  };
  const QImage one = seen(sharp);
  const QImage other = seen(otherSharp);
  double sum = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      sum += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y)));
    }
  }
  return sum / one.width() / one.height();
}

TEST_F(PictureFiles, AreTheSameAsLinesAndAsPixels) {
  Upper().setFocus();
  Press(Qt::Key_Plus);  // the curves go on beyond the axes
  const QSize size = dock.Pane().size();
  const QImage pixels = QImage::fromData(PictureOf(dock.Pane(), "a.png"));
  QSvgRenderer lines(PictureOf(dock.Pane(), "a.svg"));
  QImage drawn(size, QImage::Format_RGB32);
  drawn.fill(Qt::white);
  QPainter painter(&drawn);
  lines.render(&painter);
  painter.end();
  EXPECT_LT(DifferenceOf(pixels, drawn), 1.5);
  EXPECT_GT(DifferenceOf(pixels, drawn.mirrored()), 3) << "which is not because all is white";
}

TEST_F(PictureFiles, AreLightAndWithoutButtonsOnADarkDesktopToo) {
  QPalette dark(Qt::black);
  dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
  form.setPalette(dark);
  Upper().setFocus();
  Press(Qt::Key_Plus, Qt::Key_Right);
  const QCPRange zoomed = Upper().xAxis->range();
  const QImage picture = QImage::fromData(PictureOf(dock.Pane(), "a.png"));
  const auto at = [&](QPoint point) { return picture.pixelColor(point * 2); };
  EXPECT_EQ(at(Upper().pos() + QPoint(2, 2)), QColor(Qt::white));
  EXPECT_EQ(at(Find<QWidget>("optLinear").geometry().center()), QColor(Qt::white));
  EXPECT_EQ(Upper().xAxis->range(), zoomed) << "what is seen";
  EXPECT_EQ(Upper().toPixmap().toImage().pixelColor(2, 2), dark.color(QPalette::Base));
}

TEST_F(PictureFiles, AreSavedUnderTheChosenNameWithAnEnding) {
  const auto save = [&](const char* name, auto command) {
    host.AnswerDialog(name[0] == '\0' ? "" : host.Path(name));
    host.TakeTranscript();
    command(program, dock.Pane());
  };
  program.files.currentFileName = "vna.1";
  save("fit.svg", SavePicture);
  EXPECT_THAT(host.transcript, ::testing::Contains(::testing::HasSubstr("] vna_curves.png ->")));
  EXPECT_TRUE(host.ReadFile(host.Path("fit.svg")).starts_with("<?xml"));
  save("fit", SavePicture);
  EXPECT_TRUE(host.ReadFile(host.Path("fit.png")).starts_with("\x89PNG"));
  save("fit", SaveData);
  EXPECT_THAT(host.transcript, ::testing::Contains(::testing::HasSubstr("] vna_curves.csv ->")));
  EXPECT_TRUE(host.ReadFile(host.Path("fit.csv")).starts_with("MHz,typed |H|"));
  save("", SavePicture);
  EXPECT_EQ(host.transcript.size(), 1U) << "the dialog was given up";
  host.AnswerDialog(host.Path("fit"));
  host.AnswerChoice("Back");  // "fit.png" is there
  save("new", SavePicture);
  EXPECT_TRUE(host.ReadFile(host.Path("new.png")).starts_with("\x89PNG"));
  constexpr int kPathFileAccess = 75;
  host.Fail("ReplaceFile", kPathFileAccess);
  host.ReplyToBox(Reply::ok);
  const std::string folder = host.CurrentFolder();
  save("lost.png", SavePicture);
  EXPECT_THAT(host.transcript,
              ::testing::Contains(::testing::HasSubstr("lost.png' cannot be written")));
  EXPECT_EQ(host.CurrentFolder(), folder) << "where Save looks for the current file";
}

TEST_F(PictureFiles, AreCopiedAsPictureAndAsData) {
  CopyPicture(dock.Pane());
  const QImage picture = QApplication::clipboard()->image();
  EXPECT_EQ(picture.size(), dock.Pane().size() * 2);
  CopyData(dock.Pane());
  EXPECT_TRUE(QApplication::clipboard()->text().startsWith("MHz,typed |H|"));
}

}  // namespace
}  // namespace polefit::testing
