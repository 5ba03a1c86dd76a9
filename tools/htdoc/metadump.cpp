#include "metadump.h"

#include "htruntime/format.h"
#include "json.h"

using namespace ht;

namespace {

constexpr int kDecimals = 4;

// One field after the other.
class TFields {
 public:
  explicit TFields(TJson& json) : FJson(json) {}

  TFields& Add(std::u16string_view name, const auto& value) {
    FJson.Key(name);
    Put(value);
    return *this;
  }

 private:
  void Put(bool value) { FJson.Bool(value); }
  void Put(const hstring& text) { FJson.Text(text); }
  void Put(uint32_t color) { FJson.Text(HtFormat(u"%.8X", color)); }
  void Put(float number) { FJson.Number(number, kDecimals); }
  void Put(int64_t count) { FJson.Number(count); }
  template <class TEnum>
    requires std::is_enum_v<TEnum>
  void Put(TEnum value) { FJson.Text(HtEnumOf<TEnum>().NameOf(value)); }
  template <class TEnum>
  void Put(const TSet<TEnum>& set) {
    FJson.BeginArray();
    for (int i = 0; i < HtEnumOf<TEnum>().Count(); ++i)
      if (set.Contains(static_cast<TEnum>(i))) Put(static_cast<TEnum>(i));
    FJson.EndArray();
  }
  template <class T>
  void List(const T& items) {
    FJson.BeginArray();
    for (const auto& item : items) Put(item);
    FJson.EndArray();
  }
  template <class T>
  void Put(const std::vector<T>& items) {
    List(items);
  }
  void Put(const TRectF& rect) {
    List(std::initializer_list<float>{rect.Left, rect.Top, rect.Right, rect.Bottom});
  }
  void Put(const THtMatrixData& matrix) { List(matrix.Data); }
  void Put(const THtMetaPath& path) {
    FJson.BeginObject();
    TFields(FJson)
        .Add(u"Data", path.Text())
        .Add(u"FForClip", path->FForClip)
        .Add(u"FillModeWinding", path->GetFillModeWinding());
    FJson.EndObject();
  }
  void Put(const THtFont* font) {
    FJson.BeginObject();
    TFields(FJson).Add(u"FFamily", font->FFamily).Add(u"FHeight", font->FHeight);
    FJson.EndObject();
  }
  void Put(const THtPen* pen) {
    FJson.BeginObject();
    TFields(FJson)
        .Add(u"FLineJoin", pen->GetLineJoin())
        .Add(u"FLineCap", pen->GetLineCap())
        .Add(u"FColor", pen->GetColor())
        .Add(u"FWidth", pen->GetWidth())
        .Add(u"FPenStyle", pen->GetPenStyle())
        .Add(u"FDashOffset", pen->GetDashOffset())
        .Add(u"FMode", pen->FMode)
        .Add(u"Dashes", pen->Dashes);
    FJson.EndObject();
  }
  void Put(const THtBrush* brush) {
    FJson.BeginObject();
    TFields fields(FJson);
    fields.Add(u"Kind", brush->Kind);
    if (brush->Kind == hbSolid) {
      fields.Add(u"FColor", brush->GetColor());
    } else {
      if (brush->Kind == hbRadial)
        fields.Add(u"OffsetX", brush->OffsetX)
            .Add(u"OffsetY", brush->OffsetY)
            .Add(u"CX", brush->CX)
            .Add(u"CY", brush->CY)
            .Add(u"FX", brush->FX)
            .Add(u"FY", brush->FY)
            .Add(u"Radius", brush->Radius)
            .Add(u"FMatrix", brush->FMatrix);
      else
        fields.Add(u"Angle", brush->Angle)
            .Add(u"GradientRect", brush->GradientRect)
            .Add(u"FillRect", brush->FillRect);
      fields.Add(u"GradientColors", brush->GradientColors)
          .Add(u"GradientPositions", brush->GradientPositions);
    }
    FJson.EndObject();
  }
  void Put(const THtTextStyle& style) {
    FJson.BeginObject();
    TFields(FJson)
        .Add(u"WordSpacing", style.WordSpacing)
        .Add(u"LetterSpacing", style.LetterSpacing)
        .Add(u"Opacity", style.Opacity)
        .Add(u"Overflow", style.Overflow)
        .Add(u"Shadow", style.Shadow)
        .Add(u"RTL", style.RTL)
        .Add(u"EditorMode", style.EditorMode)
        .Add(u"Color", style.Color)
        .Add(u"ShadowColor", style.ShadowColor)
        .Add(u"DecorationColor", style.DecorationColor)
        .Add(u"DecorationStyle", style.DecorationStyle)
        .Add(u"ShadowX", style.ShadowX)
        .Add(u"ShadowY", style.ShadowY)
        .Add(u"ShadowBlur", style.ShadowBlur)
        .Add(u"WritingMode", style.WritingMode)
        .Add(u"UnicodeBidi", style.UnicodeBidi);
    FJson.EndObject();
  }

