#pragma once

#include "htruntime/list.h"

namespace ht {

/// An ordered list of objects that frees them only when created as owning: on Delete, Remove, Put of another
/// object, Clear and its own destruction; Extract never frees.
///
///   THtObjectList shapes(true);
///   shapes.Add(new TShape);
///   for (int32_t i = 0; i < shapes.GetCount(); ++i) shapes.Get<TShape>(i)->Draw();
class THtObjectList : public TList {
  HT_CLASS(THtObjectList, TList)

 public:
  explicit THtObjectList(bool ownsObjects) : FOwnsObjects(ownsObjects) {}
  ~THtObjectList() override;

  bool GetOwnsObjects() const { return FOwnsObjects; }
  void SetOwnsObjects(bool ownsObjects) { FOwnsObjects = ownsObjects; }

  // The operations of TList for objects. A pointer to any subclass is stored as its TObject.

  /// That the entry is a T is the caller's word.
  template <class T = TObject>
  T* Get(int32_t index) const {
    return static_cast<T*>(static_cast<TObject*>(TList::Get(index)));
  }
  void Put(int32_t index, TObject* object) { TList::Put(index, object); }
  int32_t Add(TObject* object) { return TList::Add(object); }
  void Insert(int32_t index, TObject* object) { TList::Insert(index, object); }
  int32_t Remove(TObject* object) { return TList::Remove(object); }
  TObject* Extract(TObject* object) { return static_cast<TObject*>(TList::Extract(object)); }
  int32_t IndexOf(const TObject* object) const { return TList::IndexOf(object); }
  template <class T = TObject>
  T* FirstItem() const {
    return static_cast<T*>(static_cast<TObject*>(TList::FirstItem()));
  }
  template <class T = TObject>
  T* LastItem() const {
    return static_cast<T*>(static_cast<TObject*>(TList::LastItem()));
  }
  void Clear() override;

 protected:
  THtObjectList(bool ownsObjects, void** place, int32_t capacity)
      : TList(place, capacity), FOwnsObjects(ownsObjects) {}

  void Notify(void* item, TAction action) override;

 private:
  bool FOwnsObjects;
};

/// An ordered list of pointers that owns nothing.
class THtPointerList : public TList {
  HT_CLASS(THtPointerList, TList)
};

}  // namespace ht
