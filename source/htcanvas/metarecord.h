#pragma once

#include "htruntime/arena.h"
#include "htruntime/object.h"

namespace ht {

class THtCanvas;
class THtCanvasClass;
class THtFontCollection;
class TMetaReader;
class TStream;

/// Where a recording or a loaded list takes the memory of its records from.
class THtMetaRecChain : public THtBlockChain {
 public:
  THtMetaRecChain() : THtBlockChain(1 << 10, 64 << 10, alignof(void*)) {}
};

/// One call of a canvas, recorded. A THtMetaList owns its records and plays them. A host may derive records of its own:
/// they are played as any other, but the stream has no form for them.
///
/// A record draws with the resources that it was made with, or with copies of them in the classes of the canvas; nothing
/// of the record changes.
class THtMetaCanvasRec : public TObject {
  HT_CLASS(THtMetaCanvasRec, TObject)

 public:
  HT_POOLED
  static void* operator new(size_t bytes, THtBlockChain& chain) { return chain.Allocate(bytes); }
  static void operator delete(void* object, THtBlockChain&) noexcept { HtPoolFree(object); }

  /// Reads what stands behind the record's tag; nothing for a record that the stream has no form for. Resources are of the
  /// classes of `canvasClass`, the fonts belong to the collection. Raises what THtMetaList::LoadfromStream raises.
  void LoadFromStream(TStream& stream, const THtCanvasClass& canvasClass, THtFontCollection& fonts);
  /// Repeats the call. `opacity` is multiplied with that of the record.
  virtual void Draw(THtCanvas& canvas, float opacity) = 0;
  /// Takes over what the record only refers to.
  virtual void Unify() {}
  /// Writes the tag, and what belongs to it: tag 0 alone here. Raises what the stream raises.
  virtual void SavetoStream(TStream& stream);

  /// LoadFromStream from a reader that is shared by many records.
  virtual void Load(TMetaReader&) {}
};

}  // namespace ht
