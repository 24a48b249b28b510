#include "run/signals.h"

#include <atomic>
#include <csignal>

namespace fi::app {
namespace {

std::atomic<int> endingSignal{0};
std::atomic<bool> isStateWanted{false};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

void Note(int signal) { endingSignal.store(signal, std::memory_order_relaxed); }

void NoteState(int) { isStateWanted.store(true, std::memory_order_relaxed); }

// What the caller ignores, as nohup does, stays ignored.
void Watch(int signal, void (*handler)(int), int flags) {
  struct sigaction action = {};
  if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
  action.sa_handler = handler;
  action.sa_flags = flags;
  (void)::sigaction(signal, &action, nullptr);
}

}  // namespace

void WatchSignals() {
  Watch(SIGINT, Note, static_cast<int>(SA_RESETHAND));
  Watch(SIGTERM, Note, static_cast<int>(SA_RESETHAND));
  Watch(SIGUSR1, NoteState, SA_RESTART);
}

int EndingSignal() { return endingSignal.load(std::memory_order_relaxed); }

bool TakeStateRequest() {
  return isStateWanted.load(std::memory_order_relaxed) && isStateWanted.exchange(false);
}

void EndBySignal(int signal) {
  (void)std::signal(signal, SIG_DFL);
  (void)std::raise(signal);
}

}  // namespace fi::app
