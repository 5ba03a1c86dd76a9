#pragma once

#include <concepts>
#include <initializer_list>

#include "htruntime/hstring.h"

namespace ht {

/// One argument of HtFormat: a number or a text. Texts are borrowed for the call.
class THtFormatArg {
 public:
  enum TKind : uint8_t { faInt, faFloat, faText };

  template <std::integral T>
  THtFormatArg(T value) : FKind(faInt), FInt(static_cast<int64_t>(value)) {}
  template <std::floating_point T>
  THtFormatArg(T value) : FKind(faFloat), FFloat(static_cast<double>(value)) {}
  template <class T>
    requires(std::convertible_to<const T&, std::u16string_view>)
  THtFormatArg(const T& text) : FKind(faText), FText(text) {}

  TKind Kind() const { return FKind; }
  int64_t Int() const { return FInt; }
  double Float() const { return FKind == faInt ? static_cast<double>(FInt) : FFloat; }
  std::u16string_view Text() const { return FText; }

 private:
  TKind FKind;
  int64_t FInt = 0;
  double FFloat = 0;
  std::u16string_view FText;
};

/// A message from a pattern and its arguments:
///
///   HtFormat(u"Line %d: %s", 12, name);
///
/// `%s` text, `%d` integer, `%f` fixed float (2 decimals unless told), `%x` hexadecimal in upper case, `%%` a percent
/// sign; between "%" and the letter an optional "-" (left-aligned), width and "." precision: the most
/// characters of a text, the least digits of a number, the decimals of a float. No locale is asked.
/// Raises EConvertError "Format '%s' invalid or incompatible with argument" when the pattern asks for an
/// argument that is missing or of another kind.
hstring HtFormatArgs(std::u16string_view pattern, std::initializer_list<THtFormatArg> args);

template <class... TArgs>
hstring HtFormat(std::u16string_view pattern, const TArgs&... args) {
  return HtFormatArgs(pattern, {THtFormatArg(args)...});
}

}  // namespace ht
