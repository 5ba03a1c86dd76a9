#pragma once

#include <algorithm>
#include <vector>

#include "htutils/geometry.h"

namespace ht {

class THtNode;
class TStyledHTMLNode;

/// A vertical range of which floats have taken a part on one side.
struct TBlockSideRec {
  float Top;
  float Bottom;
  float Offset;   // how far it takes in from its side; above 0
  THtNode* Node;  // the float that made it; not owned
};

/// The bands that floats have taken on one side of a box, in ascending order of Top.
class TBlockSide {
 public:
  /// The widest band, by how far it takes in, and where it ends.
  struct TOffsetBlock {
    float Offset = 0;
    float Bottom = 0;
  };

  std::vector<TBlockSideRec> Blocks;
  /// The largest Top added since the last Clear.
  float MaxTop = 0;

  /// Adds a band. Over a band with exactly these edges the wider offset counts; over parts of others the new one does,
  /// while what it covers keeps its node. An offset of 0 or less adds nothing.
  void AddBlock(float top, float bottom, float offset, THtNode* node);
  /// Becomes what the bands of `source` look like from a box that begins at (dx, dy). MaxTop is 0 then.
  void Assign(const TBlockSide& source, float dx, float dy);
  void Clear();
  /// The first y below every band; 0 if there are none.
  float ClearTop() const { return Blocks.empty() ? 0 : Blocks.back().Bottom; }
  bool Empty() const { return Blocks.empty(); }
  /// The widest offset of the bands that reach at least a pixel into the range; 0 if none does.
  float MaxOffset(float top, float bottom) const;
  /// Of two that are as wide, the later. Zeros if there are no bands.
  TOffsetBlock MaxOffsetBlock() const;
  /// The first y, at or below `y`, at which a box of that size finds room in `available` beside the bands, and how far
  /// they take in there. The search stops at a band of `node` itself.
  float Y(float width, float y, float height, float available, const THtNode* node, float& offset) const;

 private:
  void Overlay(size_t index, float top, float bottom, float offset);
};

/// The float map of a node: what floats have taken of its content box on the left and on the right, in the coordinates
/// of that box. Offsets are measured inward from its left or right edge.
///
///   TBlockFloats& floats = block.GetFloatMap();
///   floats.Clear();
///   floats.AddContainerFloats();                       // what reaches in from outside
///   floats.AddBlock(image, false);                     // a float that was placed
///   width = floats.MaxWidth(y, lineHeight, left, right);
///
/// The layout fills it and empties it before the next time. What is recorded in a box that is no block container is
/// recorded in the boxes around it as well, up to the nearest block container. One document, one thread.
class TBlockFloats {
 public:
  TBlockSide Left;
  TBlockSide Right;
  /// Element.InnerWidth as it was at the last Y or MaxWidth, or, in whole pixels, at the last Clear.
  float Width = 0;
  TStyledHTMLNode& Element;

  explicit TBlockFloats(TStyledHTMLNode& element) : Element(element) {}

  /// Records a float by its OuterRect, which with `applyRelative` is moved as its relative position says. A rectangle
  /// without width or height records nothing.
  void AddBlock(TStyledHTMLNode& node, bool applyRelative);
  /// Records a range. An offset of 0 or less leaves its side alone.
  void AddRange(float top, float bottom, float leftOffset, float rightOffset, THtNode* node);
  /// Takes over the floats of the enclosing box, unless the element is a block container.
  void AddContainerFloats();
  void Clear();
  float MaxTop() const { return std::max(Left.MaxTop, Right.MaxTop); }
  /// The first y, at or below `y`, at which a box of that size has room between both sides, and how far they take in
  /// there. `clearLeft`, `clearRight`: it stands below all floats of that side. A box wider than the element stands below
  /// all floats. Where both sides count the search goes down by pixels and gives up after 3000.
  float Y(float width, float y, float height, const THtNode* node, float& left, float& right, bool clearLeft,
          bool clearRight);
  /// The width that is free at a height, and how far both sides take in there. Never below 0.
  float MaxWidth(float y, float height, float& left, float& right);

 private:
  void AddToSide(TBlockSide TBlockFloats::*side, float top, float bottom, float offset, THtNode* node);
  float SearchDown(float width, float y, float from, float height, float& left, float& right) const;
};

}  // namespace ht
