#include "htruntime/mainthread.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

#include "htruntime/exception.h"

namespace ht {

namespace {

struct TQueue {
  std::mutex Lock;
  std::deque<std::function<void()>> Calls;
  std::function<void()> Wake;
};

TQueue& Queue() {
  static TQueue queue;
  return queue;
}

pid_t CurrentThread() { return static_cast<pid_t>(syscall(SYS_gettid)); }

// On Linux the first thread of a process has the number of the process.
std::atomic<pid_t> MainThread{0};

}  // namespace

void HtSetMainThread() { MainThread = CurrentThread(); }

bool HtIsMainThread() {
  const pid_t main = MainThread;
  return CurrentThread() == (main ? main : getpid());
}

void HtQueueMainThread(std::function<void()> call) {
  TQueue& queue = Queue();
  std::function<void()> wake;
  {
    const std::lock_guard guard(queue.Lock);
    queue.Calls.push_back(std::move(call));
    wake = queue.Wake;
  }
  if (wake) wake();
}

void HtSetMainThreadWake(std::function<void()> wake) {
  const std::lock_guard guard(Queue().Lock);
  Queue().Wake = std::move(wake);
}

int HtPumpMainThread() {
  if (!HtIsMainThread()) throw EAssertionFailed(u"Not on the main thread");
  TQueue& queue = Queue();
  std::unique_lock guard(queue.Lock);
  const auto waiting = static_cast<int>(queue.Calls.size());
  // A call may pump by itself, so fewer calls may be left than there were.
  int run = 0;
  for (; run < waiting && !queue.Calls.empty(); ++run) {
    std::function<void()> call = std::move(queue.Calls.front());
    queue.Calls.pop_front();
    guard.unlock();
    std::exchange(call, nullptr)();  // released before the lock is taken: what it holds may queue calls
    guard.lock();
  }
  return run;
}

void HtSetThreadName(std::u16string_view name) {
  constexpr size_t kMaxBytes = 15;
  std::string bytes = HtToUtf8(name);
  if (bytes.size() > kMaxBytes) {
    size_t end = kMaxBytes;
    while (end > 0 && (bytes[end] & 0xC0) == 0x80) --end;  // no half characters
    bytes.resize(end);
  }
  pthread_setname_np(pthread_self(), bytes.c_str());
}

}  // namespace ht
