#include <cstdio>

#include "htmlpars/htmlpars.h"

int main() {
  ht::THtmlNode page;
  page.Parse(u"<ul><li><a href=one.html>One<li><a href=two.html>Two</ul>");
  page.XPath(u"//a", [](ht::THtNode* link, bool&) {
    std::printf("%s: %s\n", ht::HtToUtf8(link->TextContent()).c_str(),
                ht::HtToUtf8(link->XPathValue(u"@href", nullptr)).c_str());
  });
  return 0;
}
