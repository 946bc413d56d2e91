#include "record/finding.h"

#include <algorithm>

namespace polefit {

namespace {

std::vector<std::string> Texts(const std::vector<Finding>& findings, bool areFaults) {
  std::vector<std::string> texts;
  for (const Finding& finding : findings) {
    if (finding.IsFault() == areFaults) texts.push_back(finding.text);
  }
  return texts;
}

}  // namespace

std::vector<std::string> FaultTexts(const std::vector<Finding>& findings) {
  return Texts(findings, true);
}

std::vector<std::string> WarningTexts(const std::vector<Finding>& findings) {
  return Texts(findings, false);
}

bool HasFault(const std::vector<Finding>& findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding& finding) { return finding.IsFault(); });
}

}  // namespace polefit
