#include "htruntime/arena.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

#if defined(__linux__)
#include <cerrno>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace ht {
namespace {

// Bytes that malloc has handed out, counting those blocks below about 1 KB that it keeps for the next caller. With a
// sanitizer always 0; that finds leaks by itself.
size_t BytesInUse() {
#if defined(__GLIBC__)
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
#else
  return 0;
#endif
}

bool IsMapped(const void* place) {
#if defined(__linux__)
  const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  unsigned char resident;
  return mincore(reinterpret_cast<void*>(reinterpret_cast<uintptr_t>(place) / page * page), page,
                 &resident) == 0;
#else
  return place == nullptr;
#endif
}

struct TPiece {
  unsigned char* Place;
  size_t Size;

  TPiece(THtBlockChain& chain, size_t size)
      : Place(static_cast<unsigned char*>(chain.Allocate(size))), Size(size) {
    std::fill_n(Place, size, static_cast<unsigned char>(size));
  }
  bool IsWhole() const {
    return std::all_of(Place, Place + Size,
                       [this](unsigned char c) { return c == static_cast<unsigned char>(Size); });
  }
};

// However the pieces are freed, before and after the chain ends: none is touched by another, all blocks come back.
TEST(BlockChain, BlocksGoWithTheirLastPiece) {
  for (size_t alignment : {8u, 16u})
    for (int order = 0; order < 4; ++order)
      for (bool chainFirst : {false, true}) {
        std::vector<TPiece> pieces;
        pieces.reserve(600);
        const size_t before = BytesInUse();
        auto chain = std::make_unique<THtBlockChain>(1100, 4400, alignment);
        for (size_t i = 0; i < 600; ++i) {
          pieces.emplace_back(*chain, i % 97 == 96 ? 5000 : 1 + i * 7 % 60);
          EXPECT_EQ(reinterpret_cast<uintptr_t>(pieces.back().Place) % alignment, 0u);
        }
        if (order == 1) std::reverse(pieces.begin(), pieces.end());
        if (order == 2)
          for (size_t i = 0; i < pieces.size(); ++i) std::swap(pieces[i], pieces[i * 7919 % pieces.size()]);
        if (order == 3) std::rotate(pieces.begin(), pieces.begin() + 1, pieces.end());
        if (chainFirst) chain.reset();
        for (const TPiece& piece : pieces) {
          EXPECT_TRUE(piece.IsWhole());
          THtBlockChain::Free(piece.Place);
        }
        chain.reset();
        EXPECT_EQ(BytesInUse(), before) << order << chainFirst;
      }
}

TEST(BlockChain, FreedByOtherThreadsWhileItGrows) {
  constexpr size_t kCount = 20000;
  THtBlockChain chain(256, 4096, 8);
  std::vector<std::atomic<unsigned char*>> places(kCount);
  std::vector<std::thread> threads;
  for (size_t t = 0; t < 3; ++t)
    threads.emplace_back([&places, t] {
      for (size_t i = t; i < kCount; i += 3) {
        unsigned char* place;
        while (!(place = places[i].load(std::memory_order_acquire))) std::this_thread::yield();
        EXPECT_EQ(*place, static_cast<unsigned char>(i));
        THtBlockChain::Free(place);
      }
    });
  for (size_t i = 0; i < kCount; ++i) {
    auto* place = static_cast<unsigned char*>(chain.Allocate(1 + i % 40));
    *place = static_cast<unsigned char>(i);
    places[i].store(place, std::memory_order_release);
  }
  for (std::thread& thread : threads) thread.join();
}

// Four of the large blocks that were released are kept for the next chain; the others go back to the system.
TEST(BlockChain, FewLargeBlocksAreKept) {
  constexpr size_t kBlock = size_t{2} << 20, kMost = 4;
  std::vector<void*> places(2 * kMost);
  for (int round = 0; round < 2; ++round) {
    THtBlockChain chain(kBlock, kBlock, 16);
    for (void*& place : places) place = chain.Allocate(kBlock - 100);
    for (void* place : places) {
      EXPECT_TRUE(IsMapped(place));
      THtBlockChain::Free(place);
    }
  }
  EXPECT_EQ(static_cast<size_t>(std::count_if(places.begin(), places.end(), IsMapped)), kMost);
}

struct TPooled {
  HT_POOLED
  char Content[100] = {};
};

TEST(Arena, ObjectsOutliveIt) {
  for (size_t expected : {size_t{0}, size_t{3000}, size_t{100} << 20}) {
    std::vector<std::unique_ptr<TPooled>> objects;
    std::vector<uint64_t, THtPoolAllocator<uint64_t>> numbers;
    objects.push_back(std::make_unique<TPooled>());
    {
      THtArena outer(expected);
      for (int i = 0; i < 100; ++i) {
        objects.push_back(std::make_unique<TPooled>());
        numbers.resize(numbers.size() + 1000);  // larger than any object of an arena in the end
        THtArena inner(expected);
        objects.push_back(std::make_unique<TPooled>());
      }
    }
    objects.push_back(std::make_unique<TPooled>());
    for (const auto& object : objects) EXPECT_EQ(reinterpret_cast<uintptr_t>(object.get()) % 16, 0u);
    std::thread([moved = std::move(objects), also = std::move(numbers)] {}).join();
  }
  HtPoolFree(nullptr);
}

TEST(Arena, TextsOutliveIt) {
  std::vector<hstring> texts, copies;
  {
    THtArena arena(1);
    for (size_t length = 0; length < 200; ++length)
      texts.push_back(arena.NewText(std::u16string(length, u'x')));
    copies.assign(texts.begin() + 10, texts.begin() + 20);
  }
  EXPECT_TRUE(texts[0].Empty());
  for (size_t length = 0; length < texts.size(); ++length) {
    hstring& text = texts[length];
    EXPECT_EQ(text, std::u16string(length, u'x'));
    EXPECT_EQ(text[length], 0);
    text += u'y';
    EXPECT_EQ(text, std::u16string(length, u'x') + u"y");
    text.SetLength(length / 2);
  }
  texts.clear();
  for (size_t i = 0; i < copies.size(); ++i) EXPECT_EQ(copies[i], std::u16string(i + 10, u'x'));
  std::thread([moved = std::move(copies)]() mutable {
    for (hstring& text : moved) text.Unique()[0] = u'z';
  }).join();
}

}  // namespace
}  // namespace ht
