#include "exchange/ui/export_command.h"

#include <utility>

#include "exchange/last_result.h"
#include "exchange/ui/export_dialog.h"
#include "platform/file_choice.h"
#include "platform/paths.h"

namespace polefit {

namespace {

/// "vna.py" for the result of "vna.1". The name of a measured file may be that of the measurement
/// that the result came from: "vna_fit.s2p".
std::string SuggestedName(const std::string& file, const ExportFormatName& format) {
  const std::string name = CutPath(file).name;
  const bool mayBeSource = format.suffix == ".s2p" || format.suffix == ".csv";
  return name.substr(0, name.rfind('.')) + (mayBeSource ? "_fit" : "") + std::string(format.suffix);
}

void SaveExport(Host& host, const std::string& file, const ExportFormatName& format,
                const std::string& text) {
  CommonDialog dialog;
  dialog.title = "Export Result";
  dialog.filter = std::string(format.description) + " (*" + std::string(format.suffix) + ")|*" +
                  std::string(format.suffix) + "|All Files (*.*)|*.*";
  dialog.fileName = SuggestedName(file, format);
  const std::string path = ChooseOtherFile(host, std::move(dialog), &Host::ShowSave);
  if (!path.empty()) host.ReplaceFile(path, text);
}

}  // namespace

void ExportLastResult(Program& program, const ErrorGuard& guard, QWidget* parent) {
  std::optional<LastResult> result = ReadLastResult(program);
  if (!result) {
    constexpr int kInformation = 64;
    program.host.MessageBox("There is no result yet. Submit a run first.", kInformation,
                            "Export Result");
    return;
  }
  const auto save = [&, file = result->file](const ExportFormatName& format,
                                             const std::string& text) {
    guard([&] { SaveExport(program.host, file, format, text); });
  };
  ExportDialog(*std::move(result), program.host.FormatNow("%Y-%m-%d %H:%M"), save, parent).exec();
}

}  // namespace polefit
