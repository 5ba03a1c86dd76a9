// What a page points at, for a link checker: the addresses of its elements, seen from the page's own address, and
// those that stand in its texts without being links, which become links.
//
// $ links pages/notes.html http://skerry.example/crew/notes.html
#include <cstdio>

#include "htmlpars/htmlpars.h"
#include "htutils/htutils.h"

using namespace ht;

static void Show(const char* kind, const hstring& address, const hstring& base) {
  // An address with a scheme is whole, any other is seen from the base.
  const bool whole = address.View().find(u"://") != std::u16string_view::npos;
  std::printf("%-6s %s\n", kind, HtToUtf8(whole ? address : CombineUrl(base, address)).c_str());
}

static void MakeLinks(THtmlNode& text, const hstring& base) {
  const hstring html = ReplaceTextURLs(HtmlEncode(text.GetContent()), [&](const hstring& url) {
    Show("text", url, base);
    return u"<a href=\"" + url + u"\">" + url + u"</a>";
  });
  if (html != HtmlEncode(text.GetContent())) text.SetOuterHTML(u"<span>" + html + u"</span>");
}

int main(int argc, char** argv) {
  if (argc != 3) return std::fputs("usage: links FILE ADDRESS\n", stderr), 2;
  try {
    const THtMarkupText text = HtDecodeMarkup(FileToStrA(HtFromUtf8(argv[1])));
    const hstring base = HtFromUtf8(argv[2]);
    THtmlNode page;
    page.Parse(text.Text, text.EncodingKnown);

    page.XPath(u"//*[@href]", [&](THtNode* node, bool&) { Show("href", node->GetAttribute(u"href"), base); });
    page.XPath(u"//*[@src]", [&](THtNode* node, bool&) { Show("src", node->GetAttribute(u"src"), base); });

    // The list stays as it is while the tree changes.
    const TIntf<IHtNodeList> texts = page.XPath(u"//text()");
    for (int32_t i = 0; i < texts->GetCount(); ++i)
      if (!texts->GetNode(i)->HasParentTag(u"a"))
        MakeLinks(static_cast<THtmlNode&>(*texts->GetNode(i)), base);
    std::printf("\n%s\n", HtToUtf8(static_cast<THtmlNode*>(page.FindNode(u"p"))->GetOuterHTML()).c_str());
  } catch (const EHtException& error) {
    std::fprintf(stderr, "links: %s\n", error.what());
    return 1;
  }
}
