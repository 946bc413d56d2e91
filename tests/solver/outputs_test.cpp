#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "platform/temporary_folder.h"
#include "solver/example_problem.h"
#include "solver/json_report.h"
#include "solver/run.h"
#include "solver/summary.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Json = nlohmann::json;

/// The outcome for a file of these bytes.
RunOutcome OutcomeOf(const std::string& bytes) {
  const TemporaryFolder folder;
  ConsoleHost host;
  std::ostringstream out, err;
  WriteBytes(folder.File("x.dat"), bytes);
  const RunFiles files = ParseCommandLine({folder.File("x.dat")}, host).files.at(0);
  return SolveFile(host, files, {out, err, [] { return 0; }});
}

TEST(JsonReport, HoldsTheAnswerWithTrueSigns) {
  const RunOutcome outcome = OutcomeOf(FileBytes(EXAMPLES "/Ex-Delay.101"));
  const Json json = Json::parse(OutcomeAsJson(outcome));
  EXPECT_EQ(json["result"]["exit"], 0);
  EXPECT_EQ(json["F"].get<double>(), outcome.figures->cost);  // every digit
  EXPECT_EQ(json["largest"]["row"], 4);
  EXPECT_NEAR(json["delay"]["ripple_ns"].get<double>(), 7.536, .001);
  EXPECT_NEAR(json["sidelobes"][0]["db"].get<double>(), -28.4, .05);
  EXPECT_EQ(json["findings"], Json::array());
  std::vector<std::string> kinds;
  for (const Json& location : json["locations"]) kinds.push_back(location["kind"]);
  EXPECT_THAT(kinds, ElementsAre("pole pair", "pole pair", "pole pair", "lossless sigma zero",
                                 "own pole", "omega zero"));
  const Json& pole = json["locations"][1];
  EXPECT_EQ(pole["question"], "8");
  EXPECT_EQ(pole["index"], 2);
  EXPECT_LT(pole["real"].get<double>(), 0);
  EXPECT_NEAR(pole["real_rads"].get<double>() / pole["real"].get<double>(), 6.283185307e7, 1);
  EXPECT_EQ(pole["determined"], true);
  EXPECT_GT(json["locations"][3]["real"].get<double>(), 0);
  EXPECT_EQ(json["locations"][4]["real"], -json["locations"][3]["real"].get<double>());
  EXPECT_EQ(json["locations"][5]["bound"], "held");
  EXPECT_EQ(json["locations"][5]["Q"], nullptr);
}

TEST(JsonReport, TellsFaultsAsData) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "8=.1 .2");
  record.passband.At(4, 3) = "-1";
  RunOutcome outcome;
  outcome.exit = Exit::faultyAnswers;
  ReadProblem(record, outcome.findings);
  const Json json = Json::parse(OutcomeAsJson(outcome));
  EXPECT_EQ(json["F"], nullptr);
  EXPECT_EQ(json["locations"], Json::array());
  ASSERT_EQ(json["findings"].size(), 2);
  EXPECT_EQ(json["findings"][0]["question"], "8");
  EXPECT_EQ(json["findings"][0]["row"], nullptr);
  EXPECT_EQ(json["findings"][1]["table"], "passband");
  EXPECT_EQ(json["findings"][1]["column"], 3);
  EXPECT_EQ(json["findings"][1]["severity"], "fault");
  EXPECT_EQ(Json::parse(OutcomeAsJson(OutcomeOf("torn")))["result"]["exit"], 3);
}

TEST(JsonReport, IsValidWhateverAFileIsCalled) {
  RunOutcome outcome;
  outcome.findings = {{{}, Severity::fault, "Cannot read the data file 'x\xFF\x01\n'"}};
  EXPECT_EQ(Json::parse(OutcomeAsJson(outcome))["findings"][0]["text"],
            "Cannot read the data file 'x\xEF\xBF\xBD\x01\n'");
}

/// Runs a summary of three files, one of which is missing.
std::string SummaryOf(const std::string& folder, std::vector<std::string> options) {
  ConsoleHost host;
  options.insert(options.end(), {"--summary", "--out", folder, EXAMPLES "/Ex-Delay.101",
                                 folder + "/not, here", EXAMPLES "/Ex-Zpair.1"});
  const RunOne run = [](const RunFiles& files, std::ostream& errors) {
    ConsoleHost own;
    std::ostream nowhere(nullptr);
    return SolveFile(own, files, {nowhere, errors, [] { return 0; }});
  };
  std::ostringstream out, err;
  EXPECT_EQ(RunSummary(
                ParseCommandLine(options, host), run, [] { return 0; }, out, err),
            Exit::unreadable);
  EXPECT_THAT(err.str(), HasSubstr("No such file or directory"));
  return out.str();
}

TEST(SummaryOfFiles, IsTheSameForAnyNumberOfRunsAtOnce) {
  const TemporaryFolder folder;
  const std::string lines = SummaryOf(folder.Path(), {"--csv"});
  EXPECT_THAT(lines, StartsWith("file,exit,F,rms,maxdb,dbat,ripple_ns,agree,starts,evals\n" EXAMPLES
                                "/Ex-Delay.101,0,1.595938e-04,3.088e-03,4.408,9.5,7.53"));
  EXPECT_THAT(lines, HasSubstr("\n\"" + folder.Path() + "/not, here\",3,,,,,,,,\n"));
  EXPECT_EQ(SummaryOf(folder.Path(), {"--csv", "--jobs", "3"}), lines);
  EXPECT_THAT(SummaryOf(folder.Path(), {"--jobs", "9"}), HasSubstr("/Ex-Zpair.1"));
  EXPECT_THAT(FileBytes(folder.File("Ex-Zpair.1.out.txt")), HasSubstr("End of report."));
}

TEST(SummaryOfFiles, RefusesFilesWhoseOutputsWouldMeet) {
  ConsoleHost host;
  std::ostringstream out, err;
  const Request request = ParseCommandLine({"--summary", "a/x.1", "b/x.1", "--out", "o"}, host);
  const RunOne none = [](const RunFiles&, std::ostream&) { return RunOutcome(); };
  EXPECT_EQ(RunSummary(
                request, none, [] { return 0; }, out, err),
            Exit::usage);
  EXPECT_THAT(err.str(), HasSubstr("'o/x.1.out.txt'"));
}

}  // namespace
}  // namespace polefit::testing
