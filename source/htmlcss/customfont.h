#pragma once

#include <memory>
#include <vector>

#include "htmlcss/cssenums.h"
#include "htruntime/object.h"
#include "htutils/fontstyle.h"

namespace ht {

/// Splits a style word off the end of a font's full name: "Arial Bold" gives "Arial", "bold" and true. Without one
/// `family` is the name and `styleWord` is empty.
bool ParseFontFamilyName(const hstring& name, hstring& family, hstring& styleWord);

/// One face of a font: what an `@font-face` rule says. The library picks faces and stores their addresses; fetching
/// them is the host's business.
class TCSSCustomFont : public TObject {
  HT_CLASS(TCSSCustomFont, TObject)

 public:
  hstring Family;  // in lower case
  hstring URL;
  /// Free for the host.
  hstring Format;
  /// The `font-style`, in lower case; "normal" if none was given.
  hstring StyleName;
  /// The `font-weight` in lower case, "normal" and "bold" as digits; "400" if none was given.
  hstring WeightName;
  /// The names of `local()`, separated by ";".
  hstring LocalNames;
  THtFontStyles Styles;
  TCSSFontStyle FontStyle = cfsNormal;
  TCSSFontWeight FontWeight = fwNormal;
  /// 1 to 1000; 400 for what is no number.
  int32_t Weight = 400;

  TCSSCustomFont(const hstring& family, const hstring& url, const hstring& format, const hstring& styleName,
                 const hstring& weightName);

 private:
  void NormaliseStyle();
  void NormaliseWeight();
};

/// The faces of one family, which owns them. Indexes count from 0.
class TCSSCustomFontFamily : public TObject {
  HT_CLASS(TCSSCustomFontFamily, TObject)

 public:
  hstring Name;  // in lower case
  std::vector<std::unique_ptr<TCSSCustomFont>> Fonts;

  explicit TCSSCustomFontFamily(const hstring& name);

  void AddFont(std::unique_ptr<TCSSCustomFont> font) { Fonts.push_back(std::move(font)); }
  /// Takes the name and copies of the fonts of another family.
  void Assign(const TCSSCustomFontFamily& other);
  int32_t Count() const { return static_cast<int32_t>(Fonts.size()); }
  /// The face that answers the styles best; underline and strike-out do not count. Null for an empty family.
  TCSSCustomFont* GetFont(THtFontStyles styles) const;
  /// Raises ERangeError "Font index out of range".
  TCSSCustomFont* GetFontByIndex(int32_t index) const;
};

}  // namespace ht
