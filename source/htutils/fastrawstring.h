#pragma once

#include <string>

#include "htruntime/bytes.h"
#include "htutils/chunkbuilder.h"

namespace ht {

/// Builds a sequence of bytes by appending, as TFastString builds text: the writer of all UTF-8 output.
///
///   TFastRawString s(65530);
///   s.Add("<p id=\"").AddInt(42).Add("\">").AddUTF8(text);
///   THtBytes bytes = s.AsBytes();
///
/// The chunk size is in bytes. One thread at a time.
class TFastRawString : public THtChunkBuilder<char> {
  HT_CLASS(TFastRawString, TObject)

 public:
  explicit TFastRawString(int32_t chunkSize) : THtChunkBuilder(chunkSize) {}

  TFastRawString& Add(std::string_view bytes) {
    Append(bytes.data(), bytes.size());
    return *this;
  }
  template <size_t N>
  TFastRawString& Add(const char (&literal)[N]) {
    return Add(Literal(literal));
  }
  TFastRawString& Add(const char* bytes, int32_t count) {
    Append(bytes, Count(count));
    return *this;
  }
  TFastRawString& AddChar(char c) {
    AppendUnit(c);
    return *this;
  }
  TFastRawString& Add2Char(char c1, char c2) {
    AppendPair(c1, c2);
    return *this;
  }
  /// `count` blanks.
  TFastRawString& AddSpaces(int32_t count) {
    AppendRun(' ', count);
    return *this;
  }
  /// In decimal.
  TFastRawString& AddInt(int32_t value) {
    AppendInt(value);
    return *this;
  }
  /// A UTF-16 text as UTF-8. Either half of a surrogate pair takes the unit behind it as its other half, so that
  /// a swapped pair is read as the same character; a half that ends the text is dropped. Where that other unit
  /// is no half, the result is a number outside Unicode, in up to 6 bytes.
  TFastRawString& AddUTF8(std::u16string_view text);

  /// The bytes; ToUTF8String says beside that they are UTF-8, which is not checked.
  void ToString(std::string& text) const;
  void ToUTF8String(std::string& text) const { ToString(text); }
  std::string GetAsString() const;
  THtBytes AsBytes() const;
};

}  // namespace ht
