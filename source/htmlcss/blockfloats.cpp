#include "htmlcss/blockfloats.h"

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htruntime/rounding.h"

namespace ht {

// One side

// Bottom ascends, so that a search starts in the middle.

void TBlockSide::AddBlock(float top, float bottom, float offset, THtNode* node) {
  if (!(offset > 0)) return;
  top = std::max(0.0f, top);
  MaxTop = std::max(MaxTop, top);
  if (!(bottom >= top)) return;
  const auto band = std::upper_bound(Blocks.begin(), Blocks.end(), top,
                                     [](float y, const TBlockSideRec& rec) { return y < rec.Bottom; });
  if (band == Blocks.end() || band->Top >= bottom)
    Blocks.insert(band, {top, bottom, offset, node});
  else if (band->Top == top && band->Bottom == bottom)
    band->Offset = std::max(band->Offset, offset);
  else
    Overlay(static_cast<size_t>(band - Blocks.begin()), top, bottom, offset);
}

// The range begins within the band, or before it, and ends below its top. What it covers of bands that go on above or
// below is cut off from them.
void TBlockSide::Overlay(size_t index, float top, float bottom, float offset) {
  const auto at = [this](size_t i) { return Blocks.begin() + static_cast<std::ptrdiff_t>(i); };
  if (top > Blocks[index].Top) {
    Blocks.insert(at(index + 1), TBlockSideRec(Blocks[index]));
    Blocks[index++].Bottom = top;
  }
  Blocks[index].Top = top;
  if (bottom > Blocks[index].Bottom) {
    size_t next = index + 1;
    while (next < Blocks.size() && !(Blocks[next].Bottom > bottom)) ++next;
    if (next == index + 1 && next < Blocks.size())
      Blocks[next].Top = std::max(Blocks[next].Top, bottom);
    else
      Blocks.erase(at(index + 1), at(next));
  } else if (bottom < Blocks[index].Bottom) {
    Blocks.insert(at(index + 1), TBlockSideRec(Blocks[index]));
    Blocks[index + 1].Top = bottom;
  }
  Blocks[index].Bottom = bottom;
  Blocks[index].Offset = offset;
}

void TBlockSide::Assign(const TBlockSide& source, float dx, float dy) {
  Clear();
  for (const TBlockSideRec& rec : source.Blocks)
    if (rec.Offset - dx > 0 && rec.Bottom - dy > 0)
      Blocks.push_back({std::max(0.0f, rec.Top - dy), rec.Bottom - dy, rec.Offset - dx, rec.Node});
}

void TBlockSide::Clear() {
  Blocks.clear();
  MaxTop = 0;
}

// Where one band was laid over several others, Top need not ascend, so all that end below `top` are looked at.
float TBlockSide::MaxOffset(float top, float bottom) const {
  auto band = std::lower_bound(Blocks.begin(), Blocks.end(), top,
                               [](const TBlockSideRec& rec, float y) { return rec.Bottom < y; });
  float offset = 0;
  for (; band != Blocks.end(); ++band) {
    const bool overlaps =
        (band->Top >= top && bottom - 1 > band->Top) || (top >= band->Top && top < band->Bottom - 1);
    if (overlaps) offset = std::max(offset, band->Offset);
  }
  return offset;
}

TBlockSide::TOffsetBlock TBlockSide::MaxOffsetBlock() const {
  TOffsetBlock widest;
  for (const TBlockSideRec& rec : Blocks)
    if (rec.Offset >= widest.Offset) widest = {rec.Offset, rec.Bottom};
  return widest;
}

float TBlockSide::Y(float width, float y, float height, float available, const THtNode* node,
                    float& offset) const {
  offset = 0;
  if (Blocks.empty() || ClearTop() <= y) return y;
  if (width >= available) return std::max(ClearTop(), y);
  const auto isOwn = [node](const TBlockSideRec& rec) { return node && rec.Node == node; };
  const float free = available - width;
  auto band = Blocks.begin();
  for (; band != Blocks.end() && band->Bottom <= y; ++band)
    if (isOwn(*band)) return y;
  for (; band != Blocks.end(); ++band) {
    if (isOwn(*band)) return y;
    const float bottom = y + height;
    if (bottom < band->Top || (bottom == band->Top && height > 0)) break;
    if (bottom >= band->Bottom && free >= band->Offset) {
      offset = band->Offset;
      return y;
    }
    offset = MaxOffset(y, bottom);
    if (free >= offset) return y;
    y = band->Bottom;
  }
  offset = 0;
  return y;
}

// Both sides

namespace {

// A float climbs out through the boxes around its own, up to and including the nearest block container.
void HandOut(const TStyledHTMLNode& element, TBlockSide TBlockFloats::*side, float top, float bottom,
             float offset, THtNode* node) {
  for (const TStyledHTMLNode* inner = &element; inner->GetParent() && !inner->IsBlockContainer();) {
    TStyledHTMLNode* outer = inner->Container;
    if (!outer || outer == inner) return;
    const TRectF content = inner->InnerRect();
    top += content.Top;
    bottom += content.Top;
    offset += side == &TBlockFloats::Left ? content.Left : outer->InnerWidth - content.Right;
    if (!(offset > 0)) return;
    (outer->GetFloatMap().*side).AddBlock(top, bottom, offset, node);
    inner = outer;
  }
}

}  // namespace

void TBlockFloats::AddBlock(TStyledHTMLNode& node, bool applyRelative) {
  TRectF r = node.OuterRect;
  if (!node.FStyle || r.Width() == 0 || r.Height() == 0) return;
  TBaseElementStyle& style = *node.FStyle;
  if (applyRelative && style.FPosition == epRelative) {
    TMeasure left, top;
    style.Left(left);
    style.Top(top);
    ROffset(r, static_cast<float>(left.GetPixels()), static_cast<float>(top.GetPixels()));
  }
  const TFloat floating = style.Float();
  if (floating == fLeft)
    AddToSide(&TBlockFloats::Left, r.Top, r.Bottom, r.Right, &node);
  else if (floating == fRight)
    AddToSide(&TBlockFloats::Right, r.Top, r.Bottom, Element.InnerWidth - r.Left, &node);
}

void TBlockFloats::AddRange(float top, float bottom, float leftOffset, float rightOffset, THtNode* node) {
  if (leftOffset > 0) AddToSide(&TBlockFloats::Left, top, bottom, leftOffset, node);
  if (rightOffset > 0) AddToSide(&TBlockFloats::Right, top, bottom, rightOffset, node);
}

void TBlockFloats::AddToSide(TBlockSide TBlockFloats::*side, float top, float bottom, float offset,
                             THtNode* node) {
  (this->*side).AddBlock(top, bottom, offset, node);
  HandOut(Element, side, top, bottom, offset, node);
}

void TBlockFloats::AddContainerFloats() {
  const TStyledHTMLNode* container = Element.Container;
  if (!container || container == &Element || !container->FFloatMap || Element.IsBlockContainer()) return;
  const TBlockFloats& floats = *container->FFloatMap;
  const TRectF content = Element.InnerRect();
  Left.Assign(floats.Left, Element.OuterRect.Left + Element.LeftDelta(),
              Element.OuterRect.Top + Element.TopDelta());
  Right.Assign(floats.Right, container->InnerWidth - content.Right, content.Top);
}

void TBlockFloats::Clear() {
  Left.Clear();
  Right.Clear();
  Width = static_cast<float>(HtRoundEven(static_cast<double>(Element.InnerWidth)));
}

float TBlockFloats::Y(float width, float y, float height, const THtNode* node, float& left, float& right,
                      bool clearLeft, bool clearRight) {
  left = right = 0;
  Width = Element.InnerWidth;
  if (Left.Empty() && Right.Empty()) return y;
  const bool tooWide = width > Width;
  float at = y;
  const auto clear = [&at, height](const TBlockSide& side) {
    if (side.MaxOffset(at, at + height) == 0) return false;
    at = std::max(side.ClearTop(), at);
    return true;
  };
  if (clearLeft || tooWide) clear(Left);
  if ((clearRight || tooWide) && clear(Right) && (clearLeft || tooWide)) clear(Left);
  if (tooWide || (clearLeft && clearRight)) return at;

  const bool belowLeft = Left.ClearTop() <= at, belowRight = Right.ClearTop() <= at;
  if (belowLeft && belowRight) return at;
  if (clearLeft || Left.Empty() || belowLeft) return Right.Y(width, at, height, Width, node, right);
  if (clearRight || Right.Empty() || belowRight) return Left.Y(width, at, height, Width, node, left);
  return SearchDown(width, y, at, height, left, right);
}

// Steps are counted, since far down the page a float no longer has room for a single pixel.
float TBlockFloats::SearchDown(float width, float y, float from, float height, float& left,
                               float& right) const {
  constexpr int32_t kFarthest = 3000;
  float at = from;
  for (int32_t step = 1;; ++step) {
    left = Left.MaxOffset(at, at + height);
    right = Right.MaxOffset(at, at + height);
    if (left + right + width <= Width) return at;
    at = from + static_cast<float>(step);
    if (at - y > kFarthest || step > kFarthest) return at;
  }
}

float TBlockFloats::MaxWidth(float y, float height, float& left, float& right) {
  left = right = 0;
  Width = Element.InnerWidth;
  if (Left.ClearTop() > y || Right.ClearTop() > y) {
    left = Left.MaxOffset(y, y + height);
    right = Right.MaxOffset(y, y + height);
  }
  return std::max(0.0f, Width - left - right);
}

}  // namespace ht
