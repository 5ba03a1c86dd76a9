#pragma once

#include <functional>

#include "htcanvas/image.h"
#include "htcanvas/metarecord.h"
#include "htutils/objectlist.h"

namespace ht {

/// Recorded drawing: what a THtMetaCanvas was told, in order. It can be played on any canvas, saved, and loaded again.
///
///   list.SavetoStream(stream);
///   …
///   THtMetaList loaded(true);
///   loaded.LoadfromStream(stream, *canvas.CanvasClass(), fonts);
///   loaded.Play(canvas, 1);
///
/// A list refers to the fonts of texts, which belong to their collection, and to the images that were drawn, until it is
/// unified. Playing changes nothing of the list, but leaves the fonts of its texts with the style of the last one, and the
/// scale 1. One thread at a time; lists may be played side by side where they, and the canvases, share neither fonts nor
/// images.
///
/// The stream has no mark at its start and no version. It keeps the drawing by value, but not everything: texts with
/// spacing, fill and stroke become plain ones, tiled images plain ones; links and shadows are left out, and so are the
/// features of fonts and the matrix of a linear gradient.
class THtMetaList : public THtDisplayList {
  HT_CLASS(THtMetaList, THtDisplayList)

 public:
  using THtMetaRecDrawEvent =
      std::function<void(THtMetaCanvasRec& record, THtCanvas& canvas, int32_t page, float opacity)>;

  explicit THtMetaList(bool ownsObjects) : FRecs(ownsObjects) {}

  /// Takes the record over, if the list owns its records. Returns its index.
  int32_t Add(THtMetaCanvasRec* record);
  int32_t Count() const { return FRecs.GetCount(); }
  /// Index from 0. Raises EListError outside.
  THtMetaCanvasRec* GetRec(int32_t index) const { return FRecs.Get<THtMetaCanvasRec>(index); }
  /// `opacity` from 0 to 1 is multiplied with that of the records. Where the list is part of itself, as an image of a page
  /// on that page, it is left out.
  void Play(THtCanvas& canvas, float opacity) override;
  /// Makes the list independent of the images that were drawn. Those of a page that was unified are made of their data
  /// each time it is played.
  void Unify();
  /// Raises what the stream raises.
  void SavetoStream(TStream& stream) const;
  /// Adds the records of a stream to the list, which has to own them, and leaves the stream behind them. Their resources are
  /// of the classes of `canvasClass`, the fonts belong to the collection. Raises EStreamError "Stream read error" where the
  /// stream ends early, EHtException "Meta stream is damaged" for a count or a code that is none, and what THtPath::Parse
  /// raises for a path that is none. Records that were read before stay in the list.
  void LoadfromStream(TStream& stream, const THtCanvasClass& canvasClass, THtFontCollection& fonts);
  /// Called before each record that is played.
  void SetOnDrawRec(THtMetaRecDrawEvent event) { FOnDrawRec = std::move(event); }
  /// Owns an image that records refer to.
  void KeepImage(std::unique_ptr<THtImage> image) { FImages.push_back(std::move(image)); }
  /// Moves all records and images of the other list to the end of this one. Both own their records, or neither does.
  void TakeRecords(THtMetaList& other);
  /// Gives back the memory that was kept for further records.
  void Trim() { FRecs.SetCapacity(FRecs.GetCount()); }

  int32_t Page = 0;  // the index of the page that the list belongs to

 private:
  THtMetaRecDrawEvent FOnDrawRec;
  THtObjectList FRecs;
  bool FPlaying = false;
  std::vector<std::unique_ptr<THtImage>> FImages;
};

}  // namespace ht
