// Insertion and search at 100, 10,000 and 1,000,000 keys, beside the standard map and, where they are installed,
// absl::flat_hash_map and boost::unordered_flat_map. Times are per key. Every table maps to existing records; the
// texts that are searched for have storage of their own, as pieces of a document have.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <random>
#include <unordered_map>
#include <vector>

#include "htdictionary/htdictionary.h"

#if HT_PEER_ABSL
#include <absl/container/flat_hash_map.h>
#endif
#if HT_PEER_BOOST
#include <boost/unordered/unordered_flat_map.hpp>
#endif

using namespace ht;

namespace {

struct TRec {
  hstring Name;
  uint32_t Id;
};

// Keys that a table gets, and as many that are searched for: the same in another order, or others.
struct TKeys {
  std::vector<TRec> Records;
  std::vector<uint32_t> HitIds, MissIds;
  std::vector<std::u16string> HitNames, MissNames;

  explicit TKeys(size_t count) {
    std::mt19937 random(static_cast<uint32_t>(count));
    std::vector<uint32_t> ids(2 * count);
    for (uint32_t& id : ids) id = static_cast<uint32_t>(random());
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    std::shuffle(ids.begin(), ids.end(), random);
    for (size_t i = 0; i < ids.size(); ++i) {
      if (i < count)
        Records.push_back({hstring(std::u16string_view(NameOf(ids[i]))), ids[i]});
      else
        MissIds.push_back(ids[i]);
    }
    HitIds.assign(ids.begin(), ids.begin() + static_cast<std::ptrdiff_t>(count));
    std::shuffle(HitIds.begin(), HitIds.end(), random);
    for (uint32_t id : HitIds) HitNames.push_back(NameOf(id));
    for (uint32_t id : MissIds) MissNames.push_back(NameOf(id));
  }

  // Up to 9 letters and the number in base 26.
  static std::u16string NameOf(uint32_t id) {
    std::u16string name(u"paragraph", id % 10);
    for (; id != 0; id /= 26) name += static_cast<char16_t>(u'A' + id % 26);
    return name;
  }
};

const TKeys& KeysOf(const benchmark::State& state) {
  static std::unordered_map<int64_t, std::unique_ptr<TKeys>> all;
  auto& keys = all[state.range(0)];
  if (!keys) keys = std::make_unique<TKeys>(static_cast<size_t>(state.range(0)));
  return *keys;
}

void* Pointer(const TRec& rec) { return const_cast<TRec*>(&rec); }

// One class a table: how it is made, filled and searched.

struct TIds {
  THtIdPointerDictionary Table{0};
  void Insert(const TRec& rec) { Table.Add(rec.Id, Pointer(rec)); }
  const void* Find(uint32_t id) const { return Table.Get(id); }
};

struct TNames {
  THtPointerDictionary Table{0, HtNameOffset(&TRec::Name)};
  void Insert(const TRec& rec) { Table.AddPointer(Pointer(rec)); }
  const void* Find(std::u16string_view name) const { return Table.Get(name); }
};

template <class TMap>
struct TIdMap {
  TMap Table;
  void Insert(const TRec& rec) { Table.emplace(rec.Id, Pointer(rec)); }
  const void* Find(uint32_t id) const {
    const auto it = Table.find(id);
    return it == Table.end() ? nullptr : it->second;
  }
};

template <class TMap>
struct TNameMap {
  TMap Table;
  void Insert(const TRec& rec) { Table.emplace(rec.Name, Pointer(rec)); }
  const void* Find(std::u16string_view name) const {
    const auto it = Table.find(name);
    return it == Table.end() ? nullptr : it->second;
  }
};

template <class TTable>
void Insert(benchmark::State& state) {
  const TKeys& keys = KeysOf(state);
  while (state.KeepRunningBatch(state.range(0))) {
    TTable table;
    for (const TRec& rec : keys.Records) table.Insert(rec);
    benchmark::DoNotOptimize(table);
  }
}

template <class TTable, class TQuery>
void Search(benchmark::State& state, const TKeys& keys, const std::vector<TQuery>& queries) {
  TTable table;
  for (const TRec& rec : keys.Records) table.Insert(rec);
  while (state.KeepRunningBatch(static_cast<int64_t>(queries.size())))
    for (const TQuery& query : queries) benchmark::DoNotOptimize(table.Find(query));
}

template <class TTable>
constexpr bool kByName = requires(TTable table) {
  table.Find(std::u16string_view());
};

template <class TTable>
void Hit(benchmark::State& state) {
  const TKeys& keys = KeysOf(state);
  if constexpr (kByName<TTable>)
    Search<TTable>(state, keys, keys.HitNames);
  else
    Search<TTable>(state, keys, keys.HitIds);
}

template <class TTable>
void Miss(benchmark::State& state) {
  const TKeys& keys = KeysOf(state);
  if constexpr (kByName<TTable>)
    Search<TTable>(state, keys, keys.MissNames);
  else
    Search<TTable>(state, keys, keys.MissIds);
}

template <class TTable>
void Register(const std::string& name) {
  const auto add = [&](const char* what, void (*run)(benchmark::State&)) {
    benchmark::RegisterBenchmark((std::string(what) + "/" + name).c_str(), run)
        ->Arg(100)
        ->Arg(10000)
        ->Arg(1000000);
  };
  add("insert", Insert<TTable>);
  add("hit", Hit<TTable>);
  add("miss", Miss<TTable>);
}

// An empty dictionary of the size that a parser makes one of for each document.
void Construct(benchmark::State& state) {
  for (auto _ : state) {
    THtObjectDictionary table(static_cast<int32_t>(state.range(0)), true, 0);
    benchmark::DoNotOptimize(table);
  }
}
BENCHMARK(Construct)->Arg(255)->Arg(511);

[[maybe_unused]] const bool registered = [] {
  Register<TIds>("id/htcore");
  Register<TIdMap<std::unordered_map<uint32_t, void*>>>("id/std");
#if HT_PEER_ABSL
  Register<TIdMap<absl::flat_hash_map<uint32_t, void*>>>("id/absl");
#endif
#if HT_PEER_BOOST
  Register<TIdMap<boost::unordered_flat_map<uint32_t, void*>>>("id/boost");
#endif
  using TView = std::u16string_view;
  Register<TNames>("name/htcore");
  Register<TNameMap<std::unordered_map<TView, void*>>>("name/std");
#if HT_PEER_ABSL
  struct TAbslHash {
    size_t operator()(TView text) const {
      return absl::Hash<std::string_view>()({reinterpret_cast<const char*>(text.data()), text.size() * 2});
    }
  };
  Register<TNameMap<absl::flat_hash_map<TView, void*, TAbslHash>>>("name/absl");
#endif
#if HT_PEER_BOOST
  Register<TNameMap<boost::unordered_flat_map<TView, void*, std::hash<TView>>>>("name/boost");
#endif
  return true;
}();

}  // namespace
