#pragma once

#include <concepts>

#include "htutils/chunkbuilder.h"

namespace ht {

class TStream;

/// Builds a UTF-16 text by appending: every serializer and tokenizer of the library writes into one.
///
///   TFastString s(4096);                        // chunk size, in UTF-16 units
///   s.Add(u"<p id=\"").Add(42).AddChar(u'"');
///   hstring text = s.GetAsString();             // one allocation, one copy a chunk
///
/// Chunk sizes are chosen per job: 65535 for documents, 4096 or 128 for smaller texts. Nothing is allocated
/// before the first unit. What Add takes is copied. One thread at a time.
class TFastString : public THtChunkBuilder<char16_t> {
  HT_CLASS(TFastString, TObject)

 public:
  explicit TFastString(int32_t chunkSize) : THtChunkBuilder(chunkSize) {}

  /// The encoding that the text is meant for; carried for the serializers, and not used here.
  hstring Charset;

  TFastString& Add(std::u16string_view text) {
    Append(text.data(), text.size());
    return *this;
  }
  template <size_t N>
  TFastString& Add(const char16_t (&literal)[N]) {
    return Add(Literal(literal));
  }
  TFastString& Add(const char16_t* chars, int32_t count) {
    Append(chars, Count(count));
    return *this;
  }
  /// In decimal. A character is no number: use AddChar.
  template <std::integral T>
    requires(!std::same_as<T, char16_t> && !std::same_as<T, char> && !std::same_as<T, wchar_t> &&
             !std::same_as<T, bool>)
  TFastString& Add(T value) {
    AppendInt(static_cast<int64_t>(value));
    return *this;
  }
  /// The value rounded to `decimals` places (ties to even; at most 8), without trailing zeros; a whole number
  /// has no point. `leadingZero` decides between "0.5" and ".5". No locale is asked.
  /// What is not finite is written as "NaN", "INF" or "-INF".
  TFastString& Add(double value, int32_t decimals, bool leadingZero);

  TFastString& AddChar(char16_t c) {
    AppendUnit(c);
    return *this;
  }
  TFastString& Add2Char(char16_t c1, char16_t c2) {
    AppendPair(c1, c2);
    return *this;
  }
  /// `count` blanks.
  TFastString& AddSpaces(int32_t count) {
    AppendRun(u' ', count);
    return *this;
  }
  /// Inserts at the very front.
  void Prepend(std::u16string_view text);
  /// Moves the content of another builder to the end of this one, which leaves that one empty. Whole chunks
  /// change hands; only a single chunk that is less than half full is copied.
  void Grab(TFastString& other);

  void ToString(hstring& text) const { ToStringFrom(text, 1); }
  hstring GetAsString() const;
  /// The content from position `start` (from 1) on.
  void ToStringFrom(hstring& text, int64_t start) const;
  /// All chunks in order as UTF-16, without mark and terminator.
  void SavetoStream(TStream& stream) const;
  /// The same into memory that has room for GetTotalLen units.
  void SavetoBuffer(void* buffer) const;

  /// As Clear, but keeps the first chunk, so that the builder can be filled again without an allocation.
  void ClearandLeaveSpace();
  void DeletefromEnd(int64_t count);
  /// Removes blanks (code 32) from the end.
  void TrimTrailingSpaces();
  /// Removes the codes below 33 from the end.
  void TrimTrailingBlanks();

  /// False on an empty builder.
  bool EndsWith(std::u16string_view text) const;
  /// 0 on an empty builder.
  char16_t LastChar() const;

 private:
  void TrimTrailing(char16_t lowest, char16_t highest);
  void SetTo(std::u16string_view text);
};

}  // namespace ht
