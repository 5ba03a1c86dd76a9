#include "command.h"

extern const TCommand kTreeCommand;
extern const TCommand kHtmlCommand;
extern const TCommand kTextCommand;
extern const TCommand kXPathCommand;

std::span<const TCommand* const> AllCommands() {
  static constexpr const TCommand* kCommands[] = {
      &kTreeCommand,
      &kHtmlCommand,
      &kTextCommand,
      &kXPathCommand,
  };
  return kCommands;
}
