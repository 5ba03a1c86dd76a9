#pragma once

#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace bench {

/// A page of about `bytes` of UTF-8 as the web has them: about 32,000 nodes a megabyte, half of them text, with nested
/// blocks, lists, tables, links, classes, entities and line ends. The same for the same size.
inline std::string GeneratePage(size_t bytes) {
  std::mt19937 random(20240501);
  const auto below = [&random](unsigned n) { return static_cast<unsigned>(random() % n); };
  static constexpr const char* kWords[] = {
      "the",     "library", "reads", "document", "tree",      "a",     "value",
      "of",      "element", "and",   "style",    "returns",   "when",  "caf\xC3\xA9",
      "counted", "&amp;",   "text",  "is",       "&lt;p&gt;", "every", "order"};
  std::string page =
      "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>Manual</title>\n</head>\n<body>\n";
  const auto words = [&](unsigned count) {
    for (unsigned i = 0; i < count; ++i)
      page.append(i ? " " : "").append(kWords[below(unsigned{std::size(kWords)})]);
  };
  for (unsigned section = 0; page.size() < bytes; ++section) {
    const std::string id = std::to_string(section);
    page += "<div class=\"section level" + std::to_string(below(4)) + "\" id=\"s" + id +
            "\">\n<h2><a href=\"#s" + id + "\">";
    words(4);
    page += "</a></h2>\n";
    for (unsigned i = below(3) + 1; i-- > 0;) {
      page += "<p class=\"para\">";
      words(26 + below(32));
      page += " <a class=\"reference internal\" href=\"../library/page" + std::to_string(below(400)) +
              ".html\" title=\"Go\"><code>";
      words(1);
      page += "</code></a> ";
      words(26 + below(32));
      page += " <b>";
      words(2);
      page += "</b>.</p>\n";
    }
    page += "<ul>\n";
    for (unsigned i = below(4) + 1; i-- > 0;) {
      page += "<li>";
      words(20);
      page += "</li>\n";
    }
    page += "</ul>\n<table class=\"docutils\">\n";
    for (unsigned row = below(3) + 1; row-- > 0;) {
      page += "<tr><td>";
      words(4);
      page += "</td><td align=\"right\">" + std::to_string(below(100000)) + "</td><td><i>";
      words(3);
      page += "</i><br></td></tr>\n";
    }
    page += "</table>\n</div>\n";
  }
  return page + "</body>\n</html>\n";
}

/// The content of a file; empty if it cannot be read.
inline std::string ReadFile(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  std::stringstream content;
  content << file.rdbuf();
  return content.str();
}

/// A real page: the file that HTCORE_BENCH_PAGE names, or a long page of Debian's Python manual where it is installed.
inline std::string RealPage() {
  const char* name = std::getenv("HTCORE_BENCH_PAGE");
  return ReadFile(name ? name : "/usr/share/doc/python3.11/html/library/stdtypes.html");
}

}  // namespace bench
