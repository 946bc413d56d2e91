#include "app/ui/about_box.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

#include "widgets/captions.h"

namespace polefit {

namespace {

QLabel* MakeLine(const char* name, const QString& text) {
  auto* line = new QLabel(text);
  line->setObjectName(name);
  line->setTextFormat(Qt::PlainText);
  line->setTextInteractionFlags(Qt::TextSelectableByMouse);
  line->setWordWrap(true);
  return line;
}

}  // namespace

void ShowAboutBox(QWidget* parent) {
  QDialog box(parent);
  box.setObjectName("frmAbout");
  box.setWindowTitle(QObject::tr("About Polefit"));
  auto* rows = new QVBoxLayout(&box);
  rows->setContentsMargins(24, 20, 24, 16);
  rows->setSpacing(10);
  rows->addWidget(MakeTitle("Polefit™"));
  rows->addWidget(MakeLine("lblVersion", QObject::tr("Version %1").arg(POLEFIT_VERSION)));
  rows->addWidget(
      MakeLine("lblPurpose", QObject::tr("Finds the poles and zeros of the transfer function that "
                                         "turns a given input signal into a desired output.")));
  rows->addWidget(MakeLine("lblLicence", QObject::tr("Free software under the MIT licence.")));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
  rows->addSpacing(6);
  rows->addWidget(buttons);
  box.setMinimumWidth(box.fontMetrics().averageCharWidth() * 56);
  box.exec();
}

}  // namespace polefit
