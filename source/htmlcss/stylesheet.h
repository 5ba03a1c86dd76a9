#pragma once

#include <array>

#include "htmlcss/cssenums.h"
#include "htmlcss/customfont.h"
#include "htmlcss/keyframes.h"
#include "htmlcss/stylemaps.h"
#include "htmlcss/weightlist.h"
#include "htruntime/stringlist.h"

namespace ht {

class TCSSParser;
class TStyledHTMLNode;

/// A custom property. The value is that of the last definition.
struct TCSSVariable : TObject {
  hstring Name;  // without the leading "--", as written
  TCSSTokens Tokens;
  /// Of the definitions before the last, in their order.
  std::vector<TCSSTokens> Earlier;

  TCSSVariable(hstring name, TCSSTokens tokens) : Name(std::move(name)), Tokens(std::move(tokens)) {}
};

/// The weight of rules that stand above all others: of style attributes and of script changes. Only an important
/// declaration beats them.
constexpr int32_t kCSSSelfWeight = static_cast<int32_t>(0xFF000000);

/// The rules of one sheet, and the answer to which of its declarations apply to an element.
///
///   TCSSStyleSheet sheet;
///   sheet.Parse(u"p { color: red } .note > p { color: blue }"_hs);
///   TCSSWeightList list;
///   sheet.GetElementSelectors(element, list, &sheet.Main, {});
///   list.GetValue(list.GetCount() - 1)->Tokens[0].Name;      // the winner: "blue" in a note
///
/// A query looks only at the rules filed under the element's id, classes and tag, and at those without any of these. It
/// allocates nothing but the entries of the list. The sheet owns its sections, which own their selectors and values;
/// elements point into them, so a sheet outlives the styles made from it. Nothing here raises. One thread at a time;
/// sheets that no longer change may be read by several.
class TCSSStyleSheet : public TObject {
  HT_CLASS(TCSSStyleSheet, TObject)

 public:
  TCSSStyleSheet() = default;

  /// TCSSSection, in source order.
  THtObjectList fSections{true};
  /// TCSSMediaSet, made by this sheet's parses.
  THtObjectList FOwnMediaSets{true};
  /// For the caller's sheet cache.
  hstring Key;
  /// Rules for elements; and for `::before`, `::after` and `::marker`, null if the sheet has none.
  TCSSStyleMaps Main;
  std::unique_ptr<TCSSStyleMaps> Before;
  std::unique_ptr<TCSSStyleMaps> After;
  std::unique_ptr<TCSSStyleMaps> Marker;
  /// Null if there are none.
  std::unique_ptr<TCSSKeyFrameMap> KeyFrames;
  std::unique_ptr<TStringList> FImports;
  /// TCSSCustomFontFamily by lower-cased name; null if there are none.
  std::unique_ptr<THtObjectDictionary> CustomFonts;
  bool HasMediaQueries = false;
  bool HasMediaSizeQueries = false;
  /// How many holders the sheet has beside the first.
  int32_t RefCounter = 0;
  /// The order of the next selector is one above. A sheet that starts low yields to all others.
  int32_t SelectorCounter = 10000;
  /// Base address for `url()` and imports.
  hstring URL;
  /// All sets in use, also those of assigned sheets. Borrowed.
  THtPointerList MediaSets;
  /// TCSSVariable by name; null if there are none.
  std::unique_ptr<THtObjectDictionary> Variables;

  // Filling

  /// Adds the rules of a text. All get `weight` unless it is -1. `custom` marks them as given by the user.
  void Parse(const hstring& text, int32_t weight = -1, bool custom = false);
  /// Adds bare declarations as a rule for every element, of weight 0 if `weight` is -1.
  void ParseValues(const hstring& text, int32_t weight);
  /// Files a selector, whose section is owned by somebody. One without an order gets the next.
  void AddSelector(TCSSSelector* selector);
  void AddVariable(const hstring& name, const TCSSTokens& tokens);
  /// Appends a declaration with the first token of `value` to the first section; without a section, and for a name that
  /// is not in the property table, nothing. CompiledValues stay as they are.
  void AddInlineValue(const hstring& name, const hstring& value);
  /// Files the rules of another sheet here, which must outlive this one.
  void Assign(const TCSSStyleSheet& other);
  /// Removes all rules and key frames.
  void Clear();
  /// Deletes the declarations of that name, whatever its case, from all sections.
  void ClearProp(std::u16string_view name);
  /// Deletes the sections whose first selector is written like this by its AsString.
  void ClearSection(std::u16string_view selectorText);
  /// The addresses of `@import`, resolved. Loading them is the caller's business.
  TStringList& Imports();

