#include "htmlcss/mediaset.h"

#include "htmlcss/csstokenizer.h"
#include "htutils/faststring.h"

namespace ht {

bool TCSSMediaSet::AddNextToken(TCSSTokenizer& tokenizer) {
  do {
    if (!tokenizer.NextToken()) return false;
  } while (tokenizer.Token.CType == ctComment);
  if (tokenizer.Token.CType != ctBlockStart && tokenizer.Token.CType != ctSemicolon)
    Tokens.Append(tokenizer.Token);
  return true;
}

hstring TCSSMediaSet::AsString() const {
  TFastString text(128);
  text.Add(u"@media ");
  for (const TCSSToken& token : Tokens) text.Add(token.Name);
  return text.GetAsString();
}

bool TCSSMediaSet::CheckMedia(TCSSMedia media, int64_t width, int64_t deviceWidth) const {
  const auto within = [](int64_t size, int64_t min, int64_t max) {
    return min <= size && (max == 0 || max >= size);
  };
  if (Medias != TCSSMedias{cmAll} && !Medias.Contains(media)) return false;
  if (!HasSizeQuery) return true;
  return within(width, MinWidth, MaxWidth) &&
         within(deviceWidth == 0 ? width : deviceWidth, MinDeviceWidth, MaxDeviceWidth);
}

TCSSMediaSet* TCSSMediaSet::Default() {
  static TCSSMediaSet* const kAll = [] {
    static TCSSMediaSet set;
    set.Medias = {cmAll};
    return &set;
  }();
  return kAll;
}

}  // namespace ht
