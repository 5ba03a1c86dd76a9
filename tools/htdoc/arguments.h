#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// An option that a command knows.
struct TOption {
  std::string_view Name;  // with its dashes
  bool TakesValue;
};

/// Wrong usage; the message says what.
class EUsage : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The command line behind the command's name: options, and operands in their order. "--" ends the options.
class TArguments {
 public:
  /// Raises EUsage for an unknown option, a missing value, and any number of operands but `operandCount`; with
  /// `andMore`, only for less.
  TArguments(std::span<char* const> words, std::span<const TOption> options, size_t operandCount,
             bool andMore);

  bool Has(std::string_view option) const;
  /// The last value given for an option; `fallback` where it was not given.
  std::string_view Value(std::string_view option, std::string_view fallback = {}) const;
  /// All values given for an option, in their order.
  std::vector<std::string_view> Values(std::string_view option) const;
  /// The value as a number from `low` to `high`. Raises EUsage.
  int Number(std::string_view option, int low, int high) const;
  const std::string& Operand(size_t index) const { return FOperands[index]; }
  size_t OperandCount() const { return FOperands.size(); }
  bool WantsHelp() const { return FWantsHelp; }

 private:
  std::vector<std::pair<std::string_view, std::string_view>> FOptions;
  std::vector<std::string> FOperands;
  bool FWantsHelp = false;
};
