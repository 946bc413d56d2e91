#include "program/import_command.h"

#include <optional>

#include "exchange/import/guess.h"
#include "exchange/import/import_plan.h"
#include "exchange/import/new_problem.h"
#include "exchange/import/points.h"
#include "exchange/read/source_file.h"
#include "platform/paths.h"
#include "program/console_exit.h"
#include "program/console_files.h"
#include "program/import_options.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"

namespace polefit {

namespace {

/// Why an import ends without a result, in a sentence.
struct NoImport {
  std::string sentence;
};

std::string ListOfColumns(const SourceTable& table) {
  std::string list;
  for (int column = 0; column < table.Columns() && column < 40; ++column) {
    const std::string& heading = table.columns[static_cast<std::size_t>(column)].heading;
    list += (column > 0 ? ", " : "") + std::to_string(column + 1);
    if (!heading.empty()) list += " '" + heading + "'";
  }
  return list;
}

int NamedColumn(const SourceTable& table, const std::string& option, const std::string& name) {
  const int column = FindColumn(table, name);
  if (column != kNoColumn) return column;
  throw NoImport{option + ": there is no column '" + name +
                 "'; the columns are: " + ListOfColumns(table)};
}

/// Turns the words of the command line into choices for one table.
class ChoiceResolver {
 public:
  ChoiceResolver(const ImportOptions& options, const SourceTable& table)
      : options_(options), table_(table), guess_(GuessChoices(table, options.role)) {}

  ImportChoices Resolve() {
    ImportChoices& choices = guess_.choices;
    choices.rows = options_.rows;
    ChooseFrequency();
    ChooseValues();
    if (!options_.weight.empty()) choices.weight = Named("--weight", options_.weight);
    return choices;
  }

  /// The choices for the table that gives the delay: the one of the values, or another, whose
  /// columns no option but those of the delay names.
  ImportChoices ResolveDelay(bool isOwn) {
    ImportChoices& choices = guess_.choices;
    choices.rows = options_.rows;
    if (isOwn) {
      ChooseFrequency();
      ChooseValues();
    }
    choices.delaySource = options_.delayFromPhase ? DelaySource::phase : DelaySource::column;
    if (options_.delayFromPhase) {
      TakePhase();
    } else {
      TakeDelay();
    }
    if (!isOwn) choices.value = {};
    return choices;
  }

 private:
  int Named(const std::string& option, const std::string& name) const {
    return NamedColumn(table_, option, name);
  }

  void ChooseFrequency() {
    ImportChoices& choices = guess_.choices;
    if (!options_.frequency.empty()) {
      choices.frequency = Named("--frequency", options_.frequency);
      const Column& column = table_.columns[static_cast<std::size_t>(choices.frequency)];
      choices.unit = column.meaning.frequencyUnit.value_or(FrequencyUnit::hertz);
    }
    if (options_.unit) choices.unit = *options_.unit;
  }

  void ChooseValues() {
    const bool isYin = options_.role == Role::equalise;
    const std::string& own = isYin ? options_.yin : options_.yout;
    const std::string& other = isYin ? options_.yout : options_.yin;
    ImportChoices& choices = guess_.choices;
    if (!options_.parameter.empty() &&
        !ChooseParameter(table_, options_.parameter, choices.value)) {
      throw NoImport{"--parameter: there is no " + options_.parameter +
                     "; the columns are: " + ListOfColumns(table_)};
    }
    if (!own.empty()) choices.value = {Named(isYin ? "--yin" : "--yout", own)};
    const bool isGuessed = own.empty() && options_.parameter.empty() && !guess_.isKindUnsure;
    if (!isGuessed || options_.values) ChooseKind(choices.value);
    if (other.empty()) return;
    choices.other = {Named(isYin ? "--yout" : "--yin", other)};
    ChooseKind(choices.other);
  }

  /// The kind that was told, else what the column is guessed to be.
  void ChooseKind(ValueColumn& value) const {
    const auto guessed = GuessKind(table_, value.column);
    if (!options_.values && !guessed) {
      throw NoImport{"the values of column " + std::to_string(value.column + 1) +
                     " are all above 3 and nothing says what they are: tell it by --values "
                     "linear, db, db10, ri or ma"};
    }
    value.kind = options_.values.value_or(guessed.value_or(ValueKind::linear));
    if (value.kind != ValueKind::realImaginary) return;
    value.second = options_.imag.empty() ? SecondColumn(table_, value.column, Quantity::imaginary)
                                         : Named("--imag", options_.imag);
    const bool hasNext = value.column + 1 < table_.Columns();
    if (value.second == kNoColumn && hasNext) value.second = value.column + 1;
  }

  void TakePhase() {
    ImportChoices& choices = guess_.choices;
    if (!options_.angle.empty()) {
      choices.delay = Named("--angle", options_.angle);
      choices.delaySecond = kNoColumn;
      const Column& column = table_.columns[static_cast<std::size_t>(choices.delay)];
      choices.angleUnit = column.meaning.angleUnit.value_or(AngleUnit::degrees);
    } else if (!ChoosePhase(table_, choices)) {
      // Magnitude + angle say where the angle stands, whatever the headings say.
      const bool hasAngle = options_.values == ValueKind::magnitudeAngle &&
                            choices.value.column + 1 < table_.Columns();
      if (!hasAngle) {
        throw NoImport{"--delay-from-phase: no column is known to be a phase; name it by --angle"};
      }
      choices.delay = choices.value.column + 1;
    }
  }

