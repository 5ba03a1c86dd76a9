// htdoc: what the library does, on real files. One subcommand a capability; each stands in a file of its own.

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>

#include "command.h"
#include "output.h"

namespace {

constexpr std::string_view kIntroduction =
    "Usage: htdoc COMMAND [OPTION...] OPERAND...\n"
    "Reads HTML as it is found and shows what is in it.\n"
    "\n"
    "Commands:\n";

constexpr std::string_view kGeneral =
    "\n"
    "htdoc COMMAND --help tells more. \"-\" as a file name is standard input. \"--\" ends the\n"
    "options. All output is UTF-8.\n"
    "\n"
    "Exit status: 0; 1 when a query finds nothing; 2 for wrong usage, unreadable input or a\n"
    "refused document, with one line on standard error.\n";

void PrintCommands() {
  Print(kIntroduction);
  for (const TCommand* command : AllCommands()) {
    std::string line = "  " + std::string(command->Name);
    line.resize(std::max<size_t>(line.size() + 2, 13), ' ');
    Print(line + std::string(command->Summary) + "\n");
  }
  Print(kGeneral);
}

size_t CountWords(std::string_view text) {
  return text.empty() ? 0 : static_cast<size_t>(std::count(text.begin(), text.end(), ' ')) + 1;
}

TArguments Arguments(const TCommand& command, std::span<char* const> words) {
  const bool andMore = command.Operands.ends_with(']');
  return {words, command.Options, CountWords(command.Operands) - andMore, andMore};
}

int Run(std::span<char* const> words) {
  if (words.empty()) throw EUsage("a command is missing (htdoc --help lists them)");
  const std::string_view name = words[0];
  if (name == "--help") {
    PrintCommands();
    return kFound;
  }
  const auto commands = AllCommands();
  const auto found =
      std::find_if(commands.begin(), commands.end(), [&](const TCommand* c) { return c->Name == name; });
  if (found == commands.end())
    throw EUsage("unknown command " + std::string(name) + " (htdoc --help lists them)");
  const TCommand& command = **found;
  try {
    const TArguments arguments = Arguments(command, words.subspan(1));
    if (!arguments.WantsHelp()) return command.Run(arguments);
  } catch (const EUsage& error) {
    throw EUsage(std::string(name) + ": " + error.what() + " (htdoc " + std::string(name) +
                 " --help tells more)");
  }
  Print(command.Help);
  return kFound;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  try {
    const int status = Run(std::span<char* const>(argv, static_cast<size_t>(argc)).subspan(argc > 0 ? 1 : 0));
    FlushOutput();
    return status;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "htdoc: %s\n", error.what());
    return kFailed;
  }
}
