#include "plots/kept_choices.h"

#include <gtest/gtest.h>

#include "platform/scripted_host.h"

namespace polefit::testing {
namespace {

TEST(KeptChoices, ComeBackAndAreWrittenOnlyWhenTheyDiffer) {
  ScriptedHost host;
  EXPECT_EQ(ReadChoices(host), KeptChoices());
  KeptChoices choices;
  choices.isLinear = true;
  choices.lower = static_cast<int>(DiagramKind::step);
  choices.isShown = false;
  choices.width = 480;
  choices.isLeft = true;
  choices.isFloating = true;
  choices.prefersLower = true;
  KeepChoices(host, choices);
  EXPECT_EQ(ReadChoices(host), choices);
  host.TakeTranscript();
  KeepChoices(host, choices);
  EXPECT_TRUE(host.transcript.empty());
}

TEST(KeptChoices, AreAsAtFirstWhereTheyCannotBeRead) {
  for (const char* const line : {"", "rubbish", "1 0 0 99 1 0 0", "1 0 0 -7 1 0 0"}) {
    ScriptedHost host;
    host.KeepUserSetting("curves", line);
    EXPECT_EQ(ReadChoices(host).lower, -1) << line;
  }
  ScriptedHost host;
  host.KeepUserSetting("curves", "1 1 0 2 0 480");
  EXPECT_TRUE(ReadChoices(host).isLogFrequency);
  EXPECT_FALSE(ReadChoices(host).isLeft) << "a line that an earlier version kept";
}

}  // namespace
}  // namespace polefit::testing
