#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "platform/linux/console_host.h"
#include "record/question_catalogue.h"
#include "responsefile/reader.h"
#include "solver/problem/problem_reader.h"

namespace polefit::testing {

/// The record of an example, or of the file at a whole path, with some answers changed, by the
/// numbers of their questions: "6=0 2; 8=.5 .4".
inline ResponseRecord ExampleRecord(const std::string& name, const std::string& answers = "") {
  ConsoleHost host;
  ResponseRecord record = ReadResponseFile(host, std::filesystem::path(EXAMPLES) / name);
  std::istringstream list(answers);
  for (std::string answer; std::getline(list >> std::ws, answer, ';');) {
    const std::string number = answer.substr(0, answer.find('='));
    const std::string text = answer.substr(number.size() + 1);
    if (number[0] == 'S') {
      record.solverCount = kSolverValueCount;
      record.solver.at(std::stoul(number.substr(1)) - 1) = text;
      continue;
    }
    int slot = 1;
    while (QuestionNumber(slot) != number) ++slot;
    record.Slot(slot) = text;
  }
  return record;
}

/// Makes `rows` passband points of the first 21, over and over.
inline void RepeatPoints(ResponseRecord& record, std::int16_t rows) {
  const PassbandLists few = record.passband;
  record.nFreqPoints = rows;
  record.passband.Resize(rows + 1);
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= few.kColumns; ++column) {
      record.passband.At(row, column) = few.At(1 + row % 21, column);
    }
  }
}

/// The problem of a record that has no fault.
inline Problem GoodProblem(const ResponseRecord& record) {
  std::vector<Finding> findings;
  Problem problem = ReadProblem(record, findings);
  EXPECT_FALSE(HasFault(findings)) << FaultTexts(findings).front();
  return problem;
}

}  // namespace polefit::testing
