#include "program/console.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <optional>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "base/text_format.h"
#include "check/check.h"
#include "check/check_json.h"
#include "check/check_table.h"
#include "platform/paths.h"
#include "program/console_exit.h"
#include "program/export_command.h"
#include "program/fill_command.h"
#include "program/import_command.h"
#include "record/response_record.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"

namespace polefit {

namespace {

/// One way to call the program, and what it does then.
struct Usage {
  std::string_view words;
  std::string_view effect;
  bool needsWindow = false;
};

constexpr Usage kUsages[] = {
    {"[FILE...]", "open a window for each FILE", true},
    {"--check [--json] FILE...", "tell what Response Input Files say"},
    {"--rewrite IN OUT", "write IN again, in the layout of a saved file"},
    {"--import FILE OUT [...]", "make OUT of the points of a measured FILE"},
    {"--export FORMAT FILE OUT [--points data]", "write poles, zeros and gain for another program"},
    {"--fill COLUMN=EXPRESSION [--grid A:B:N] FILE OUT", "fill a column by a formula"},
    {"--plot FILE OUT", "draw the curves; OUT ends in .png, .svg or .pdf", true},
    {"--version", ""},
    {"--help", ""},
};

constexpr const char* kHelp =
    "Behind '--' every word is a file's name.\n"
    "\n"
    "--check ends with 0 when nothing was found, 1 with findings, 2 when the file could not be\n"
    "read to its end, 3 when there is no such file, 4 when its output cannot be written; with the\n"
    "highest of several files'. A wrong command line is 64.\n"
    "\n"
    "--import reads Touchstone and delimited text and Response Input Files; OUT may be '-'.\n"
    "  --as model|equalise|want         what the points are for (model)\n"
    "  --frequency --yin --yout --weight --delay --angle --imag COLUMN\n"
    "                                   a heading, or a number from 1 on\n"
    "  --parameter S21                  of a Touchstone file\n"
    "  --unit Hz|kHz|MHz|GHz            of the frequencies\n"
    "  --values linear|db|db10|ri|ma    what the values are\n"
    "  --delay-unit s|us|ns|ps  --delay-from FILE  --delay-from-phase\n"
    "  --from MHZ --to MHZ --every N --points N [--log] --smooth K --normalise\n"
    "  --poles \"1 2\"                    question 6\n"
    "  --into FILE2 [--grid file|table] FILE2's answers with the points of FILE\n"
    "It ends with 0; 1 when nothing could be taken or a guess is unsure; 2 and 3 as above; 4\n"
    "when OUT cannot be written, which otherwise is replaced only when everything is ready.\n"
    "\n"
    "--export takes the answers of FILE; OUT may be '-'. FORMAT: scipy matlab spice spice-laplace\n"
    "spice-rlc csv csv-curves touchstone json. touchstone has 401 frequencies from 0 to three "
    "times\n"
    "Freq Norm, or with --points data those of the points. It ends with 1 for faulty answers.\n"
    "\n"
    "--fill can be given several times. COLUMN: Frequency Yin Yout Weight DelayFrequency Delay.\n"
    "  --grid A:B:N[:log]               new frequencies from A to B MHz in N steps, N + 1 rows\n"
    "In an expression stand f (MHz), x (f / Freq Norm), yin, yout, w, tx and row. It ends with 1\n"
    "when a formula has no value in a row, or a row stays without a cell.\n";

using Words = std::span<const std::string>;

/// The words as files' names, behind "--" whatever they are; nothing when one is an option.
std::optional<std::vector<std::string>> NamesIn(Words words) {
  std::vector<std::string> names;
  bool areNames = false;
  for (const std::string& word : words) {
    const bool isOption = !areNames && word.starts_with('-');
    if (isOption && word != "--") return std::nullopt;
    if (!isOption) names.push_back(word);
    areNames = areNames || isOption;
  }
  return names;
}

int Rewrite(Host& host, Words words) {
  const auto names = NamesIn(words);
  if (!names || names->size() != 2) return WrongUsage();
  const std::string& from = names->front();
  const std::string& to = names->back();
  if (HasControlCharacters(CutPath(to).name)) {
    return Fail(kCannotWrite, "cannot write '" + to +
                                  "': a file's name stands in its first line, which can hold no "
                                  "control character");
  }
  ResponseRecord record;
  try {
    record = ReadResponseFile(host, from);
  } catch (const RunTimeError& error) {
    return FailReading(from, error);
  }
  try {
    WriteResponseFile(host, record, TargetOf(to));
  } catch (const RunTimeError& error) {
    return Fail(kCannotWrite, "cannot write '" + to + "': " + error.description);
  }
  return 0;
}

int CheckFile(Host& host, const std::string& path, bool asJson) {
  try {
    const CheckedFile checked = CheckResponseFile(host, path);
    std::cout << (asJson ? CheckAsJson(checked) : Printable(CheckAsTable(checked)));
    if (checked.error) return kCannotRead;
    return checked.findings.empty() ? 0 : 1;
  } catch (const RunTimeError& error) {
    return FailReading(path, error);
  }
}

int Check(Host& host, Words words) {
  const bool asJson = !words.empty() && words[0] == "--json";
  const auto names = NamesIn(words.subspan(asJson ? 1 : 0));
  if (!names || names->empty()) return WrongUsage();
  int highest = 0;
  for (const std::string& name : *names) highest = std::max(highest, CheckFile(host, name, asJson));
  return highest;
}

/// Told before anything is read, so that a wrong name leaves nothing half done.
bool IsPictureName(const std::string& name) {
  const std::string end = UpperCase(name.substr(std::max<std::size_t>(name.size(), 4) - 4));
  return end == ".PNG" || end == ".SVG" || end == ".PDF";
}

int PrintVersion(Host& /*host*/, Words words) {
  if (!words.empty()) return WrongUsage();
  std::cout << "Polefit " POLEFIT_VERSION "\n";
  return 0;
}

int PrintHelp(Host& /*host*/, Words words) {
  constexpr std::size_t kEffectColumn = 41;
  if (!words.empty()) return WrongUsage();
  std::string head = "Usage: ";
  for (const Usage& usage : kUsages) {
    if (usage.needsWindow && !Speaker().hasWindow) continue;
    std::string line = head + Speaker().name + ' ' + std::string(usage.words);
    head = "       ";
    if (!usage.effect.empty()) {
      if (line.size() + 1 > kEffectColumn) line += '\n' + std::string(kEffectColumn, ' ');
      line.resize(std::max(line.size(), kEffectColumn), ' ');
      line += usage.effect;
    }
    std::cout << line << '\n';
  }
  std::cout << kHelp;
  return 0;
}

/// What the first word asks for; the function gets the words behind it and gives the exit code.
struct ConsoleCommand {
  std::string_view name;
  int (*run)(Host&, Words);
};

constexpr ConsoleCommand kCommands[] = {{"--check", Check},          {"--rewrite", Rewrite},
                                        {"--import", ImportCommand}, {"--export", ExportCommand},
                                        {"--fill", FillCommand},     {"--version", PrintVersion},
                                        {"--help", PrintHelp}};

CommandLineResult CarryOut(Host& host, std::span<const std::string> arguments) {
  const std::string first = arguments.empty() ? "" : arguments[0];
  for (const ConsoleCommand& command : kCommands) {
    if (first == command.name) return {command.run(host, arguments.subspan(1)), {}};
  }
  if (!Speaker().hasWindow) return {WrongUsage(), {}};
  const bool isPlot = first == "--plot";
  const auto names = NamesIn(arguments.subspan(isPlot ? 1 : 0));
  if (!names) return {WrongUsage(), {}};
  if (!isPlot) return {std::nullopt, {*names, {}, {}}};
  if (names->size() != 2 || !IsPictureName(names->back())) return {WrongUsage(), {}};
  return {std::nullopt, {{}, names->front(), names->back()}};
}

}  // namespace

int RunGuarded(const std::function<int()>& body) {
  try {
    return body();
  } catch (const RunTimeError& error) {
    const std::string path = error.path.empty() ? "" : ": " + error.path;
    return Fail(kUncaught, "error " + std::to_string(error.number) + ": " + InWords(error) + path);
  } catch (const std::exception& error) {
    return Fail(kUncaught, error.what());
  }
}

CommandLineResult RunCommandLine(Host& host, std::span<const std::string> arguments) {
  CommandLineResult result = CarryOut(host, arguments);
  // A full disk is seen only here, since the output is collected.
  if (result.exitCode && *result.exitCode != kCannotWrite && !std::cout.flush()) {
    std::cout.clear();
    result.exitCode = Fail(kCannotWrite, "the output cannot be written");
  }
  return result;
}

}  // namespace polefit
