#include "command.h"
#include "htcanvas/htcanvas.h"
#include "output.h"

using namespace ht;

namespace {

std::string FlagNames(THtTextRunFlags flags) {
  std::string names;
  for (int i = 0; i < HtEnumCount(THtTextRunFlag{}); ++i)
    if (flags.Contains(static_cast<THtTextRunFlag>(i)))
      names += (names.empty() ? "" : ",") + HtToUtf8(HtEnumOf<THtTextRunFlag>().NameOf(i));
  return names.empty() ? "-" : names;
}

int RunRuns(const TArguments& arguments) {
  THtTextRuns runs;
  HtSplitString(HtFromUtf8(arguments.Operand(0)), runs);
  for (int32_t i = 0; i < runs.GetCount(); ++i) {
    const THtTextRun& run = *runs.GetRun(i);
    Print(std::to_string(run.Start) + " " + std::to_string(run.Count) + " " + FlagNames(run.Flags) + " " +
          HtToUtf8(HtEnumOf<THtTextRunBidi>().NameOf(run.Bidi)) + "\n");
  }
  return kFound;
}

}  // namespace

extern const TCommand kRunsCommand = {
    "runs",
    "show where a text may be broken",
    "Usage: htdoc runs TEXT\n"
    "Prints the pieces of TEXT that stay together, one a line: the start, from 1, and the\n"
    "length, both in UTF-16 units, what is known of it, and its direction.\n",
    {},
    "TEXT",
    RunRuns,
};
