#include <string>
#include <vector>

#include "platform/linux/console_host.h"
#include "platform/linux/process_start.h"
#include "program/console.h"
#include "program/console_exit.h"

int main(int argc, char** argv) {
  polefit::PrepareProcess();
  polefit::Speaker() = {"polefit-cli", false};
  return polefit::RunGuarded([&] {
    polefit::ConsoleHost console;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return polefit::RunCommandLine(console, arguments).exitCode.value_or(polefit::kWrongUsage);
  });
}
