#pragma once

#include "htmlcss/cssenums.h"
#include "htmlcss/csstoken.h"
#include "htruntime/arena.h"
#include "htruntime/object.h"

namespace ht {

class TCSSTokenizer;

/// The condition of an `@media` block: media, and limits of the view's width in pixels.
class TCSSMediaSet : public TObject {
  HT_CLASS(TCSSMediaSet, TObject)

 public:
  TCSSMedias Medias;
  /// 0: no such limit.
  int64_t MinWidth = 0;
  int64_t MaxWidth = 0;
  int64_t MinDeviceWidth = 0;
  int64_t MaxDeviceWidth = 0;
  /// Set by the style sheet: one of the limits is there.
  bool HasSizeQuery = false;
  /// Kept by TCSSStyleSheet::TestMediaSets.
  bool Disabled = false;
  /// The query as read.
  TCSSTokens Tokens;

  /// Reads a token and stores it, except the "{" or ";" that ends the query. False at the end of the text.
  bool AddNextToken(TCSSTokenizer& tokenizer);
  /// "@media " and the query as it was written.
  hstring AsString() const;
  /// Whether the rules hold for a medium and a width; a device width of 0 stands for the width.
  bool CheckMedia(TCSSMedia media, int64_t width, int64_t deviceWidth) const;

  /// The set of all sections outside `@media`: `all`. It lives as long as the program and is never changed.
  static TCSSMediaSet* Default();
};

}  // namespace ht
