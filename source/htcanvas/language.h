#pragma once

#include <vector>

#include "htdictionary/objectdictionary.h"
#include "htruntime/stream.h"

namespace ht {

/// A word and where it may break.
class THtHyphenItem : public TObject {
  HT_CLASS(THtHyphenItem, TObject)

 public:
  hstring Word;  // in upper case
  /// Breaks stand before these letters, which count from 1.
  std::vector<uint32_t> Positions;
};

/// Where the words of a language may be hyphenated: by a list of words, and in Russian ("ru") by a rule for all others.
///
///   THtLanguage& english = THtLanguage::GetLanguage(u"en"_hs);
///   english.LoadHyphenationfromStream(list);                    // lines such as "table ta-ble"
///   english.GetHyphenationPositions(u"Table"_hs);               // 3
///
/// Languages live as long as the process. Any number of threads may ask for positions while none adds words; GetLanguage
/// adds languages, and belongs to one thread.
class THtLanguage : public TObject {
  HT_CLASS(THtLanguage, TObject)

 public:
  /// The language of that name, made when it is missing. Case counts.
  static THtLanguage& GetLanguage(const hstring& name);

  /// A word that is known already gets the new positions.
  void AddHyphenation(const hstring& word, std::vector<uint32_t> positions);
  /// Adds a word a line: the word, one blank, and the word with "-" at its breaks; without one the word is known not to
  /// break. Other lines are passed over. The encoding is found as HtDecodeText does. Raises what the stream raises.
  void LoadHyphenationfromStream(TStream& stream);
  /// The positions before which the word may break: as its list gives them, or by the rule, ascending from 2. None for less
  /// than four characters.
  std::vector<uint32_t> GetHyphenationPositions(const hstring& word) const;

  hstring Name;

 private:
  THtObjectDictionary& Words();

  std::unique_ptr<THtObjectDictionary> Hyphen;  // of THtHyphenItem
};

}  // namespace ht
