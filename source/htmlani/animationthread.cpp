#include "htmlani/animationthread.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "htruntime/exception.h"
#include "htruntime/mainthread.h"

namespace ht {

// A repaint that waits in the main thread's queue may be run after the thread is gone.
struct TBaseAnimationThread::TRepaintQueue {
  std::recursive_mutex Lock;
  TBaseAnimationThread* Thread;
};

TBaseAnimationThread::TBaseAnimationThread() : FRepaints(std::make_shared<TRepaintQueue>()) {
  FRepaints->Thread = this;
}

TBaseAnimationThread::~TBaseAnimationThread() { Stop(); }

void TBaseAnimationThread::Resume() {
  if (FThread.joinable()) return;
  FTerminated = false;
  {
    const std::lock_guard lock(FRepaints->Lock);
    FRepaints->Thread = this;
  }
  FThread = std::thread([this] { Execute(); });
}

void TBaseAnimationThread::Stop() {
  {
    const std::lock_guard lock(FSleepLock);
    FTerminated = true;
  }
  FWake.notify_all();
  if (FThread.joinable()) FThread.join();
  const std::lock_guard lock(FRepaints->Lock);
  FRepaints->Thread = nullptr;
}

void TBaseAnimationThread::RegisterDoc(TObject& doc) {
  const std::lock_guard lock(FDocsLock);
  std::erase(Unr, &doc);
  if (std::find(Docs.begin(), Docs.end(), &doc) == Docs.end()) Docs.push_back(&doc);
}

void TBaseAnimationThread::UnregisterDoc(TObject& doc) {
  const std::lock_guard lock(FDocsLock);
  Unr.push_back(&doc);
}

void TBaseAnimationThread::Subscribe(const TAnimationProc& proc) {
  const std::lock_guard lock(FProcsLock);
  Procs.push_back(proc);
}

void TBaseAnimationThread::Unsubscribe(const TAnimationProc& proc) {
  const std::lock_guard lock(FProcsLock);
  Unp.push_back(proc);
}

int64_t TBaseAnimationThread::ReadCounter() const {
  return std::chrono::steady_clock::now().time_since_epoch().count();
}

int64_t TBaseAnimationThread::CounterFrequency() const {
  using TPeriod = std::chrono::steady_clock::period;
  return TPeriod::den / TPeriod::num;
}

void TBaseAnimationThread::DebugOutput(const hstring& text) {
  std::fprintf(stderr, "%s\n", HtToUtf8(text).c_str());
}

void TBaseAnimationThread::StartClock() {
  FLast = ReadCounter();
  QPFrequency = std::max<int64_t>(CounterFrequency() / 1000, 1);
}

void TBaseAnimationThread::Execute() {
  HtSetThreadName(u"HTAnimation");
  StartClock();
  while (!FTerminated) {
    try {
      Pass();
      Sleep();
    } catch (const EHtException& e) {
      DebugOutput(u"HtAnimationThread: " + e.Message);
    } catch (const std::exception& e) {
      DebugOutput(u"HtAnimationThread: " + HtFromUtf8(e.what()));
    } catch (...) {
      DebugOutput(u"HtAnimationThread: "_hs);
    }
  }
}

void TBaseAnimationThread::Sleep() {
  std::unique_lock lock(FSleepLock);
  FWake.wait_for(lock, std::chrono::milliseconds(Step), [this] { return FTerminated.load(); });
}

void TBaseAnimationThread::Pass() {
  const int64_t now = ReadCounter();
  if (Disabled) return;
  const bool changed = AnimateDocs(now);
  CallProcs(now);
  FLast = now;
  if (!changed) return;
  if (RepaintsAtOnce())
    Repaint();
  else
    QueueRepaint();
}

int32_t TBaseAnimationThread::Elapsed(int64_t now, int32_t least) const {
  return static_cast<int32_t>(std::clamp<int64_t>((now - FLast) / QPFrequency, least, INT32_MAX));
}

// By index, since a document may register another.
bool TBaseAnimationThread::AnimateDocs(int64_t now) {
  const std::lock_guard lock(FDocsLock);
  for (TObject* doc : Unr) std::erase(Docs, doc);
  Unr.clear();
  bool changed = false;
  for (size_t i = 0; i < Docs.size();) {
    TObject* doc = Docs[i];
    if (AnimateDoc(*doc, Elapsed(now, 1), changed))
      ++i;
    else
      Docs.erase(Docs.begin() + static_cast<ptrdiff_t>(i));
  }
  return changed;
}

void TBaseAnimationThread::CallProcs(int64_t now) {
  const std::lock_guard lock(FProcsLock);
  for (const TAnimationProc& proc : Unp) {
    const auto found = std::find(Procs.begin(), Procs.end(), proc);
    if (found != Procs.end()) Procs.erase(found);
  }
  Unp.clear();
  for (size_t i = 0; i < Procs.size();) {
    const TAnimationProc proc = Procs[i];
    try {
      proc(Elapsed(now, Step));
      ++i;
    } catch (...) {
      Procs.erase(Procs.begin() + static_cast<ptrdiff_t>(i));
    }
  }
}

void TBaseAnimationThread::QueueRepaint() {
  HtQueueMainThread([repaints = FRepaints] {
    const std::lock_guard lock(repaints->Lock);
    if (repaints->Thread) repaints->Thread->Repaint();
  });
}

void TBaseAnimationThread::Repaint() {
  const std::lock_guard lock(FDocsLock);
  for (size_t i = 0; i < Docs.size() && !FTerminated; ++i)
    if (std::find(Unr.begin(), Unr.end(), Docs[i]) == Unr.end()) RepaintDoc(*Docs[i]);
}

}  // namespace ht