  void TakeDelay() {
    ImportChoices& choices = guess_.choices;
    choices.delay = options_.delay.empty() ? ColumnOfQuantity(table_, Quantity::delay)
                                           : Named("--delay", options_.delay);
    if (choices.delay == kNoColumn) {
      throw NoImport{"no column is known to be a delay; name it by --delay"};
    }
    choices.delayUnit = options_.delayUnit.value_or(
        GuessDelayUnit(table_, choices.delay, choices.frequency, choices.unit));
  }

  const ImportOptions& options_;
  const SourceTable& table_;
  Guess guess_;
};

/// The files of an import and what becomes of them.
class Import {
 public:
  Import(Host& host, const ImportOptions& options) : host_(host), options_(options) {}

  /// Throws NoImport, or RunTimeError while `reading` names a file.
  ResponseRecord Make() {
    reading = options_.file;
    source_ = ReadSourceFile(host_, options_.file);
    if (!source_.table.fault.empty()) throw NoImport{source_.table.fault};
    const ImportChoices choices = TakePoints();
    TakeDelays();
    if (!points_.fault.empty()) throw NoImport{points_.fault};
    return options_.into.empty() ? FreshRecord(choices) : ExtendedRecord(choices);
  }

  void TellNotes() const {
    const std::string skipped = SkippedText(points_.skippedLines);
    if (!skipped.empty()) Say(skipped);
    for (const std::string& note : points_.notes) Say(note);
  }

  std::string reading;

 private:
  bool WantsDelay() const {
    return options_.delayFromPhase || !options_.delay.empty() || !options_.delayFrom.empty();
  }

  ImportChoices TakePoints() {
    const ImportChoices choices = ChoiceResolver(options_, source_.table).Resolve();
    points_ = MakePoints(source_.table, choices);
    return choices;
  }

  /// The table that the delay comes from: another file's, the delay points of a Response Input
  /// File, or the one of the values.
  void TakeDelays() {
    if (!WantsDelay() || !points_.fault.empty()) return;
    SourceFile other;
    const bool isOther = !options_.delayFrom.empty();
    if (isOther) {
      reading = options_.delayFrom;
      other = ReadSourceFile(host_, options_.delayFrom);
    }
    const SourceFile& from = isOther ? other : source_;
    const bool hasOwn = from.table.kind == FileKind::responseFile;
    const SourceTable& table = hasOwn ? from.delays : from.table;
    if (table.Columns() == 0) throw NoImport{"delay: " + table.fault};
    const bool isOwn = !isOther && !hasOwn;
    const ImportChoices choices = ChoiceResolver(options_, table).ResolveDelay(isOwn);
    polefit::TakeDelays(table, choices, points_);
  }

  ResponseRecord FreshRecord(const ImportChoices& choices) {
    ResponseRecord record = BuiltInAnswers();
    const NewProblem problem = LookAtPoints(points_.passband);
    if (!problem.note.empty()) points_.notes.push_back(problem.note);
    StartProblem(problem,
                 PointsNote(source_, choices, options_.parameter, host_.FormatNow("%Y-%m-%d")),
                 options_.poles, record);
    Put(CellsOfPoints(points_.passband), record);
    return record;
  }

  ResponseRecord ExtendedRecord(const ImportChoices& choices) {
    reading = options_.into;
    ResponseRecord record = ReadResponseFile(host_, options_.into);
    if (!options_.poles.empty()) record.Slot(slot::kNPoles) = options_.poles;
    const bool hasOther = choices.other.column != kNoColumn;
    const TakenColumns taken = {options_.role != Role::want || hasOther,
                                options_.role != Role::equalise || hasOther,
                                choices.weight != kNoColumn};
    const bool takesAll = taken.yin && taken.yout;
    const MergedTable merged =
        Merge(RowsOf(record), points_.passband, taken,
              options_.grid.value_or(takesAll ? Frequencies::file : Frequencies::table));
    Tell(merged);
    Put(merged.rows, record);
    return record;
  }

  void Tell(const MergedTable& merged) {
    if (merged.keptRows > 0) {
      points_.notes.push_back(std::to_string(merged.keptRows) +
                              " rows of the table lie outside of the points and stay as they are");
    }
    if (merged.droppedPoints > 0) {
      points_.notes.push_back(std::to_string(merged.droppedPoints) +
                              " points lie outside of the table and are left out");
    }
  }

  void Put(const std::vector<PassbandCells>& rows, ResponseRecord& record) const {
    if (rows.size() < 2) throw NoImport{"fewer than 2 rows are left"};
    PutRows(rows, record);
    if (!options_.weight.empty()) record.Slot(slot::kUseWeights) = "Y";
    if (WantsDelay()) PutDelays(CellsOfPoints(points_.delays), record);
  }

  Host& host_;
  const ImportOptions& options_;
  SourceFile source_;
  Points points_;
};

std::string StemOf(const std::string& path) {
  const std::string name = CutPath(path).name;
  return name.substr(0, name.rfind('.'));
}

int Write(Host& host, const ImportOptions& options, ResponseRecord& record) {
  const bool isPiped = options.out == "-";
  const std::string name = isPiped ? StemOf(options.file) + ".1" : CutPath(options.out).name;
  return WriteOutput(host, options.out, ResponseFileBytes(host, record, name));
}

}  // namespace

int ImportCommand(Host& host, std::span<const std::string> words) {
  const std::optional<ImportOptions> options = ReadImportOptions(words);
  if (!options) return WrongUsage();
  Import import(host, *options);
  ResponseRecord record;
  try {
    record = import.Make();
  } catch (const NoImport& none) {
    import.TellNotes();
    return Fail(kNothingUsable, "'" + options->file + "': " + none.sentence);
  } catch (const RunTimeError& error) {
    host.CloseFile();
    return FailReading(import.reading, error);
  }
  import.TellNotes();
  return Write(host, *options, record);
}

}  // namespace polefit
