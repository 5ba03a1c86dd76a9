#pragma once

#include "htmlcss/csssection.h"

namespace ht {

/// Makes the CompiledValues of a section: takes every shorthand of its Values apart. What is no known property is left
/// out, and so is a part that does not prepare.
class THtShorthandCompiler {
 public:
  explicit THtShorthandCompiler(TCSSSection& section) : FSection(section), FResult(section.CompiledValues) {}

  void Run();

 private:
  // Ways of adding a record. Those of a longhand are prepared as if it had been written out.

  void AddCopy();
  void AddOne(const TCSSPropRec& prop, int32_t index) { AddSpan(prop, index, index, true); }
  void AddOne(TCSSProperty prop, int32_t index);
  /// The item at the index, a function up to its parenthesis; the index moves behind it. The index of the record, or -1.
  int32_t AddRun(const TCSSPropRec& prop, int32_t& index);
  /// The same value as that of a record, which it shares; -1 stands for one that meant nothing.
  void AddTwin(const TCSSPropRec& prop, int32_t record);
  void AddWord(TCSSProperty prop, const hstring& word);
  /// Unless `prepared` is asked for, the record stays also when it means nothing.
  int32_t AddSpan(const TCSSPropRec& prop, int32_t first, int32_t last, bool prepared);
  int32_t AddRecord(const TCSSPropRec& prop, TCSSTokens tokens, bool prepared);

  void Compile();
  void CompileComplex();
  void CompileSides();
  void CompilePair();
  void CompileInOrder();
  void CompileFont();
  void CompileBorder();
  void AddBorderStyle(int32_t index);
  void CompileBackground();
  void CompileBackgroundWord(int32_t index);
  int32_t CompileBackgroundFunction(int32_t index);
  void CompileTextDecoration();
  void AddPosition(int32_t index);

  int32_t Count() const { return FValue->Tokens.Count(); }
  TCSSToken& Token(int32_t index) const { return FValue->Tokens[index]; }
  int32_t EndOfFunction(int32_t index) const;
  int32_t EndOfSpan(int32_t index) const;
  bool IsSlash(int32_t index) const;

  TCSSSection& FSection;
  TCSSValues& FResult;
  const TCSSValue* FValue = nullptr;  // the one being compiled
  // What the background shorthand has seen so far.
  bool FImage = false, FX = false, FY = false;
};

}  // namespace ht
