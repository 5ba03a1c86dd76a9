#pragma once

#include <bitset>

#include "htruntime/interface.h"

namespace ht {

/// A set of 8-bit characters, as a constant table: `constexpr TCharSet kStops(u",;")`.
class TCharSet {
 public:
  constexpr explicit TCharSet(std::u16string_view chars) {
    for (char16_t c : chars) FBits[c / 64 % 4] |= uint64_t{1} << (c % 64);
  }
  constexpr bool Contains(char16_t c) const { return c < 256 && (FBits[c / 64] >> (c % 64) & 1); }

 private:
  uint64_t FBits[4] = {};
};

/// What a reader that is handed a cursor may rely on. See TStringParser for each operation.
class IStringParser : public IHtInterface {
 public:
  static constexpr TGuid kGuid{0x6D2B0C51, 0x8E47, 0x4C0A, {0x9B, 0x13, 0x57, 0xE4, 0x2A, 0x90, 0xC6, 0x1F}};

  virtual char16_t GetCurrent() const = 0;
  virtual char16_t Next() = 0;
  virtual void Skip(int32_t count) = 0;
  virtual void SkipBlanks() = 0;
  virtual bool Empty() const = 0;
  virtual int32_t Pos() const = 0;
  virtual int32_t Line() const = 0;
  virtual hstring Tail() const = 0;

 protected:
  ~IStringParser() = default;
};

/// A cursor over UTF-16 text that every small reader of the library shares.
///
///   TStringParser parser(u"12px, 3");
///   parser.ReadNum();        // 12, the cursor is on 'p'
///   parser.Pos();            // 3: positions count from 1, in UTF-16 units
///
/// The parser shares the text and keeps it alive. One unit behind the end is always zero, so loops may look
/// at `*p` without asking for the end first; zeros inside the text are ordinary characters. Blanks are the
/// codes below 33 unless an operation says otherwise. One thread at a time.
class TStringParser final : public TInterfacedObject, public IStringParser {
  HT_CLASS(TStringParser, TInterfacedObject)

 public:
  explicit TStringParser(hstring text) { Init(std::move(text)); }

  /// Restarts at the first character of a new text.
  void Init(hstring text);

  /// The current character; 0 at the end.
  char16_t GetCurrent() const override { return *p; }
  /// Advances one character unless at the end; the character now under the cursor.
  char16_t Next() override {
    if (p < pend) ++p;
    return *p;
  }
  /// Moves by `count` characters, at most to the end (or, for a negative count, to the start).
  void Skip(int32_t count) override;
  /// Moves to the next `c`, or to the end.
  void Skipto(char16_t c);
  void SkipBlanks() override {
    while (p < pend && *p < 33) ++p;
  }
  /// Cuts CR, LF and blank (32) from the end of the text. The cursor keeps its character position.
  void SkipEndBlanks();

  /// At or past the end.
  bool Empty() const override { return p >= pend; }
  /// At the start.
  bool First() const { return p == Begin(); }
  /// Counts from 1.
  int32_t Pos() const override { return static_cast<int32_t>(p - Begin()) + 1; }
  /// The number of LF before the cursor: 0 on the first line.
  int32_t Line() const override;
  /// The distance of the next `c` from the cursor, 1 if it is under the cursor; 0 if there is none.
  int32_t CharPos(char16_t c) const;
  /// The text at the cursor, its ASCII letters in lower case, starts with `lowerCaseText`.
  bool StartsWith(std::u16string_view lowerCaseText) const;
  /// The rest of the text.
  hstring Tail() const override { return {p, static_cast<size_t>(pend - p)}; }
  const char16_t* PTail() const { return p; }
  std::u16string_view Rest() const { return {p, static_cast<size_t>(pend - p)}; }

  /// The first character unconditionally, then up to blank (32), CR, LF, TAB, ",", "(" or ")", which stays.
  void ReadWord(hstring& text, bool skipBlanks);
  /// The next of an argument list: skips blanks and one "," or "(", then reads up to ",", "(" or ")", which
  /// stays. False at the end, and on ")", which is skipped.
  bool ReadParam(hstring& text);
  /// Reads up to the next `c` or the end; a run of `c` at the start is part of the text. With `trim` blanks
  /// are dropped on both sides and the `c` is stepped over; without, it stays.
  void ReadtoChar(char16_t c, hstring& text, bool trim);
  /// Skips blanks, reads up to a character of the set or the end; the stopper stays.
  void ReadtoChars(const TCharSet& set, hstring& text);
  /// Reads a stretch between two places where a line may break: up to a blank (32), "-", "/" or Chinese
  /// character, which stays. One such character, and blanks, at the start are part of the stretch, and a
  /// Chinese character before closing punctuation stays with it. Empty only at the end.
  void ReadtoWordBreak(hstring& text);
  /// Reads up to CR or LF and steps past the line end; CR LF counts as one.
  void ReadLn(hstring& text);

  // Numbers. All skip blanks, one "," with blanks behind it (ReadIntOrFloat: no ",") and take one sign. With
  // RaiseException, EConvertError "Incorrect number" where something other than a digit follows. The end of the text
  // gives 0; with RaiseException ReadNumEx and ReadIntOrFloat raise there.

  /// Stops, with digits left unread, before the value could pass 32 bits.
  int32_t ReadInt();
  /// As ReadInt, but exactly one digit.
  int32_t ReadInt1();
  /// Base 16 and base 2, into 64 bits without an overflow check. "+" and then "-" may stand in front. Never raise.
  int64_t ReadHex();
  int64_t ReadBin();
  /// A decimal number with fraction, without exponent. The first seven digits of the fraction count.
  double ReadNum();
  /// A decimal number with fraction and exponent. With RaiseException a "0" before a digit, and a "." without
  /// a digit behind it, raise too. An exponent of 38 or more is read but applied only with RaiseException.
  double ReadNumEx();
  /// A number that stays an integer as long as it can: true and `i`, or false and `f`. ".." ends the number
  /// and is left unread. An exponent of 300 or more is read but not applied.
  bool ReadIntOrFloat(int64_t& i, long double& f);

  int32_t QueryInterface(const TGuid& id, void** result) override;
  int32_t _AddRef() override { return AddReference(); }
  int32_t _Release() override { return ReleaseReference(); }

 private:
  hstring s;
  char16_t fNull = 0;

 public:
  const char16_t* p = nullptr;
  const char16_t* pend = nullptr;
  bool RaiseException = false;

 private:
  const char16_t* Begin() const { return s.Empty() ? &fNull : s.Data(); }
  hstring From(const char16_t* start) const { return {start, static_cast<size_t>(p - start)}; }
  bool AtDigit() const { return *p >= u'0' && *p <= u'9'; }

  [[noreturn]] static void RaiseNumber();
  bool ReadHead(bool comma, bool& negative);
  int64_t ReadDigits(int64_t limit);
  int32_t ReadLimited(int64_t limit, int maxDigits);
  int64_t ReadBased(int base);
  double ReadFraction();
  void CheckStrictInteger() const;
  bool AtExponent() const;
};

}  // namespace ht
