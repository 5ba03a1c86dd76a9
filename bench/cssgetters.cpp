// What a getter of an element style costs, ten elements deep: of properties that nothing sets, that the element sets,
// and that an element far above sets. A time is that of one call.

#include <benchmark/benchmark.h>

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/stylesheet.h"

using namespace ht;

namespace {

class TPageNode final : public TStyledHTMLNode {
  HT_CLASS(TPageNode, TStyledHTMLNode)

 public:
  TPageNode() { TPageNode::CreateStyle(); }
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
};

// A declaration for each of twenty properties, as a component of a framework has them.
constexpr char16_t kButton[] =
    u"display:inline-block;font-weight:400;line-height:1.5;color:#212529;text-align:center;vertical-align:"
    u"middle;"
    u"cursor:pointer;background-color:#fff;border:1px solid red;padding:.375rem .75em;font-size:1rem;"
    u"border-radius:.25rem;width:50%;margin-left:2em;height:10px;opacity:.65";

struct TPage {
  explicit TPage(const char16_t* declarations) {
    constexpr int kDepth = 10;
    std::u16string html;
    for (int i = 0; i < kDepth; ++i) html += u"<div>";
    Root.Parse(html);
    Apply(Root, u"cursor:pointer;letter-spacing:1px");
    for (Element = &Root; Element->GetCount() > 0;) {
      Element = Element->GetNode(0);
      Apply(*Element, Element->GetCount() > 0 ? u"display:block" : declarations);
    }
  }

  TPageNode Root;
  TStyledHTMLNode* Element = nullptr;

 private:
  static void Apply(TStyledHTMLNode& node, const char16_t* declarations) {
    node.AddCSS(declarations, false);
    TCSSWeightList list;
    node.SelfStyleSheet->GetAllSelectors(list);
    node.FStyle->IntFontSize = 16;
    node.FStyle->ApplyValue(list, false);
    node.FindContainer();
  }
};

template <class TGet>
void Run(benchmark::State& state, const char16_t* declarations, TGet get) {
  TPage page(declarations);
  TBaseElementStyle* style = page.Element->FStyle.get();
  for (auto _ : state) {
    benchmark::DoNotOptimize(style);
    benchmark::DoNotOptimize(get(*style));
  }
}

template <void (TBaseElementStyle::*Get)(TMeasure&)>
float Length(TBaseElementStyle& style) {
  TMeasure m;
  (style.*Get)(m);
  return m.GetFPixels();
}

#define GETTERS(name, call)                                                  \
  void BM_##name(benchmark::State& state, const char16_t* declarations) {    \
    Run(state, declarations, [](TBaseElementStyle& style) { return call; }); \
  }                                                                          \
  BENCHMARK_CAPTURE(BM_##name, unset, u"display:block");                     \
  BENCHMARK_CAPTURE(BM_##name, set, kButton)

GETTERS(Float, style.Float());
GETTERS(MarginLeftPx, style.MarginLeftPx());
GETTERS(PaddingTopPx, style.PaddingTopPx());
GETTERS(BorderTopWidthPx, style.BorderTopWidthPx());
GETTERS(MinHeight, Length<&TBaseElementStyle::MinHeight>(style));
GETTERS(Width, Length<&TBaseElementStyle::Width>(style));
GETTERS(Height, Length<&TBaseElementStyle::Height>(style));
GETTERS(MarginLeft, Length<&TBaseElementStyle::MarginLeft>(style));
GETTERS(BorderTopWidth, Length<&TBaseElementStyle::BorderTopWidth>(style));
GETTERS(BackgroundColor, style.BackgroundColor());
GETTERS(Opacity, style.Opacity());
GETTERS(FlexGrow, style.FlexGrow());
GETTERS(BorderOneStyle, style.BorderOneStyle());
GETTERS(HasTransform, style.HasTransform());
GETTERS(NoShadow, style.NoShadow());
// Inherited ones: without one, all the elements around are asked.
GETTERS(TextColor, style.TextColor());
GETTERS(Cursor, style.Cursor());
GETTERS(LineHeight, Length<&TBaseElementStyle::LineHeight>(style));
GETTERS(LetterSpacing, Length<&TBaseElementStyle::LetterSpacing>(style));
GETTERS(TextAlign, style.TextAlign());

}  // namespace
