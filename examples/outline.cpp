// The outline of a page: its headings, indented by their rank, with the anchor to jump to.
//
// $ outline pages/ferry.html
#include <cstdio>

#include "htmlpars/htmlpars.h"
#include "htutils/htutils.h"

using namespace ht;

int main(int argc, char** argv) {
  if (argc != 2) return std::fputs("usage: outline FILE\n", stderr), 2;
  try {
    const THtMarkupText text = HtDecodeMarkup(FileToStrA(HtFromUtf8(argv[1])));
    THtmlNode page;
    page.Parse(text.Text, text.EncodingKnown);

    // A walk in document order; XPath has no "h1 or h2 or …".
    for (THtNode* node = &page; node; node = node->NextNode()) {
      const hstring& tag = node->GetTag();
      if (tag.Length() != 2 || tag[0] != u'h' || tag[1] < u'1' || tag[1] > u'6') continue;
      const hstring title = node->TextContent(), id = node->GetAttribute(u"id");
      std::printf("%*s%s%s%s\n", 2 * (tag[1] - u'1'), "", HtToUtf8(HtTrim(title)).c_str(),
                  id.Empty() ? "" : "  #", HtToUtf8(id).c_str());
    }
  } catch (const EHtException& error) {
    std::fprintf(stderr, "outline: %s\n", error.what());
    return 1;
  }
}
