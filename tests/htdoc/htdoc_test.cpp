// The program as it is called: output to the character, exit status, and one line on standard error.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

struct TRun {
  int Status;
  std::string Output, Errors;
};

class HtDoc : public testing::Test {
 protected:
  HtDoc() { fs::create_directories(FFolder); }
  ~HtDoc() override { fs::remove_all(FFolder); }

  void Write(const std::string& name, const std::string& bytes) {
    std::ofstream(FFolder / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::string& name) {
    std::ifstream file(FFolder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  // Runs a shell command in a folder of its own, where $htdoc is the program.
  TRun Shell(const std::string& command) {
    const std::string line =
        "cd '" + FFolder.string() + "' && htdoc='" HT_PROGRAM "' && { " + command + "; } >.out 2>.err";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read(".out"), Read(".err")};
  }
  TRun HtDocs(const std::string& arguments) { return Shell("$htdoc " + arguments); }

 private:
  fs::path FFolder = fs::path(testing::TempDir()) / ("htdoc_test_" + std::to_string(getpid()));
};

const char kPage[] =
    "<!DOCTYPE html><html lang=en><head><title>A &amp; B</title><script src=s>if (a<b) "
    "c</script><style></style></head>\n"
    "<body><!--note--><?pi x?><![CDATA[raw]]><p class=x id=p>One<br>&euro; two<p title='\"'>three"
    "<table><tr><td>a<td>b</table><a href=u title=t>link</a>";

TEST_F(HtDoc, Commands) {
  Write("page", kPage);
  Write("text", "only text\n");
  Write("words", "table ta-ble\n");
  const std::pair<std::string, std::string> kCases[] = {
      {"hyphenate ru молоко дом", "молоко 3 5\nдом\n"},
      {"hyphenate en --list words Table chair", "Table 3\nchair\n"},
      {"path --records 'M0 0L1 0a1 1 0 012 0z'",
       "moveto 0 0\nlineto 1 0\narc 1 -1 2 2 180 180\nclosefigure\n"},
      {"path --bounds 'M1 2h3v4'", "1 2 4 6\n"},
      {"path --contains 5,5 'M0 0h9v9z'", "true\n"},
      {"path --matrix 2,0,0,2,1,1 'M1 1L2 3'", "M3 3l2 4 \n"},
      {"path --flatten 1 'M0 0L4 4'", "M0 0l4 4 \n"},
      {"runs 'at 19'",
       "1 2 - bdLTR\n3 1 trfSpace,trfBlank,trfBreakBefore,trfBreakAfter bdNeutral\n4 2 - bdWeakLRT\n"},
      {"tree page",
       "| <html>\n|   lang=\"en\"\n|   <head>\n|     <title>\n|       \"A & B\"\n|     <script>\n|       "
       "src=\"s\"\n"
       "|       \"if (a<b) c\"\n|     <style>\n|   \"\n\"\n|   <body>\n|     <!-- note -->\n|     <?pi x?>\n"
       "|     <![CDATA[raw]]>\n|     <p>\n|       class=\"x\"\n|       id=\"p\"\n|       \"One\"\n|       "
       "<br>\n"
       "|       \"\xE2\x82\xAC two\"\n|     <p>\n|       title=\"\"\"\n|       \"three\"\n|       <table>\n"
       "|         <tr>\n|           <td>\n|             \"a\"\n|           <td>\n|             \"b\"\n|      "
       " <a>\n"
       "|         href=\"u\"\n|         title=\"t\"\n|         \"link\"\n"},
      {"tree text", "| <body>\n|   \"only text\n\"\n"},
      {"html page",
       "<html lang=\"en\"><head><title>A &amp; B</title><script src=\"s\">if (a<b) "
       "c</script><style></style></head>\n"
       "<body><!--note--><?pi x?><![CDATA[raw]]><p class=\"x\" id=\"p\">One<br/>&euro; two</p>"
       "<p title=\"&quot;\">three<table><tr><td>a</td><td>b</td></tr></table><a href=\"u\" "
       "title=\"t\">link</a></p>"
       "</body></html>\n"},
      {"html text", "<body>only text\n</body>\n"},
      {"html --format 2 text", "only text\n"},
      {"html --format 3 page --format 0 --",
       "\r\n<html lang=\"en\">\r\n<head>\r\n<title>A &amp; B</title>\r\n<script src=\"s\">\r\nif (a<b) "
       "c\r\n</script>\r\n"
       "<style>\r\n\r\n</style>\r\n</head>\r\n<body>\r\n<!--note-->\r\n<?pi x?>\r\n<![CDATA[raw]]>\r\n"
       "<p class=\"x\" id=\"p\">\r\nOne<br/>&euro; two\r\n</p>\r\n<p "
       "title=\"&quot;\">\r\nthree\r\n<table>\r\n<tr>\r\n"
       "<td>a</td>\r\n<td>b</td>\r\n</tr>\r\n</table>\r\n<a href=\"u\" "
       "title=\"t\">link</a>\r\n</p>\r\n</body>\r\n</html>\n"},
      {"text page", "A & B\n\r\nOne\r\n\xE2\x82\xAC two\r\nthree\r\na\tblink\n"},
      {"text text", "only text\n"},
      {"text --flat text", "only text\n"},
      {"text --flat page", "\nOne\r\n\xE2\x82\xAC two\r\nthreea\r\nb\r\n\r\n u  t link\r\n"},
      {"xpath //td page", "<td>a</td>\n<td>b</td>\n"},
      {"xpath --first //td page", "<td>a</td>\n"},
      {"xpath --count //td page", "2\n"},
      {"xpath --value //p/@title page", "\"\n"},
      {"xpath '//p[@id]/text()' page", "One\n&euro; two\n"},
      {"xpath --value //p page", "One\xE2\x82\xAC two\n"},
  };
  for (const auto& [arguments, output] : kCases) {
    const TRun run = HtDocs(arguments);
    EXPECT_EQ(run.Status, 0) << arguments;
    EXPECT_EQ(run.Output, output) << arguments;
    EXPECT_EQ(run.Errors, "") << arguments;
  }
}

TEST_F(HtDoc, SelectorsAndStyles) {
  Write("page",
        "<!doctype html><html><head><link rel=stylesheet href='a.css?v=1'><style>p{color:#102030;margin:1px "
        "auto}</style></head>"
        "<body><p class=x>One</p><p style='opacity:.5;color:rgba(1,2,3,.5)'>two<b>three</b></p>");
  Write("a.css",
        "@import 'b.css'; .x{font-size:12.3456px} @media print{p{display:none}} p:hover b{z-index:7}"
        "@media (max-width:500px){p{float:left}}");
  Write("b.css", "b{width:50%;display:inline-block;white-space:pre-wrap;text-transform:uppercase}");
  Write("c.css", "p{text-align:center;flex-grow:.25} u{}");
  Write("d.css", "p{flex-grow:2}");
  const std::string one = "{\"path\":\"/html/body/p\",\"style\":",
                    three = "{\"path\":\"/html/body/p/b\",\"style\":";
  const std::pair<std::string, std::string> kCases[] = {
      {"select page 'p > b'", "<b>three</b>\n"},
      {"select page p:first-child", "<p class=\"x\">One</p>\n"},
      {"select --count page 'p, b, q'", "3\n"},
      {"style page .x", one +
                            "{\"display\":\"block\",\"font-size\":\"12.346px\",\"margin-left\":\"auto\","
                            "\"margin-top\":\"1px\","
                            "\"margin-right\":\"auto\",\"margin-bottom\":\"1px\",\"color\":\"#102030\"}}\n"},
      {"style page b WIDTH display white-space text-transform z-index color font-weight opacity",
       three + "{\"width\":\"512px\",\"display\":\"inline-block\",\"white-space\":\"pre-wrap\",\"text-"
               "transform\":"
               "\"uppercase\",\"z-index\":\"auto\",\"color\":\"#01020380\",\"font-weight\":\"bold\","
               "\"opacity\":1}}\n"},
      {"style page p opacity margin", one + "{\"opacity\":1,\"margin\":\"1px auto 1px auto\"}}\n" + one +
                                          "{\"opacity\":0.5,\"margin\":\"1px auto 1px auto\"}}\n"},
      {"style --width 400 page b float width", three + "{\"float\":\"none\",\"width\":\"200px\"}}\n"},
      {"style --width 400 page .x float", one + "{\"float\":\"left\"}}\n"},
      {"style --media print page .x display", one + "{\"display\":\"none\"}}\n"},
      {"style --css c.css --css d.css page .x text-align flex-grow",
       one + "{\"text-align\":\"center\",\"flex-grow\":2}}\n"},
      {"style --css d.css --css c.css page .x flex-grow", one + "{\"flex-grow\":0.25}}\n"},
      {"style --hover b page b z-index", three + "{\"z-index\":7}}\n"},
      {"style - b display <page", three + "{\"display\":\"inline-block\"}}\n"},
  };
  for (const auto& [arguments, output] : kCases) {
    const TRun run = HtDocs(arguments);
    EXPECT_EQ(run.Status, 0) << arguments << run.Errors;
    EXPECT_EQ(run.Output, output) << arguments;
  }
}

TEST_F(HtDoc, NothingFound) {
  Write("page", "<p></p>");
  for (const auto& [arguments, output] :
       {std::pair("//q"s, ""s), {"--first //q", ""}, {"--count //q", "0\n"}, {"--value //p", "\n"}}) {
    const TRun run = HtDocs("xpath " + arguments + " page");
    EXPECT_TRUE(run.Status == 1 && run.Output == output && run.Errors.empty()) << arguments;
  }
  for (const auto& [command, output] :
       {std::pair("select page q"s, ""s), {"select --count page q", "0\n"}, {"style page q", ""}}) {
    const TRun run = HtDocs(command);
    EXPECT_TRUE(run.Status == 1 && run.Output == output && run.Errors.empty()) << command;
  }
}

TEST_F(HtDoc, OperandsAndEncodings) {
  Write("page", "<-a><b>x");
  Write("-x", "<p>x");
  Write("1251", "<meta charset=koi8-r><b>\xEF");
  Write("utf-8", "\xEF\xBB\xBF<meta charset=koi8-r><b>\xD0\xBF\xC0");
  Write("utf-16", "\xFF\xFE<\0p\0>\0\x3F\x04\0\xD8"s);
  const std::pair<std::string, std::string> kCases[] = {
      {"$htdoc text - <page", "x\n"},
      {"cat page | $htdoc xpath --count -- -a -", "1\n"},
      {"$htdoc text -- -x", "x\n"},
      {"$htdoc text page --flat", "x\n"},
      {"$htdoc text 1251", "\xD0\x9E\n"},
      {"$htdoc text --encoding 1251 1251", "\xD0\xBF\n"},
      {"$htdoc text --encoding utf-16 --encoding 1251 1251", "\xD0\xBF\n"},
      {"$htdoc text utf-8", "\xD0\xBF\xEF\xBF\xBD\n"},
      {"$htdoc text --encoding utf-8 utf-8", "\xD0\xBF\xEF\xBF\xBD\n"},
      {"$htdoc text utf-16", "\xD0\xBF\xEF\xBF\xBD\n"},
      {"tail -c +3 utf-16 | $htdoc text --encoding utf-16 -", "\xD0\xBF\xEF\xBF\xBD\n"},
      {"$htdoc tree /dev/null", "| <body>\n"},
  };
  for (const auto& [command, output] : kCases) {
    const TRun run = Shell(command);
    EXPECT_EQ(run.Status, 0) << command;
    EXPECT_EQ(run.Output, output) << command;
  }
}

TEST_F(HtDoc, WrongUse) {
  Write("page", "x");
  for (const std::string arguments : {"",
                                      "none",
                                      "-x",
                                      "tree",
                                      "tree page page",
                                      "tree --none page",
                                      "tree -x page",
                                      "tree none",
                                      "tree .",
                                      "tree ''",
                                      "html --format",
                                      "html --format -1 page",
                                      "html --format 101 page",
                                      "html --format 2x page",
                                      "html --format '' page",
                                      "text --encoding none page",
                                      "text --encoding 1 page",
                                      "text --encoding 1251x page",
                                      "text page --encoding",
                                      "xpath page",
                                      "xpath a page page",
                                      "xpath --value --count a page",
                                      "select page",
                                      "select page p p",
                                      "style page",
                                      "style page p colour",
                                      "style --css none page p",
                                      "style --media paper page p",
                                      "style --width 0 page p",
                                      "style --width wide page p",
                                      "tree page >/dev/full"}) {
    const TRun run = HtDocs(arguments);
    EXPECT_EQ(run.Status, 2) << arguments;
    EXPECT_EQ(run.Output, "") << arguments;
    EXPECT_TRUE(run.Errors.starts_with("htdoc: ") && run.Errors.find('\n') == run.Errors.size() - 1)
        << arguments << run.Errors;
  }
}

TEST_F(HtDoc, Help) {
  const TRun all = HtDocs("--help");
  EXPECT_EQ(all.Status, 0);
  for (const std::string command : {"tree", "html", "text", "xpath", "css", "select", "style"}) {
    EXPECT_NE(all.Output.find("\n  " + command + " "), std::string::npos);
    const TRun run = HtDocs(command + " --help");
    EXPECT_EQ(run.Status, 0);
    EXPECT_TRUE(run.Output.starts_with("Usage: htdoc " + command + " ")) << command;
    EXPECT_TRUE(run.Errors.empty());
  }
}

TEST_F(HtDoc, ClosedPipe) {
  Write("page", [] {
    std::string page;
    for (int i = 0; i < 100000; ++i) page += "<p>x";
    return page;
  }());
  for (const std::string command : {"tree", "html", "text", "xpath //p"}) {
    const TRun run = Shell("{ $htdoc " + command + " page; echo $? >status; } | head -c 10");
    EXPECT_EQ(run.Output.size(), 10u) << command;
    EXPECT_EQ(run.Errors, "") << command;
    EXPECT_EQ(Read("status"), "0\n") << command;
  }
}

}  // namespace
