#include "htcanvas/language.h"

#include <algorithm>

#include "htruntime/stringlist.h"
#include "htruntime/unicode.h"

namespace ht {

namespace {

constexpr int32_t kLanguages = 16, kWords = 32001;
constexpr size_t kShortestWord = 4;
constexpr std::u16string_view kVowels = u"ЁАЕИЙОУЫЭЮЯ";
constexpr char16_t kShortI = u'Й';

// A word in upper case with letters that count from 1.
class TRussianWord {
 public:
  explicit TRussianWord(std::u16string_view word) : FWord(word) {}

  std::vector<uint32_t> Positions() const {
    if (std::count_if(FWord.begin(), FWord.end(), IsVowel) < 2) return {};
    std::vector<uint32_t> positions;
    const size_t last = LastBreak();
    for (size_t i = 1; i < last;) {
      i = NextBreak(i, last);
      if (i <= last) positions.push_back(static_cast<uint32_t>(i));
    }
    return positions;
  }

 private:
  static bool IsVowel(char16_t c) { return kVowels.find(c) != kVowels.npos; }
  bool VowelAt(size_t i) const { return IsVowel(FWord[i - 1]); }

  // The last vowel, but not the last letter: one letter alone is not carried over.
  size_t LastBreak() const {
    size_t i = FWord.size();
    while (i > 1 && !VowelAt(i)) --i;
    return std::min(i, FWord.size() - 1);
  }

  // Behind a run of vowels or consonants and the letter after it.
  size_t NextBreak(size_t i, size_t last) const {
    const bool vowels = VowelAt(i);
    while (i < last && VowelAt(i) == vowels) ++i;
    ++i;
    if (vowels)
      while (i < last && VowelAt(i)) ++i;
    if (FWord[i - 1] == kShortI && VowelAt(i - 1)) ++i;
    return i;
  }

  std::u16string_view FWord;
};

}  // namespace

THtLanguage& THtLanguage::GetLanguage(const hstring& name) {
  static THtObjectDictionary languages(kLanguages, true, HtNameOffset(&THtLanguage::Name));
  if (auto* known = languages.Get<THtLanguage>(name)) return *known;
  auto language = std::make_unique<THtLanguage>();
  language->Name = name;
  languages.AddObject(language.get());
  return *language.release();
}

THtObjectDictionary& THtLanguage::Words() {
  if (!Hyphen)
    Hyphen = std::make_unique<THtObjectDictionary>(kWords, true, HtNameOffset(&THtHyphenItem::Word));
  return *Hyphen;
}

void THtLanguage::AddHyphenation(const hstring& word, std::vector<uint32_t> positions) {
  auto item = std::make_unique<THtHyphenItem>();
  item->Word = HtUpperCase(word);
  item->Positions = std::move(positions);
  Words().Put(item->Word, item.get());
  item.release();
}

void THtLanguage::LoadHyphenationfromStream(TStream& stream) {
  TStringList lines;
  lines.LoadFromStream(stream);
  for (int32_t i = 0; i < lines.GetCount(); ++i) {
    const std::u16string_view line = lines.Get(i);
    const size_t blank = line.find(u' ');
    if (blank == line.npos || blank == 0) continue;
    std::vector<uint32_t> positions;
    uint32_t letter = 1;
    for (const char16_t c : line.substr(blank + 1))
      if (c == u'-')
        positions.push_back(letter);
      else
        ++letter;
    AddHyphenation(line.substr(0, blank), std::move(positions));
  }
}

std::vector<uint32_t> THtLanguage::GetHyphenationPositions(const hstring& word) const {
  if (word.Size() < kShortestWord) return {};
  const hstring upper = HtUpperCase(word);
  if (Hyphen)
    if (const auto* item = Hyphen->Get<THtHyphenItem>(upper)) return item->Positions;
  return Name == u"ru" ? TRussianWord(upper).Positions() : std::vector<uint32_t>();
}

}  // namespace ht
