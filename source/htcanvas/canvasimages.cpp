// Images that play a display list, and the images of CSS backgrounds.

#include <cmath>

#include "htcanvas/canvas.h"
#include "htmlcss/elementbackground.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

constexpr int64_t kMostTiles = 1 << 24;  // two for each pixel of a large screen; more would never end

constexpr bool RepeatsX(TBackgroundRepeat repeat) { return repeat == brRepeat || repeat == brRepeatX; }
constexpr bool RepeatsY(TBackgroundRepeat repeat) { return repeat == brRepeat || repeat == brRepeatY; }

// How far a tiling is moved into its first tile: within 0 and the tile.
float Phase(float origin, float tile) {
  const float phase = std::fmod(origin, tile);
  return phase < 0 ? phase + tile : phase;
}

int32_t TileCount(float length, float tile, bool repeat) {
  return repeat ? detail::RoundToInt(std::ceil(length / tile)) : 1;
}

// One axis of a background: the box, the image's size, and where it comes to stand.
struct TBackgroundAxis {
  float Start, End;  // of the box; the start moves when the tiling is not moved instead
  float Size;        // of the image
  float Origin = 0;  // by which the tiling is moved

  void Place(TMeasure position, TMeasureFlag near, TMeasureFlag far, bool repeats) {
    const float free = End - Start - Size;
    if (position.Flags.Contains(mfCenter))
      repeats ? Origin = -free / 2 : Start += free / 2;
    else if (position.Flags.Contains(far))
      repeats ? Origin = -(End - Size) : Start = End - Size;
    else if (position.Flags.Contains(mfNotAuto) && !position.Flags.Contains(near))
      repeats ? Origin = -static_cast<float>(position.GetPixels())
              : Start += static_cast<float>(position.GetPixels());
  }
};

}  // namespace

void THtCanvas::DrawImage(THtImage& image, const TRectF& rect, float opacity) {
  if (!image.IsMeta) return;
  SaveState();
  IntersectClip(rect);
  if (rect.Left != 0 || rect.Top != 0) TranslateTransform(rect.Left, rect.Top);
  const float width = static_cast<float>(image.Width);
  if (image.Width != 0 && detail::RoundToInt(rect.Width()) != image.Width)
    ScaleTransform(rect.Width() / width, rect.Width() / width);
  if (image.Meta) image.Meta->Play(*this, opacity);
  RestoreState();
}

void THtCanvas::FillImage(const TRectF& rect, THtImage& image, float deltaX, float deltaY,
                          const TElementBackground& background, float opacity, float radius) {
  if (image.Width <= 0 || image.Height <= 0) return;
  const auto imageWidth = static_cast<float>(image.Width), imageHeight = static_cast<float>(image.Height);
  TBackgroundAxis x{rect.Left, rect.Right, imageWidth};
  TBackgroundAxis y{rect.Top, rect.Bottom, imageHeight};
  const bool contain = background.SizeMode == bsContain;
  const bool fitted = contain || background.SizeMode == bsCover;
  if (fitted) {
    const float ratio = imageWidth / imageHeight;
    const bool boxIsWider = rect.Height() * ratio <= rect.Width();
    const bool byHeight = boxIsWider == contain;
    x.Size = byHeight ? rect.Height() * ratio : rect.Width();
    y.Size = byHeight ? rect.Height() : rect.Width() / ratio;
  } else {
    TMeasure sizeX = background.SizeX, sizeY = background.SizeY;
    if (!sizeX.GetAuto()) x.Size = static_cast<float>(sizeX.GetPixels());
    if (!sizeY.GetAuto()) y.Size = static_cast<float>(sizeY.GetPixels());
  }
  // What is told of x decides for y, too.
  const bool repeats = RepeatsX(background.Repeat);
  x.Place(background.PositionX, mfLeft, mfRight, repeats);
  y.Place(background.PositionY, mfTop, mfBottom, repeats);
  if (background.Repeat == brRepeatX) y.Start -= y.Origin;

  if (fitted) return DrawImage(image, {x.Start, y.Start, x.Start + x.Size, y.Start + y.Size}, opacity);
  if (background.Repeat == brNoRepeat) {
    TRectF place{x.Start, y.Start, x.Start + x.Size, y.Start + y.Size};
    ROffset(place, deltaX, -deltaY);
    return DrawImage(image, place, opacity);
  }
  DoFillImage(image, x.Size, y.Size, {x.Start, y.Start, x.End, y.End}, {deltaX + x.Origin, deltaY + y.Origin},
              RepeatsX(background.Repeat), RepeatsY(background.Repeat), opacity, radius);
}

void THtCanvas::DoFillImage(THtImage& image, float tileW, float tileH, const TRectF& rect,
                            const TPointF& origin, bool repeatX, bool repeatY, float opacity, float) {
  if (!(tileW > 0) || !(tileH > 0)) return;
  const int32_t columns = TileCount(rect.Width(), tileW, repeatX);
  const int32_t rows = TileCount(rect.Height(), tileH, repeatY);
  if (int64_t{columns} * rows > kMostTiles) return;
  const float left = rect.Left - Phase(origin.X, tileW), top = rect.Top - Phase(origin.Y, tileH);
  for (int32_t row = 0; row < rows; ++row)
    for (int32_t column = 0; column < columns; ++column) {
      TRectF tile{0, 0, tileW, tileH};
      ROffset(tile, left + static_cast<float>(column) * tileW, top + static_cast<float>(row) * tileH);
      DrawImage(image, tile, opacity);
    }
}

}  // namespace ht
