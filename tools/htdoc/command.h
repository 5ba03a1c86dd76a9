#pragma once

#include <span>
#include <string_view>

#include "arguments.h"

/// One subcommand of htdoc.
struct TCommand {
  std::string_view Name;
  /// One line for the list of commands.
  std::string_view Summary;
  /// The manual page.
  std::string_view Help;
  std::span<const TOption> Options;
  /// The names of the operands: "PATH FILE". In brackets at the end, one of which there may be any number.
  std::string_view Operands;
  /// Returns the exit status.
  int (*Run)(const TArguments& arguments);
};

constexpr int kFound = 0;
constexpr int kNothingFound = 1;
constexpr int kFailed = 2;

/// All commands, in the order in which they are listed.
std::span<const TCommand* const> AllCommands();