  TJson& FJson;
};

void AddInk(TFields& fields, const THtMetaBrush& brush, const THtMetaPen& pen) {
  if (brush) fields.Add(u"Brush", brush.Get());
  if (pen) fields.Add(u"Pen", pen.Get());
}

void Fields(TFields& fields, const THtMetaTextRec& r) {
  fields.Add(u"Text", r.Text);
  if (r.Font) fields.Add(u"Font", r.Font);
  fields.Add(u"FontStyle", r.FontStyle)
      .Add(u"RTL", r.RTL)
      .Add(u"Ellipsis", r.Ellipsis)
      .Add(u"R", r.R)
      .Add(u"UnderlineColor", r.UnderlineColor)
      .Add(u"Opacity", r.Opacity)
      .Add(u"TextStyle", r.TextStyle);
}

void Fields(TFields& fields, const THtMetaPathRec& r) {
  if (r.Path) fields.Add(u"Path", r.Path);
  fields.Add(u"Fill", r.Fill).Add(u"Bounds", r.Bounds);
  AddInk(fields, r.Brush, r.Pen);
}

void Fields(TFields& fields, const THtMetaLineRec& r) {
  fields.Add(u"x1", r.x1).Add(u"y1", r.y1).Add(u"x2", r.x2).Add(u"y2", r.y2);
  AddInk(fields, {}, r.Pen);
}

void Fields(TFields& fields, const THtMetaImageRec& r) {
  fields.Add(u"RSource", r.RSource)
      .Add(u"RDest", r.RDest)
      .Add(u"Opacity", r.Opacity)
      .Add(u"Bytes", static_cast<int64_t>(r.ImageData.size()));
}

void Fields(TFields& fields, const THtMetaMatrixRec& r) { fields.Add(u"M", r.M).Add(u"Flags", r.M.Flags); }
void Fields(TFields& fields, const THtMetaStateRec& r) { fields.Add(u"Save", r.Save); }

void Fields(TFields& fields, const THtMetaClipRec& r) {
  fields.Add(u"Clip", r.Clip);
  if (r.Path) fields.Add(u"Path", r.Path);
}

void Fields(TFields& fields, const THtMetaEllipseRec& r) {
  fields.Add(u"X", r.X).Add(u"Y", r.Y).Add(u"w", r.w).Add(u"h", r.h);
  AddInk(fields, r.Brush, r.Pen);
}

void Fields(TFields& fields, const THtMetaRectRec& r) {
  fields.Add(u"X", r.X).Add(u"Y", r.Y).Add(u"w", r.w).Add(u"h", r.h).Add(u"Rx", r.Rx).Add(u"Ry", r.Ry);
  fields.Add(u"Rounded", r.Rounded).Add(u"Fill", r.Fill).Add(u"Stroke", r.Stroke);
  AddInk(fields, r.Brush, r.Pen);
  if (r.Fill && !r.Brush) fields.Add(u"BrushColor", r.BrushColor);
  if (r.Stroke && !r.Pen) fields.Add(u"PenColor", r.PenColor).Add(u"PenWidth", r.PenWidth);
}

struct TKind {
  const TClass* Class;
  std::u16string_view Name;
  void (*Dump)(TFields& fields, const THtMetaCanvasRec& record);
};

template <class T>
TKind Kind(std::u16string_view name) {
  return {T::Class(), name, [](TFields& fields, const THtMetaCanvasRec& record) {
            Fields(fields, static_cast<const T&>(record));
          }};
}

}  // namespace

hstring DumpRecord(const THtMetaCanvasRec& record, int32_t page) {
  static const TKind kKinds[] = {
      Kind<THtMetaTextRec>(u"text"),   Kind<THtMetaPathRec>(u"path"),       Kind<THtMetaLineRec>(u"line"),
      Kind<THtMetaImageRec>(u"image"), Kind<THtMetaMatrixRec>(u"matrix"),   Kind<THtMetaStateRec>(u"state"),
      Kind<THtMetaClipRec>(u"clip"),   Kind<THtMetaEllipseRec>(u"ellipse"), Kind<THtMetaRectRec>(u"rect"),
  };
  TJson json;
  json.BeginObject().Key(u"page").Number(page);
  for (const TKind& kind : kKinds) {
    if (record.ClassType() != kind.Class) continue;
    json.Key(u"record").Text(kind.Name);
    TFields fields(json);
    kind.Dump(fields, record);
  }
  return json.EndObject().GetAsString();
}
