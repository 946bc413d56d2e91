#include "platform/scripted_host.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace polefit::testing {

namespace {

/// A test goes no further after a question that it does not know the answer to: some questions
/// come back until they are answered.
[[noreturn]] void FailUnscripted(const std::string& line) {
  ADD_FAILURE() << "not scripted: " << line;
  throw std::logic_error("not scripted: " + line);
}

template <typename Item>
Item TakeFirst(std::deque<Item>& queue, const std::string& line) {
  if (queue.empty()) FailUnscripted(line);
  Item first = std::move(queue.front());
  queue.pop_front();
  return first;
}

const char* NameOf(Answer answer) {
  switch (answer) {
    case Answer::ok:
      return "ok";
    case Answer::cancel:
      return "cancel";
    case Answer::yes:
      return "yes";
    default:
      return "no";
  }
}

}  // namespace

ScriptedHost::ScriptedHost() : LinuxHost(File("registry.reg")) {
  formerFolder_ = LinuxHost::CurrentFolder();
  LinuxHost::ChangeFolder(Root());
  ownFolder = Path("Tessel.hz");
  LinuxHost::MakeFolder(ownFolder);
}

ScriptedHost::~ScriptedHost() {
  EXPECT_TRUE(boxAnswers_.empty()) << boxAnswers_.size() << " box answers were not asked for";
  EXPECT_TRUE(dialogAnswers_.empty()) << dialogAnswers_.size() << " paths were not asked for";
  std::error_code error;
  std::filesystem::current_path(formerFolder_, error);
}

void ScriptedHost::Fail(const std::string& operation, int number, int call, int times) {
  const int first = calls_[operation] + call;
  faults_[operation].push_back({first, first + times - 1, number});
}

std::vector<std::string> ScriptedHost::TakeTranscript() {
  return std::exchange(transcript, {});
}

std::string ScriptedHost::Shown(std::string text) const {
  for (std::size_t at = 0; (at = text.find(Root(), at)) != std::string::npos; ++at) {
    text.replace(at, Root().size(), "@");
  }
  return text;
}

void ScriptedHost::FailIfDue(const std::string& operation, const std::string& line) {
  const int call = ++calls_[operation];
  for (const Fault& fault : faults_[operation]) {
    if (call < fault.firstCall || call > fault.lastCall) continue;
    transcript.push_back(Shown(line) + " -> error " + std::to_string(fault.number));
    throw MakeRunTimeError(fault.number);
  }
}

void ScriptedHost::Do(const std::string& operation, const std::string& detail) {
  const std::string line = detail.empty() ? operation : operation + " " + detail;
  FailIfDue(operation, line);
  transcript.push_back(Shown(line));
}

Answer ScriptedHost::MessageBox(const std::string& text, int style, const std::string& title) {
  const std::string line = "MessageBox " + std::to_string(style) + " [" + title + "] " + text;
  const Answer answer = TakeFirst(boxAnswers_, Shown(line));
  transcript.push_back(Shown(line) + " -> " + NameOf(answer));
  return answer;
}

void ScriptedHost::Ask(const std::string& operation, CommonDialog& dialog) {
  const std::string line = operation + " [" + dialog.title + "] " + dialog.fileName;
  FailIfDue(operation, line);
  lastDialog = dialog;
  dialog.fileName = TakeFirst(dialogAnswers_, Shown(line));
  transcript.push_back(Shown(line + " -> " + dialog.fileName));
  if (dialog.fileName.empty()) {
    if (dialog.cancelIsError) throw MakeRunTimeError(error_number::kDialogCancelled);
    return;
  }
  // An accepted dialog leaves the process in the chosen folder.
  LinuxHost::ChangeFolder(dialog.fileName.substr(0, dialog.fileName.rfind('/')));
}

std::string ScriptedHost::LookUpFile(const std::string& path) {
  FailIfDue("LookUpFile", "LookUpFile " + path);
  return LinuxHost::LookUpFile(path);
}

bool ScriptedHost::LookUpFolder(const std::string& path) {
  FailIfDue("LookUpFolder", "LookUpFolder " + path);
  return LinuxHost::LookUpFolder(path);
}

void ScriptedHost::OpenForReading(const std::string& path) {
  Do("OpenForReading", path);
  LinuxHost::OpenForReading(path);
}

void ScriptedHost::OpenForWriting(const std::string& path) {
  Do("OpenForWriting", path);
  LinuxHost::OpenForWriting(path);
}

std::string_view ScriptedHost::ReadLine() {
  FailIfDue("ReadLine", "ReadLine");
  return LinuxHost::ReadLine();
}

void ScriptedHost::WriteLine(std::string_view line) {
  FailIfDue("WriteLine", "WriteLine");
  LinuxHost::WriteLine(line);
}

int ScriptedHost::CloseFile() {
  Do("CloseFile");
  return LinuxHost::CloseFile();
}

void ScriptedHost::AbandonFile() {
  Do("AbandonFile");
  LinuxHost::AbandonFile();
}

void ScriptedHost::DeleteFile(const std::string& path) {
  Do("DeleteFile", path);
  LinuxHost::DeleteFile(path);
}

void ScriptedHost::MakeFolder(const std::string& path) {
  Do("MakeFolder", path);
  LinuxHost::MakeFolder(path);
}

void ScriptedHost::ChangeFolder(const std::string& path) {
  Do("ChangeFolder", path);
  LinuxHost::ChangeFolder(path);
}

void ScriptedHost::ChangeDrive(const std::string& path) {
  Do("ChangeDrive", path);
}

std::string ScriptedHost::ShortPath(const std::string& folder) {
  FailIfDue("ShortPath", "ShortPath " + folder);
  return LinuxHost::ShortPath(folder);
}

long ScriptedHost::StartProgram(const Command& command) {
  const int style = static_cast<int>(command.windowStyle);
  Do("StartProgram", std::to_string(style) + " " + CommandLine(command));
  return 4711;
}

void ScriptedHost::ShellExecuteA(const std::string& path) {
  Do("ShellExecuteA", path);
}

void ScriptedHost::WaitForSingleObject(long processId) {
  Do("WaitForSingleObject", std::to_string(processId));
}

std::string ScriptedHost::FormatNow(const char* pattern) {
  std::tm now{};
  now.tm_year = 104;
  now.tm_mon = 2;
  now.tm_mday = 3;
  now.tm_hour = 9;
  now.tm_min = 5;
  std::array<char, 256> text{};
  std::strftime(text.data(), text.size(), pattern, &now);
  return text.data();
}

void ScriptedHost::EndProgram() {
  transcript.emplace_back("EndProgram");
  throw ProgramEnded{};
}

}  // namespace polefit::testing
