#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "htmlcss/elementstyle.h"
#include "htmlcss/measure.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/tokensequence.h"
#include "htutils/numbers.h"

namespace ht {

namespace {

constexpr double kPixelsPerInch = 96;
constexpr double kPixelsPerEx = 11;
constexpr double kRemWithoutRoot = 13;
constexpr double kLargestPixels = 1e30;  // far beyond any page, and sums and areas stay finite

// How many pixels one of the unit has, for those that depend on nothing; 0 for the others.
constexpr double PixelsPer(TMeasureUnit unit) {
  switch (unit) {
    case muPX: return 1;
    case muIN: return kPixelsPerInch;
    case muMM: return kPixelsPerInch / 25.4;
    case muCM: return kPixelsPerInch / 2.54;
    case muPt: return kPixelsPerInch / 72;
    case muPC: return kPixelsPerInch / 6;
    case muEX: return kPixelsPerEx;
    default: return 0;
  }
}

bool IsBareNumber(TMeasureUnit unit) {
  return unit == muMS || unit == muS || unit == muDeg || unit == muNone;
}

double RemBase(const TBaseElementStyle* style, bool wholePixels) {
  if (!style || !style->FElement || !style->FElement->GetParent()) return kRemWithoutRoot;
  TBaseElementStyle* root = style->FElement->RootNodeElement()->Style();
  if (!root) return kRemWithoutRoot;
  TMeasure fontSize;
  root->FontSize(fontSize);
  return wholePixels ? static_cast<double>(fontSize.GetPixels()) : fontSize.GetFPixels();
}

// A hundredth of the view's width or height.
double ViewBase(const TBaseElementStyle* style, TMeasureUnit unit) {
  if (!style || !style->FElement) return 0;
  const TRectF& rect = *style->FElement->GetDrawRect();
  const double size = unit == muVW ? rect.Width() : rect.Height();
  return size / 100 / style->FElement->ScaleFactor();
}

// What is no number, or no finite one, never reaches a box.
float Finite(double value) {
  return std::isnan(value) ? 0.0f : static_cast<float>(std::clamp(value, -kLargestPixels, kLargestPixels));
}

int32_t Whole(double value) {
  using TLimits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(std::clamp<int64_t>(MathRound(value), TLimits::min(), TLimits::max()));
}

constexpr char16_t kNegate = u'm';

constexpr int Rank(char16_t op) {
  switch (op) {
    case kNegate: return 0;
    case u'*':
    case u'/': return 1;
    case u')': return 3;
    case u'(': return -1;
    default: return 2;
  }
}

bool IsOperator(const TCSSToken& token) {
  return token.CType == ctOpenBr ||
         (token.Name.Size() == 1 &&
          std::u16string_view(u"+-*/()").find(token.Name[0]) != std::u16string_view::npos);
}

// The two stacks of an expression: operator precedence in one pass, as Dijkstra's shunting yard does it.
class TCalcStacks {
 public:
  void Operator(char16_t op) {
    Reduce(op);
    if (op == u')') {
      FUnary = false;
      return;
    }
    FOperators.push_back(FUnary && op == u'-' ? kNegate : op);
    FUnary = true;
  }
  void Value(double value) {
    FUnary = false;
    FValues.push_back(value);
  }
  double Result() const { return FValues.empty() ? 0 : FValues.back(); }

 private:
  void Reduce(char16_t op) {
    while (!FOperators.empty() && Rank(FOperators.back()) <= Rank(op)) {
      const char16_t top = FOperators.back();
      if (op != u')' && top == u'(') return;
      FOperators.pop_back();
      if (top == u'(') return;
      Apply(top);
    }
  }
  // An operator without its operands does nothing.
  void Apply(char16_t op) {
    if (op == kNegate) {
      if (!FValues.empty()) FValues.back() = -FValues.back();
      return;
    }
    if (FValues.size() < 2) return;
    const double right = FValues.back();
    FValues.pop_back();
    double& left = FValues.back();
    switch (op) {
      case u'+': left += right; break;
      case u'-': left -= right; break;
      case u'*': left *= right; break;
      case u'/':
        if (right != 0) left /= right;
        break;
    }
  }

  std::vector<char16_t> FOperators;
  std::vector<double> FValues;
  bool FUnary = true;  // a sign may come
};

}  // namespace

void TMeasure::Init(TBaseElementStyle* style) {
  *this = TMeasure();
  Style = style;
}

void TMeasure::Assign(const TMeasure& other) {
  TBaseElementStyle* style = Style;
  *this = other;
  Style = style;
}

// The value in pixels by its unit; that of a bare number multiplies what it refers to.
double TMeasure::Pixels(bool wholePixels) const {
  switch (FMUnit) {
    case muPercent: return Parent ? FValue * static_cast<double>(*Parent) / 100 : 0;
    case muEM: return Style ? FValue * static_cast<double>(Style->IntFontSize) : 0;
    case muREM: return FValue * RemBase(Style, wholePixels);
    case muVW:
    case muVH: return FValue * ViewBase(Style, FMUnit);
    default: break;
  }
  if (IsBareNumber(FMUnit)) return Parent ? FValue * static_cast<double>(*Parent) : FValue;
  return FValue * PixelsPer(FMUnit);
}

float TMeasure::GetFPixels() {
  if (GetAuto() || (Flags.Contains(mfZero) && !Calc)) return 0;
  if (Calc) DecodeCalc();
  return Finite(Pixels(false));
}

int32_t TMeasure::GetPixels() {
  if (GetAuto() || (Flags.Contains(mfZero) && !Calc)) return 0;
  if (Calc) DecodeCalc();
  if (IsBareNumber(FMUnit)) return Whole(FValue);
  return Whole(Pixels(true) * (Style ? Style->Zoom : 1));
}

void TMeasure::DecodeCalc() {
  constexpr int32_t kFirstOperand = 2;  // behind `calc` and its parenthesis
  TMeasure operand;                     // starts afresh, so that each use comes to the same
  operand.Init(Style);
  operand.Parent = Parent;
  TCalcStacks stacks;
  int32_t depth = 1;  // what stands behind the function is not its own
  TCSSTokenSequence sequence(Calc);
  for (sequence.Next(kFirstOperand); !sequence.Eof && depth > 0; sequence.Next()) {
    const TCSSToken& token = *sequence.T;
    if (IsOperator(token)) {
      const char16_t op = token.CType == ctOpenBr ? u'(' : token.Name[0];
      depth += op == u'(' ? 1 : op == u')' ? -1 : 0;
      stacks.Operator(op);
    } else if (token.CType == ctFunction) {
      stacks.Value(0);  // what it holds follows as operands of this expression
    } else {
      operand.Decode(sequence);
      stacks.Value(operand.GetFPixels());
    }
  }
  FValue = Finite(stacks.Result());
  FMUnit = muPX;
  Flags.Include(mfNotAuto);
}

}  // namespace ht
