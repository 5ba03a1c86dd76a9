#include "htcanvas/metalist.h"

#include "htcanvas/metaimagerecs.h"
#include "htcanvas/metareader.h"
#include "htcanvas/metashaperecs.h"
#include "htcanvas/metastaterecs.h"
#include "htcanvas/metatextrec.h"
#include "htcanvas/metawriter.h"

namespace ht {

namespace {

constexpr int64_t kChunk = 64 << 10;

template <class T>
THtMetaCanvasRec* NewRec(THtBlockChain& chain) {
  return new (chain) T;
}

// By tag.
constexpr THtMetaCanvasRec* (*kNewRecs[])(THtBlockChain&) = {
    nullptr,
    NewRec<THtMetaTextRec>,
    NewRec<THtMetaPathRec>,
    NewRec<THtMetaLineRec>,
    NewRec<THtMetaImageRec>,
    NewRec<THtMetaMatrixRec>,
    NewRec<THtMetaStateRec>,
    NewRec<THtMetaClipRec>,
    NewRec<THtMetaEllipseRec>,
    NewRec<THtMetaRectRec>,
};
static_assert(std::size(kNewRecs) == mtRect + 1);

}  // namespace

int32_t THtMetaList::Add(THtMetaCanvasRec* record) { return FRecs.Add(record); }

void THtMetaList::Play(THtCanvas& canvas, float opacity) {
  struct TPlaying {
    bool& Flag;
    ~TPlaying() { Flag = false; }
  };
  if (std::exchange(FPlaying, true)) return;
  const TPlaying playing{FPlaying};
  const int32_t count = Count();  // what is recorded into this list meanwhile is not played
  for (int32_t i = 0; i < count; ++i) {
    THtMetaCanvasRec& record = *GetRec(i);
    if (FOnDrawRec) FOnDrawRec(record, canvas, Page, opacity);
    record.Draw(canvas, opacity);
  }
}

void THtMetaList::Unify() {
  for (int32_t i = 0; i < Count(); ++i) GetRec(i)->Unify();
}

void THtMetaList::SavetoStream(TStream& stream) const {
  TMemoryStream chunk;  // so that the stream gets few large pieces
  const int32_t count = Count();
  chunk.WriteBuffer(&count, sizeof count);
  const auto flush = [&] {
    stream.WriteBuffer(chunk.GetMemory(), chunk.GetPosition());
    chunk.SetPosition(0);
  };
  for (int32_t i = 0; i < count; ++i) {
    GetRec(i)->SavetoStream(chunk);
    if (chunk.GetPosition() >= kChunk) flush();
  }
  flush();
}

void THtMetaList::LoadfromStream(TStream& stream, const THtCanvasClass& canvasClass,
                                 THtFontCollection& fonts) {
  TMetaReader in(stream, canvasClass, fonts);
  THtMetaRecChain chain;
  for (size_t left = in.Count(); left > 0; --left) {
    const uint16_t tag = in.U16();
    if (tag == mtNone || tag >= std::size(kNewRecs)) continue;
    std::unique_ptr<THtMetaCanvasRec> record(kNewRecs[tag](chain));
    record->Load(in);
    Add(record.get());
    record.release();
  }
  in.Finish();
  Trim();
}

void THtMetaList::TakeRecords(THtMetaList& other) {
  FRecs.SetCapacity(Count() + other.Count());
  for (int32_t i = 0; i < other.Count(); ++i) Add(other.GetRec(i));
  other.FRecs.SetCapacity(0);
  std::move(other.FImages.begin(), other.FImages.end(), std::back_inserter(FImages));
  other.FImages.clear();
}

}  // namespace ht