  // Queries

  /// Adds the declarations of all rules in `maps` (null: none) that the element meets. `pseudos` are counted as present
  /// on it, and only rules that name all of them apply: {pcBefore} together with the maps of Before.
  void GetElementSelectors(TStyledHTMLNode& element, TCSSWeightList& list, const TCSSStyleMaps* maps,
                           TCSSPseudo pseudos) const;
  /// Includes pcBefore, pcAfter and pcMarker in `pseudos` where a rule could apply to the element.
  void GetElementPseudoClasses(TStyledHTMLNode& element, TCSSPseudo& pseudos) const;
  /// Adds the declarations of the first `*` rule: how a sheet of one element feeds it.
  void GetAllSelectors(TCSSWeightList& list) const;
  /// Whether the element meets the whole chain. A step to the left that fails at one ancestor is tried at those above.
  /// Takes no more time than compounds times nodes that they can reach, whatever the chain.
  static bool TestElement(TStyledHTMLNode& element, const TCSSSelector& selector, TCSSPseudo pseudos);
  /// Turns the rules of `@media` blocks on and off. Whether any changed.
  bool TestMediaSets(TCSSMedia media, int32_t width, int32_t deviceWidth);
  /// The declarations in force at a percentage of an animation.
  void GetAnimationSelectors(std::u16string_view name, double percent, TCSSWeightList& list) const;
  /// The percentages of an animation's steps; an unknown name leaves `steps` alone.
  void GetAnimationSteps(std::u16string_view name, std::vector<int32_t>& steps) const;
  /// Of the first section; empty if there is none.
  TCSSTokens ValuebyName(std::u16string_view name) const;
  /// Null for an unknown name.
  const TCSSVariable* FindVariable(std::u16string_view name) const;
  /// Each class, or id, that a selector for elements names.
  void GetAllClasses(THtStringList& list) const { Main.GetAllClasses(list); }
  void GetAllIds(THtStringList& list) const { Main.GetAllIds(list); }

  // Text

  /// All sections, those of `@media` blocks within them. Key frames are not written.
  hstring AsString() const;
  /// The declarations of all filed rules, as for a style attribute.
  hstring AsInlineString() const;
  /// Joins four equal sides into shorthands.
  void Minify();
  /// Turns the colours of a sheet for light ground into such for dark ground: dark texts light, light grounds dark.
  void ConvertLighttoDark();
  static hstring LighttoDark(const hstring& text);

  TCSSSection* GetSection(int32_t index) const { return fSections.Get<TCSSSection>(index); }

 private:
  template <class TVisit>
  void VisitMaps(TVisit visit);
  TCSSStyleMaps& MapsFor(const TCSSSelector& selector);
  void AddSection(std::unique_ptr<TCSSSection> section, const hstring& keyFrameName, int32_t weight,
                  bool custom);
  void FileSection(std::unique_ptr<TCSSSection> section, int32_t weight);
  void AddFont(const TCSSSection& section);
  void AddFonts(const THtObjectDictionary& families);
  void TakeImports(const TCSSParser& parser);
  void TakeMediaSets(TCSSParser& parser);

  bool FHasForeignRules = false;  // nothing is merged with rules that belong to another sheet
};

/// The rules that every element has by its tag. They yield to all others of equal weight. Made at the first call.
TCSSStyleSheet& HTML4StyleSheet();
/// What is added to them in quirks mode.
TCSSStyleSheet& HTML4QuirkStyleSheet();

/// A named page format, in millimetres.
struct TPageSize {
  std::u16string_view Name;
  int32_t Width;
  int32_t Height;
};
inline constexpr std::array<TPageSize, 13> PageSizes{{{u"A5", 148, 210},
                                                      {u"A4", 210, 297},
                                                      {u"A3", 297, 420},
                                                      {u"A2", 420, 594},
                                                      {u"B5", 176, 250},
                                                      {u"B4", 250, 353},
                                                      {u"letter", 216, 279},
                                                      {u"legal", 216, 356},
                                                      {u"ledger", 279, 432},
                                                      {u"9x11", 229, 279},
                                                      {u"10x11", 254, 279},
                                                      {u"folio", 216, 330},
                                                      {u"executive", 184, 267}}};

}  // namespace ht
