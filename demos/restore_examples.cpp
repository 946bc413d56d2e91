#include "demos/restore_examples.h"

#include <vector>

#include "app/former_versions.h"
#include "app/start_up.h"
#include "demos/demo_runner.h"

namespace polefit {

namespace {

/// An example that is not as it was shipped.
struct ChangedExample {
  std::string name;
  std::string shipped;
};

bool IsAsShipped(Host& host, const std::string& path, const std::string& shipped) {
  return host.StateOfFile(path).has_value() && host.ReadFile(path) == shipped;
}

std::vector<ChangedExample> ChangedExamples(Program& program) {
  std::vector<ChangedExample> changed;
  for (const Demo& demo : kDemos) {
    const std::string name(demo.fileName);
    std::string shipped = program.host.ReadFile(JoinPath(PlacesOf(program).Examples(), name));
    if (!IsAsShipped(program.host, JoinPath(UserFolder(program), name), shipped)) {
      changed.push_back({name, std::move(shipped)});
    }
  }
  return changed;
}

Choice QuestionAbout(const std::vector<ChangedExample>& changed) {
  std::string names;
  for (const ChangedExample& example : changed) {
    names += (names.empty() ? "'" : ", '") + example.name + "'";
  }
  return {"Put back " + names +
              " as shipped? What stands there now is kept under File > Former Versions.",
          {"Restore", "Cancel"}};
}

}  // namespace

void RestoreExamples(Program& program) {
  const std::vector<ChangedExample> changed = ChangedExamples(program);
  if (changed.empty()) {
    program.host.MessageBox("All examples are as they were shipped.", message_style::kOk,
                            "Restore Examples");
    return;
  }
  const bool isWanted = program.host.Ask(QuestionAbout(changed)) == 0;
  if (!isWanted) return;
  for (const ChangedExample& example : changed) {
    PutContentBack(program, JoinPath(UserFolder(program), example.name), example.shipped);
  }
}

}  // namespace polefit
