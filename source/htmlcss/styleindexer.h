#pragma once

#include <span>

#include "htdictionary/objectdictionary.h"
#include "htmlcss/cssstyleset.h"

namespace ht {

class TFastString;

/// A class that stands for a style.
struct TCSSStyleIndexerItem : TObject {
  hstring Key;    // what identifies the style
  hstring Style;  // the CSS of the class
  hstring ClassName;
};

/// A class name that was asked for, and the class that stands for it.
struct TStringRec2 : TObject {
  hstring Name;
  hstring ClassName;
};

/// Turns repeated text styles into shared classes while a document is written: each combination of a few properties
/// gets one class name, and the CSS of all classes is written at the end.
///
///   TStyleIndexer indexer;
///   hstring className;
///   indexer.GetClass(set, className);     // "f0"; set keeps what the class does not say
///   indexer.GenerateCSS();                // ".f0{font-family: Arial;font-size:12px;}\r\n"
///
/// One thread at a time. Values are copied as they stand.
class TStyleIndexer : public TObject {
  HT_CLASS(TStyleIndexer, TObject)

 public:
  THtObjectDictionary Items;  // TCSSStyleIndexerItem by Key
  /// The number in the next class name that is made up.
  int32_t NextIndex = 0;
  THtObjectDictionary Aliases;  // TStringRec2 by Name

  TStyleIndexer();

  /// The class for the set's font family, font size, colour, background colour and line height, which are taken out of
  /// the set. Without any of them the class name is empty.
  void GetClass(TCSSStyleSet& set, hstring& className);
  /// The same for SVG text: font family, font size, fill, font weight and font style.
  void GetSVGClass(TCSSStyleSet& set, hstring& className);
  /// The class of a CSS text, which is called `name` if it is new and `name` is not empty; else `name` becomes an alias.
  void GetClass(const hstring& style, const hstring& name, hstring& className);
  /// The class that stands for a name; the name itself if it is no alias.
  hstring FindStyleClass(const hstring& name) const;
  /// One line a class, in no particular order.
  void GenerateCSS(TFastString& builder) const;
  hstring GenerateCSS() const;

 private:
  void GetClassOf(std::span<const hstring> properties, TCSSStyleSet& set, hstring& className);
  TCSSStyleIndexerItem& AddItem(const hstring& key, const hstring& style, const hstring& className);
};

}  // namespace ht
