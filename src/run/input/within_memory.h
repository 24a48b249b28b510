// The one place of the programs where an exception ends.
#ifndef FI_RUN_INPUT_WITHIN_MEMORY_H_
#define FI_RUN_INPUT_WITHIN_MEMORY_H_

namespace fi::app {

// Runs `body`. False when it was left because memory, or another resource that the C++ runtime asks
// the system for, ran out.
template <class Body>
bool WithinMemory(Body&& body) noexcept {
  try {
    body();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace fi::app

#endif  // FI_RUN_INPUT_WITHIN_MEMORY_H_
