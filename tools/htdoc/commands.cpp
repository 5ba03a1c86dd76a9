#include "command.h"

extern const TCommand kTreeCommand;
extern const TCommand kHtmlCommand;
extern const TCommand kTextCommand;
extern const TCommand kXPathCommand;
extern const TCommand kCssCommand;
extern const TCommand kSelectCommand;
extern const TCommand kStyleCommand;
extern const TCommand kPathCommand;
extern const TCommand kRunsCommand;
extern const TCommand kDrawCommand;
extern const TCommand kMetaCommand;
extern const TCommand kHyphenateCommand;

std::span<const TCommand* const> AllCommands() {
  static constexpr const TCommand* kCommands[] = {
      &kTreeCommand,  &kHtmlCommand, &kTextCommand, &kXPathCommand, &kCssCommand,  &kSelectCommand,
      &kStyleCommand, &kPathCommand, &kRunsCommand, &kDrawCommand,  &kMetaCommand, &kHyphenateCommand,
  };
  return kCommands;
}
