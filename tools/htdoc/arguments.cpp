#include "arguments.h"

#include <algorithm>
#include <charconv>

TArguments::TArguments(std::span<char* const> words, std::span<const TOption> options, size_t operandCount,
                       bool andMore) {
  bool inOptions = true;
  for (size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (!inOptions || word == "-" || !word.starts_with('-')) {
      FOperands.emplace_back(word);
    } else if (word == "--") {
      inOptions = false;
    } else if (word == "--help") {
      FWantsHelp = true;
    } else {
      const auto known =
          std::find_if(options.begin(), options.end(), [&](const TOption& o) { return o.Name == word; });
      if (known == options.end()) throw EUsage("unknown option " + std::string(word));
      if (known->TakesValue && i + 1 == words.size())
        throw EUsage("option " + std::string(word) + " needs a value");
      FOptions.emplace_back(known->Name, known->TakesValue ? words[++i] : "");
    }
  }
  if (FWantsHelp || FOperands.size() == operandCount || (andMore && FOperands.size() > operandCount)) return;
  throw EUsage(FOperands.size() < operandCount ? "an operand is missing"
                                               : "one operand too many: " + FOperands[operandCount]);
}

bool TArguments::Has(std::string_view option) const {
  return std::any_of(FOptions.begin(), FOptions.end(),
                     [&](const auto& given) { return given.first == option; });
}

std::string_view TArguments::Value(std::string_view option, std::string_view fallback) const {
  for (const auto& [name, value] : FOptions)
    if (name == option) fallback = value;
  return fallback;
}

std::vector<std::string_view> TArguments::Values(std::string_view option) const {
  std::vector<std::string_view> values;
  for (const auto& [name, value] : FOptions)
    if (name == option) values.push_back(value);
  return values;
}

int TArguments::Number(std::string_view option, int low, int high) const {
  const std::string_view text = Value(option);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < low || number > high)
    throw EUsage(std::string(option) + " takes a number from " + std::to_string(low) + " to " +
                 std::to_string(high));
  return number;
}
