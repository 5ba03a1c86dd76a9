#include "htmlcss/stylesheet.h"

namespace ht {

namespace {

constexpr int32_t kFirstOrder = 0;
constexpr int32_t kFirstQuirkOrder = 100;

// Both texts are taken as they stand, oddities included.
// clang-format off
constexpr char16_t kSheet[] =
    u":link { color: blue; text-decoration: underline; cursor: pointer }    html, address, blockquote,  body, "
    u"dd, div, dl, dt, fieldset, form, frame, frameset, h1, h2, h3, h4, h5, h6, noframes, ol, p, ul, center, "
    u"dir, hr, menu, pre, datapacket, article, aside, details, figcaption, footer, header, main, nav, "
    u"section, summary { display: block } li              { display: list-item; min-height: 1em } body "
    u"{line-height: normal; contenteditable: true}head, style, datalist, meta, link            { display: "
    u"none } table           { display: table; text-indent: 0; border-spacing: 2px; box-sizing: border-box; } "
    u"tr              { display: table-row; padding: 0px!important } thead           { display: "
    u"table-row-group } tbody           { display: table-row-group } tfoot           { display: "
    u"table-row-group } col             { display: table-column } colgroup        { display: "
    u"table-column-group } td, th          { display: table-cell; background-color: inherit  } caption        "
    u" { display: block; text-align: center } th              { font-weight: bold;  } _body            { "
    u"margin: 8px } h1              { font-size: 2em; margin-top: .67em; margin-bottom: .67em } h2            "
    u"  { font-size: 1.5em; margin: .75em 0 }  h3              { font-size: 1.17em; margin: .83em 0 } h4, p, "
    u"blockquote, ul,  fieldset, form,  ol, dl, dir,  menu            { margin-top: 1em; margin-bottom: 1em; "
    u"} blockquote      { padding-left: 40px; margin-right: 40px; }      blockquote[type=cite] { "
    u"padding-left: 16px; padding-right: 16px; border-left:  solid blue thin; margin-left: 0; margin-right: "
    u"0; }h5              { font-size: .83em; margin: 1.5em 0 }          h6              { font-size: .75em; "
    u"margin: 1.67em 0 }         h1, h2, h3, h4,  h5, h6, b, strong          { font-weight: bold } i, cite, "
    u"em, var, address    { font-style: italic } pre, tt, code, kbd, samp       { font-family: monospace } "
    u"pre             { white-space: pre } textarea, input, select   { display: inline; margin: 0 2 0 2; "
    u"box-sizing: border-box } input[type=submit] {padding: 3px 3px;} input[type=hidden] {display: none}  "
    u"input[type=radio] {appearance: radio}  big             { font-size: 1.17em } small, sub, sup { "
    u"font-size: .83em } sub             { vertical-align: sub } sup             { vertical-align: super } "
    u"thead, tbody,  tfoot,table     { vertical-align: middle } td, th, tr      { vertical-align: inherit } "
    u"s, strike, del  { text-decoration: line-through }  hr              { border-top: 1px solid gray; "
    u"border-bottom: 0.5px solid silver; apadding-bottom: -1px; margin-top: 8px; margin-bottom: 8px; } ol, "
    u"ul, dir, menu, dd        { padding-left: 40px } ol              { list-style-type: decimal }  ol ul, ul "
    u"ol, ul ul, ol ol    { margin-top: 0; margin-bottom: 0 } ul              {list-style-type: disc } ul ul  "
    u"         {list-style-type: circle } ul ul ul        {list-style-type: square } ol[type=a]      "
    u"{list-style-type: lower-alpha} ol[type=A]      {list-style-type: upper-alpha} ol[type=i]      "
    u"{list-style-type: lower-roman} ol[type=I]      {list-style-type: upper-roman} u, ins          { "
    u"text-decoration: underline } option          {display: none}  center          { text-align: center } "
    u"img, image, iframe, svg {display: inline-block}                         fieldset        { margin: 10px "
    u"2px 5px 2px; padding: 0.55em 0.625em 0.75em; border: solid #aaa 1px; position: relative;}legend         "
    u" {display: inline-block; position: absolute; left: 20px; top: 0px; transform: translate(0, "
    u"-60%)}legend[align='right'] {left: auto; right: 20px;}control, video  {display: inline-block} xbody "
    u"{display: block; }foreignobject { display: block; white-space: normal; position: absolute; }desc, title "
    u"    {display: none}table[align=left] {float: left}table[align=right] {float: right}img[align=left] "
    u"{float: left}img[align=right] {float: right}nobr {white-space: nowrap} mark {background: yellow; color: "
    u"black}button {display: inline-block; background: linear-gradient(to bottom, btnhighlight, btnface); "
    u"color: btntext; border-radius: 2px; padding: 3px 6px 3px 6px; margin: 0px 5px; border: solid btnshadow "
    u"1px;  }button:hover {opacity: 0.7; background: linear-gradient(to bottom, btnhighlight, btnhighlight "
    u"10%, highlight 60%, btnhighlight 100%); }button:active {background: highlight "
    u"}button[disabled]{background: #eee; color: gray;pointer-events: none}metadata {display: none}xtemplate "
    u"{word-break: break-all;}table[border] {border-color: #808080;}table[border=0] {border: none}svg "
    u"{fill-opacity: 1; stroke-opacity: 1; fill: black}g, rect, line, path, polygon, polyline, ellipse, "
    u"circle, text, tspan, image {transform-origin: 0, 0}.footnote {font-size: 9pt; margin-left: 0.5em;  } "
    u".footnote:before {counter-increment: footnote; content: counters(footnote, ' '); display: "
    u"none}.footnote:after {display: inline-block; content: counters(footnote, ' '); vertical-align: super; "
    u"cursor: pointer; padding: 2px; border-radius: 2px} .footnote:after:hover {background-color: "
    u"lightblue}abbr[title], acronym[title] {text-decoration: underline; text-decoration-style: "
    u"dotted;}summary:before {content:\\25B8;} details:checked summary:before {content: \\25BE;}noframes "
    u"{display:none}";

constexpr char16_t kQuirkSheet[] =
    u"td > p:first-child, th > p:first-child {margin-top: 0px} td > p:last-child, th > p:last-child  "
    u"{margin-bottom: 0px} table {padding:0 !important; text-align: start; line-height: normal; font-size: "
    u"16px; font-weight: normal;} body > p:first-child {margin-top: 0px} ";
// clang-format on

// Its rules yield to all others: their own specificity does not count.
struct TDefaultSheet : TCSSStyleSheet {
  TDefaultSheet(int32_t firstOrder, const char16_t* text) {
    SelectorCounter = firstOrder;
    Parse(text, 0);
  }
};

}  // namespace

TCSSStyleSheet& HTML4StyleSheet() {
  static TDefaultSheet sheet(kFirstOrder, kSheet);
  return sheet;
}

TCSSStyleSheet& HTML4QuirkStyleSheet() {
  static TDefaultSheet sheet(kFirstQuirkOrder, kQuirkSheet);
  return sheet;
}

}  // namespace ht
