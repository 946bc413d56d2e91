#include "platform/scripted_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <stdexcept>

namespace polefit::testing {

namespace {

/// The script's answer to a question. Without one the test ends and fails: some questions come back
/// until they are answered.
template <typename Item>
Item TakeFirst(std::deque<Item>& script, const std::string& question) {
  if (script.empty()) throw std::logic_error("not scripted: " + question);
  Item first = std::move(script.front());
  script.pop_front();
  return first;
}

}  // namespace

ScriptedHost::ScriptedHost() : Real(File("registry.reg")), ownFolder(File("Tessel.hz")) {
  Real::ChangeFolder(Root());
  Real::MakeFolder(ownFolder);
}

ScriptedHost::~ScriptedHost() {
  EXPECT_EQ(replies_.size(), 0U) << "box answers that were not asked for";
  EXPECT_EQ(choiceAnswers_.size(), 0U) << "choices that were not asked for";
  EXPECT_EQ(dialogAnswers_.size(), 0U) << "paths that were not asked for";
  std::error_code error;
  std::filesystem::current_path(formerFolder_, error);
}

void ScriptedHost::Fail(Text operation, int number, int call, int times) {
  const int first = calls_[operation] + call;
  for (int i = 0; i < times; ++i) faults_[{operation, first + i}] = number;
}

void ScriptedHost::Note(std::string line) {
  for (std::size_t at = 0; (at = line.find(Root(), at)) != std::string::npos; ++at) {
    line.replace(at, Root().size(), "@");
  }
  transcript.push_back(std::move(line));
}

LinuxHost& ScriptedHost::Try(Text operation, Text detail) {
  const auto fault = faults_.find({operation, ++calls_[operation]});
  if (fault == faults_.end()) return *this;
  Note(operation + detail + " -> error " + std::to_string(fault->second));
  throw MakeRunTimeError(fault->second);
}

LinuxHost& ScriptedHost::Do(Text operation, Text detail) {
  const std::string given = detail.empty() ? "" : " " + detail;
  Try(operation, given);
  if (!detail.starts_with(StateFolder())) Note(operation + given);
  return *this;
}

Reply ScriptedHost::MessageBox(Text text, int style, Text title) {
  const std::map<Reply, std::string> names = {
      {Reply::ok, "ok"}, {Reply::cancel, "cancel"}, {Reply::yes, "yes"}, {Reply::no, "no"}};
  const std::string line = "MessageBox " + std::to_string(style) + " [" + title + "] " + text;
  const Reply reply = TakeFirst(replies_, line);
  Note(line + " -> " + names.at(reply));
  return reply;
}

std::size_t ScriptedHost::Ask(const Choice& choice) {
  std::string line = "Ask " + choice.sentence;
  for (const std::string& button : choice.buttons) line += " [" + button + "]";
  const std::string caption = TakeFirst(choiceAnswers_, line);
  Note(line + " -> " + caption);
  const auto pressed = std::ranges::find(choice.buttons, caption);
  if (pressed == choice.buttons.end()) throw std::logic_error("no button " + caption);
  return static_cast<std::size_t>(pressed - choice.buttons.begin());
}

/// The dialog's judge asks as it does over the real one.
bool ScriptedHost::IsTaken(CommonDialog& dialog) {
  dialog.pressed = 0;
  const bool asks = dialog.judge && !dialog.fileName.empty();
  const auto choice = asks ? dialog.judge(dialog.fileName) : std::nullopt;
  if (choice) dialog.pressed = Ask(*choice);
  return !choice || dialog.pressed + 1 < choice->buttons.size();
}

void ScriptedHost::AskForPath(Text operation, CommonDialog& dialog) {
  const std::string line = operation + " [" + dialog.title + "] " + dialog.fileName;
  lastDialog = dialog;
  do {
    dialog.fileName = TakeFirst(dialogAnswers_, line);
    Note(line + " -> " + dialog.fileName);
  } while (!IsTaken(dialog));
  if (!dialog.fileName.empty()) {
    // An accepted dialog leaves the process in the chosen folder.
    Real::ChangeFolder(dialog.fileName.substr(0, dialog.fileName.rfind('/')));
  } else if (dialog.cancelIsError) {
    throw MakeRunTimeError(error_number::kDialogCancelled);
  }
}

long ScriptedHost::StartProgram(const Command& command) {
  const int style = static_cast<int>(command.windowStyle);
  Do(__func__, std::to_string(style) + " " + CommandLine(command));
  return 4711;
}

ProcessName ScriptedHost::StartProcess(const ProcessStart& start) {
  Do(__func__, CommandLine({start.words.front(), {start.words.begin() + 1, start.words.end()}}));
  const long id = processes.empty() ? 4711 : processes.rbegin()->first + 1;
  if (!start.output.empty()) WriteBytes(start.output, "");
  processes[id] = {static_cast<std::uint64_t>(id) * 10, true, !start.ending.empty(), start.words};
  return {id, processes[id].start};
}

std::optional<ProcessState> ScriptedHost::StateOfProcess(long id) {
  const auto found = processes.find(id);
  return found == processes.end() ? std::nullopt : std::optional(found->second);
}

bool ScriptedHost::EndGroup(long group, bool atOnce) {
  Do(__func__, std::to_string(group) + (atOnce ? " at once" : ""));
  const auto found = processes.find(group);
  return found == processes.end() || found->second.isOwn;
}

std::string ScriptedHost::FormatNow(const char* pattern) {
  std::tm given{};
  ::strptime(time.c_str(), "%Y-%m-%d %H:%M:%S", &given);
  std::array<char, 256> text{};
  std::strftime(text.data(), text.size(), pattern, &given);
  return text.data();
}

void ScriptedHost::EndProgram() {
  Note(__func__);
  throw ProgramEnded{};
}

}  // namespace polefit::testing
