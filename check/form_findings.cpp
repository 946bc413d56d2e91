#include "check/form_findings.h"

#include "check/check.h"
#include "form/table_edits.h"
#include "form/transfer.h"

namespace polefit {

namespace {

void FindUnsavedRows(const FormCells& cells, Table table, std::vector<Finding>& findings) {
  const std::optional<CellPlace> place = FirstUnsaved(cells, table);
  if (!place) return;
  const bool isPassband = table == Table::passband;
  const bool lacksWeight = isPassband && place->column == PassbandLists::kColumns;
  findings.push_back({{.table = isPassband ? FindingTable::passband : FindingTable::delay,
                       .row = place->row,
                       .column = place->column},
                      Severity::warning,
                      (isPassband ? "Passband data: " : "Delay data: ") + UnsavedRows(cells, table),
                      CanKeepRows(cells, table) ? Cure::keepTypedRows
                      : lacksWeight             ? Cure::weightOne
                                                : Cure::none});
}

}  // namespace

std::vector<Finding> FindingsOf(const Program& program) {
  std::vector<Finding> findings = FindingsIn(RecordOf(program));
  const FormCells cells = CellsOf(program);
  FindUnsavedRows(cells, Table::passband, findings);
  FindUnsavedRows(cells, Table::delay, findings);
  SortByQuestion(findings);
  return findings;
}

}  // namespace polefit
