// The pass by itself under a clock that the test sets, and the thread as it runs.

#include "htmlani/animationthread.h"

#include <gtest/gtest.h>
#include <string>

#include "htruntime/exception.h"
#include "htruntime/mainthread.h"

namespace ht {
namespace {

struct TDoc : TObject {
  explicit TDoc(char name) : Name(name) {}
  char Name;
  bool Changes = true, GoesOn = true;
};

class TTestThread final : public TBaseAnimationThread {
 public:
  ~TTestThread() override { Stop(); }
  using TBaseAnimationThread::Pass;
  using TBaseAnimationThread::Resume;
  using TBaseAnimationThread::StartClock;
  using TBaseAnimationThread::Stop;

  int64_t Now = 1000;  // in microseconds
  std::string Log;
  bool AtOnce = false;
  std::atomic<int> Errors = 0;

  std::string Take() { return std::exchange(Log, {}); }
  void Tick(int32_t elapsed) { Log += "t" + std::to_string(elapsed) + " "; }
  void Fail(int32_t) {
    Log += "f ";
    throw EHtException(u"no");
  }

 protected:
  bool AnimateDoc(TObject& object, int32_t elapsed, bool& changed) override {
    auto& doc = static_cast<TDoc&>(object);
    if (doc.Name == '!') throw EHtException(u"broken");
    Log += doc.Name + std::to_string(elapsed) + " ";
    changed |= doc.Changes;
    return doc.GoesOn;
  }
  void RepaintDoc(TObject& doc) override { Log += std::string("r") + static_cast<TDoc&>(doc).Name + " "; }
  int64_t ReadCounter() const override { return Now; }
  int64_t CounterFrequency() const override { return 1000000; }
  bool RepaintsAtOnce() const override { return AtOnce; }
  void DebugOutput(const hstring& text) override { Errors += text == u"HtAnimationThread: broken"; }
};

TEST(AnimationThread, Passes) {
  TTestThread thread;
  thread.StartClock();
  TDoc a('a'), b('b');
  thread.RegisterDoc(a);
  thread.RegisterDoc(b);
  thread.Subscribe(HtAnimationProc<&TTestThread::Tick>(thread));
  const auto pass = [&](int64_t microseconds) {
    thread.Now += microseconds;
    thread.Pass();
    HtPumpMainThread();
    return thread.Take();
  };
  EXPECT_EQ(pass(25900), "a25 b25 t25 ra rb ");
  EXPECT_EQ(pass(100), "a1 b1 t10 ra rb ");  // at least 1 for documents, and the sleep for subscribers
  thread.Disabled = true;
  EXPECT_EQ(pass(50000), "");
  thread.Disabled = false;
  EXPECT_EQ(pass(50000), "a100 b100 t100 ra rb ");
  a.Changes = b.Changes = false;
  EXPECT_EQ(pass(20000), "a20 b20 t20 ");

  thread.UnregisterDoc(a);
  thread.RegisterDoc(a);  // stays, once
  EXPECT_EQ(pass(20000), "a20 b20 t20 ");
  thread.UnregisterDoc(a);
  b.Changes = true;
  EXPECT_EQ(pass(20000), "b20 t20 rb ");
  thread.RegisterDoc(a);
  b.GoesOn = false;  // changed, but gone
  EXPECT_EQ(pass(20000), "b20 a20 t20 ra ");
  EXPECT_EQ(pass(20000), "a20 t20 ");
}

TEST(AnimationThread, UnregisteredBeforeTheRepaint) {
  TTestThread thread;
  TDoc a('a'), b('b');
  thread.RegisterDoc(a);
  thread.RegisterDoc(b);
  thread.Now += 20000000;
  thread.StartClock();
  thread.Pass();
  thread.UnregisterDoc(a);
  HtPumpMainThread();
  EXPECT_EQ(thread.Take(), "a1 b1 rb ");
  thread.AtOnce = true;
  thread.Pass();
  EXPECT_EQ(thread.Take(), "b1 rb ");
  thread.Stop();
  EXPECT_EQ(HtPumpMainThread(), 0);
}

TEST(AnimationThread, RepaintOfAThreadThatIsGone) {
  TDoc a('a');
  {
    TTestThread thread;
    thread.RegisterDoc(a);
    thread.StartClock();
    thread.Pass();
  }
  EXPECT_EQ(HtPumpMainThread(), 1);
}

TEST(AnimationThread, Subscribers) {
  TTestThread thread;
  thread.StartClock();
  const TAnimationProc tick = HtAnimationProc<&TTestThread::Tick>(thread);
  const TAnimationProc fail = HtAnimationProc<&TTestThread::Fail>(thread);
  thread.Unsubscribe(tick);  // never subscribed
  thread.Subscribe(fail);
  thread.Pass();
  EXPECT_EQ(thread.Take(), "f ");
  for (const TAnimationProc& proc : {tick, fail, tick}) thread.Subscribe(proc);
  thread.Pass();
  EXPECT_EQ(thread.Take(), "t10 f t10 ");
  thread.Unsubscribe(tick);  // one of the two
  thread.Pass();
  EXPECT_EQ(thread.Take(), "t10 ");
}

TEST(AnimationThread, RunsUntilItIsStopped) {
  TTestThread thread;
  std::atomic<int> ticks = 0;
  struct TCounter {
    std::atomic<int>& Ticks;
    void Tick(int32_t) { ++Ticks; }
  } counter{ticks};
  thread.Step = 1;
  thread.Subscribe(HtAnimationProc<&TCounter::Tick>(counter));
  thread.Resume();
  while (ticks < 3) std::this_thread::yield();
  TDoc broken('!');
  thread.RegisterDoc(broken);
  while (thread.Errors < 3) std::this_thread::yield();
  thread.UnregisterDoc(broken);
  const int before = ticks;
  while (ticks < before + 3) std::this_thread::yield();
  TDoc doc('d');
  thread.RegisterDoc(doc);
  for (int repaints = 0; repaints < 3; repaints += HtPumpMainThread()) std::this_thread::yield();
  thread.Stop();
  HtPumpMainThread();
  EXPECT_NE(thread.Log.find("rd "), std::string::npos);
}

}  // namespace
}  // namespace ht
