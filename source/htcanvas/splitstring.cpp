#include "htcanvas/splitstring.h"

namespace ht {

namespace {

constexpr char16_t kTab = 9, kLineFeed = 10, kReturn = 13, kBlank = 32, kNoBreakSpace = 160,
                   kSoftHyphen = 0xAD;
constexpr std::u16string_view kBreakingMarks = u"!%,-?\u00AD";
constexpr std::u16string_view kClosing =
    u"!),.:;?]}"
    u"\uFF0C\u3001\u3002\u2014\u02C7\u0401\u3003\u3005\uFF5E\u2026\u2019\u201D\u3015\u3009\u300B\u300D\u300F"
    u"\u3017\u3011";
constexpr std::u16string_view kOpening = u"([{\u2018\u201C";
constexpr THtTextRunFlags kBlanks{trfSpace, trfBlank, trfBreakBefore, trfBreakAfter};

constexpr bool Contains(std::u16string_view set, char16_t c) {
  return set.find(c) != std::u16string_view::npos;
}
constexpr bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
constexpr bool IsWordChar(char16_t c) {
  return IsDigit(c) || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
constexpr bool IsBreakingSpace(char16_t c) {
  return c == kTab || c == kLineFeed || c == kReturn || c == kBlank;
}
constexpr bool IsBracketLike(char16_t c) { return (c >= 0x5B && c <= 0x60) || (c >= 0x7B && c <= 0x7E); }
constexpr bool IsPunctuation(char16_t c) {
  return (c >= 0x21 && c <= 0x2F) || (c >= 0x3A && c <= 0x40) || IsBracketLike(c) || c == kSoftHyphen;
}

// Reads one run after the other. The text ends with a zero unit, which no run takes unless it stands in the text.
class TRunReader {
 public:
  explicit TRunReader(std::u16string_view text) : FText(text) {}

  bool AtEnd() const { return FPos >= FText.size(); }
  int32_t Position() const { return static_cast<int32_t>(FPos) + 1; }

  void Read(THtTextRun& run) {
    const char16_t c = At(FPos);
    run.Bidi = bdNeutral;
    if (c == kTab || c == kBlank || c == kNoBreakSpace) {
      run.Flags = c == kNoBreakSpace ? THtTextRunFlags{trfSpace} : kBlanks;
      if (c == kTab) run.Flags.Include(trfTab);
      while (!AtEnd() && At(FPos) == c) ++FPos;
    } else if (c == kReturn || c == kLineFeed) {
      run.Flags = kBlanks + THtTextRunFlags{trfLineBreak};
      ++FPos;
      if (At(FPos) == (c == kReturn ? kLineFeed : kReturn)) ++FPos;
    } else if (IsDigit(c)) {
      Number(run);
    } else if (IsPunctuation(c)) {
      Punctuation(run, c);
    } else if (IsChinese(c)) {
      Chinese(run, c);
    } else {
      Letters(run, c);
    }
  }

 private:
  char16_t At(size_t index) const { return index < FText.size() ? FText[index] : u'\0'; }
  char16_t Before() const { return FPos > 0 ? FText[FPos - 1] : u'\0'; }

  void Number(THtTextRun& run) {
    run.Bidi = bdWeakLRT;
    for (++FPos; !AtEnd() && At(FPos) != 0; ++FPos) {
      const char16_t c = At(FPos);
      if (IsWordChar(c)) continue;
      const bool joins = c == u',' || c == u'.' || c == u'/'
                             ? IsWordChar(Before()) && IsWordChar(At(FPos + 1))
                             : CharBidi(c) == bdLTR;
      if (!joins) return;
    }
  }

  void Punctuation(THtTextRun& run, char16_t c) {
    const bool slash = c == u'/';
    if (slash || Contains(kBreakingMarks, c)) {
      run.Flags.Include(slash ? trfBreakBefore : trfBreakAfter);
      if ((c == u',' || c == u'-') && IsDigit(At(FPos + 1))) {
        run.Bidi = bdWeakLRT;
        run.Flags = FPos == 0 || IsDigit(Before()) ? THtTextRunFlags() : THtTextRunFlags{trfBreakBefore};
      }
      ++FPos;
      return;
    }
    const auto goesOn = [](char16_t next) {
      return (next >= 1 && next <= 0x3F && !IsBreakingSpace(next) && !IsDigit(next)) || IsBracketLike(next);
    };
    for (++FPos; !AtEnd() && goesOn(At(FPos));) ++FPos;
  }

  void Chinese(THtTextRun& run, char16_t c) {
    run.Bidi = bdLTR;
    ++FPos;
    if (!Contains(kClosing, c)) run.Flags.Include(trfBreakBefore);
    if (!Contains(kOpening, c) && (AtEnd() || !Contains(kClosing, At(FPos))))
      run.Flags.Include(trfBreakAfter);
  }

  static bool EndsWord(char16_t c) {
    return IsBreakingSpace(c) || c == kNoBreakSpace || (c >= 0x21 && c <= 0x2F && c != u'\'') ||
           (c >= 0x3A && c <= 0x3F) || IsChinese(c);
  }

  void Letters(THtTextRun& run, char16_t c) {
    run.Bidi = CharBidi(c);
    for (++FPos; !AtEnd();) {
      const char16_t next = At(FPos);
      if (EndsWord(next)) return;
      const bool joins =
          CharBidi(next) == run.Bidi || IsHighSurrogate(next) ||
          (run.Bidi == bdLTR && (next == u'\'' || IsDigit(next) || next == u'_' || next == u'`'));
      if (!joins) return;
      ++FPos;
      if (IsHighSurrogate(next) && (At(FPos) >> 10) == 0x37) ++FPos;  // a pair stays together
      if (next == kSoftHyphen) {
        run.Flags.Include(trfBreakAfter);
        return;
      }
    }
  }

  std::u16string_view FText;
  size_t FPos = 0;
};

}  // namespace

void HtSplitString(const hstring& text, THtTextRuns& runs, const THtTextRunClass* runClass) {
  if (!runClass) runClass = THtTextRun::Class();
  for (TRunReader reader(text); !reader.AtEnd();) {
    auto* run = static_cast<THtTextRun*>(runClass->NewInstance().release());
    runs.Add(run);
    run->Start = reader.Position();
    reader.Read(*run);
    run->Count = reader.Position() - run->Start;
  }
}

}  // namespace ht
