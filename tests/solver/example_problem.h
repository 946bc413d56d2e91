#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/console_host.h"
#include "responsefile/reader.h"
#include "solver/problem_reader.h"

namespace polefit {

/// The record of an example file.
inline ResponseRecord ExampleRecord(const std::string& name) {
  ConsoleHost host;
  ResponseRecord record;
  std::string storedName;
  std::string folder;
  host.OpenForReading(std::string(EXAMPLES) + "/" + name);
  ReadResponse(host, record, storedName, folder);
  return record;
}

/// The problem of a record that has no fault.
inline Problem GoodProblem(const ResponseRecord& record) {
  Findings findings;
  Problem problem = ReadProblem(record, findings);
  EXPECT_TRUE(findings.faults.empty()) << findings.faults.front();
  return problem;
}

inline Problem ExampleProblem(const std::string& name) {
  return GoodProblem(ExampleRecord(name));
}

}  // namespace polefit
