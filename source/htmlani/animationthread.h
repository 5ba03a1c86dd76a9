#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "htruntime/object.h"

namespace ht {

/// A callback bound to an object, that takes the milliseconds that have passed. Two are the same when both words are.
///
///   thread.Subscribe(HtAnimationProc<&TClock::Tick>(clock));
struct TAnimationProc {
  void (*Code)(void* target, int32_t elapsed) = nullptr;
  void* Target = nullptr;

  void operator()(int32_t elapsed) const { Code(Target, elapsed); }
  friend bool operator==(const TAnimationProc&, const TAnimationProc&) = default;
};

namespace detail {
template <class T>
struct TTargetOf;
template <class T>
struct TTargetOf<void (T::*)(int32_t)> {
  using Type = T;
};
}  // namespace detail

template <auto kMethod>
TAnimationProc HtAnimationProc(typename detail::TTargetOf<decltype(kMethod)>::Type& target) {
  using TTarget = typename detail::TTargetOf<decltype(kMethod)>::Type;
  return {[](void* object, int32_t elapsed) { (static_cast<TTarget*>(object)->*kMethod)(elapsed); }, &target};
}

/// The heartbeat of documents and subscribers: a thread that some hundred times a second lets every document go on, calls
/// every subscriber, and has repainted what changed. A host derives its thread and says how:
///
///   class TViewerThread final : public TBaseAnimationThread {
///    public:
///     TViewerThread() { Resume(); }
///     ~TViewerThread() override { Stop(); }
///    protected:
///     bool AnimateDoc(TObject& doc, int32_t elapsed, bool& changed) override { … }
///     void RepaintDoc(TObject& doc) override { … }
///   };
///
/// The class that is ready to run resumes the thread at the end of its constructor, and stops it first in its destructor.
/// Documents are borrowed: one has to be registered no longer, and a pass over, before it goes; UnregisterDoc alone ends
/// repainting. All operations may be called on any thread. AnimateDoc and RepaintDoc run under the lock of the documents,
/// and must not wait for a thread that registers.
class TBaseAnimationThread : public TObject {
  HT_CLASS(TBaseAnimationThread, TObject)

 public:
  TBaseAnimationThread();
  /// Stops the thread.
  ~TBaseAnimationThread() override;
  TBaseAnimationThread(const TBaseAnimationThread&) = delete;
  TBaseAnimationThread& operator=(const TBaseAnimationThread&) = delete;

  void RegisterDoc(TObject& doc);
  /// From the next pass on.
  void UnregisterDoc(TObject& doc);
  void Subscribe(const TAnimationProc& proc);
  /// From the next pass on. One that was never subscribed does nothing.
  void Unsubscribe(const TAnimationProc& proc);

  /// The sleep between two passes in milliseconds.
  std::atomic<int32_t> Step = 10;
  /// While it is set a pass does nothing; the first one behind it sees the whole time as passed.
  std::atomic<bool> Disabled = false;

 protected:
  /// Passes and sleeps until the thread is to end.
  virtual void Execute();
  /// Lets a document go on by `elapsed` milliseconds; sets `changed` when it has to be repainted. False when there is nothing
  /// more to do: the document is registered no longer.
  virtual bool AnimateDoc(TObject& doc, int32_t elapsed, bool& changed) = 0;
  virtual void RepaintDoc(TObject& doc) = 0;

  /// A clock that only goes forward, and its ticks a second.
  virtual int64_t ReadCounter() const;
  virtual int64_t CounterFrequency() const;
  /// True has RepaintDoc called on this thread at once, as a library without a main thread needs it. Else it is queued to the
  /// main thread.
  virtual bool RepaintsAtOnce() const { return false; }
  /// Told what escaped a pass, "HtAnimationThread: " and the message. Here it goes to the standard error.
  virtual void DebugOutput(const hstring& text);

  /// Starts the thread.
  void Resume();
  /// Ends it; returns when it has ended.
  void Stop();
  bool Terminated() const { return FTerminated; }
  /// Takes the present as the time of the last pass.
  void StartClock();
  /// What happens between two sleeps. Exceptions of AnimateDoc pass to the caller.
  void Pass();

 private:
  struct TRepaintQueue;

  int32_t Elapsed(int64_t now, int32_t least) const;
  bool AnimateDocs(int64_t now);
  void CallProcs(int64_t now);
  void QueueRepaint();
  void Repaint();
  void Sleep();

  std::recursive_mutex FDocsLock;
  std::vector<TObject*> Docs;
  std::vector<TObject*> Unr;  // to leave Docs at the next pass; under its lock
  std::recursive_mutex FProcsLock;
  std::vector<TAnimationProc> Procs;
  std::vector<TAnimationProc> Unp;  // to leave Procs at the next pass; under its lock
  int64_t FLast = 0;
  int64_t QPFrequency = 1;  // ticks a millisecond
  std::atomic<bool> FTerminated = false;
  std::mutex FSleepLock;
  std::condition_variable FWake;
  std::shared_ptr<TRepaintQueue> FRepaints;  // what the calls in the main thread's queue share
  std::thread FThread;
};

}  // namespace ht
