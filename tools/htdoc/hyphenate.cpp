#include "command.h"
#include "document.h"
#include "htcanvas/language.h"
#include "htruntime/numformat.h"
#include "htruntime/stream.h"
#include "output.h"

using namespace ht;

namespace {

int RunHyphenate(const TArguments& arguments) {
  THtLanguage& language = THtLanguage::GetLanguage(HtFromUtf8(arguments.Operand(0)));
  for (const std::string_view list : arguments.Values("--list")) {
    const std::string bytes = ReadInput(std::string(list));
    TBytesStream stream(THtBytes(bytes.begin(), bytes.end()));
    language.LoadHyphenationfromStream(stream);
  }
  for (size_t i = 1; i < arguments.OperandCount(); ++i) {
    hstring line = HtFromUtf8(arguments.Operand(i));
    for (const uint32_t position : language.GetHyphenationPositions(line))
      line += u" " + HtIntToStr(position);
    PrintLine(line);
  }
  return kFound;
}

constexpr TOption kOptions[] = {{"--list", true}};

}  // namespace

extern const TCommand kHyphenateCommand = {
    "hyphenate",
    "tell where words may be hyphenated",
    "Usage: htdoc hyphenate LANG [--list FILE]... WORD...\n"
    "Prints a line for each word: the word, and the letters, counted from 1, before which it may\n"
    "break. Words that no list holds have breaks in Russian only, where LANG is ru.\n"
    "\n"
    "Options:\n"
    "  --list FILE      a word a line, one blank, and the word with - at its breaks:\n"
    "                   table ta-ble\n",
    kOptions,
    "LANG WORD [WORD]",
    RunHyphenate,
};
