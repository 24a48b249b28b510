#include "probes/unidentified/marker_sequence.h"

#include "formatid/io.h"

namespace fi {
namespace {

enum class State : uint8_t { kNothing, kFirstBar, kN, kAt, kSecondBar, kO };

State Advance(State state, uint32_t byte) {
  switch (state) {
    case State::kNothing:
      return byte == '|' ? State::kFirstBar : state;
    case State::kFirstBar:
      // Deliberate: a second bar does not begin a mark of its own, so that "||N" is none.
      return byte == 'N' ? State::kN : State::kNothing;
    case State::kN:
      return byte == '@' ? State::kAt : state;
    case State::kAt:
      return byte == '|' ? State::kSecondBar : state;
    case State::kSecondBar:
      return byte == 'O' ? State::kO : State::kAt;
    case State::kO:
      break;
  }
  return state;
}

}  // namespace

bool MarkerSequenceProbe(IdentificationStream* stream, uint32_t offset) {
  constexpr uint32_t kBytes = 100;  // all of which must be there
  if (IdStreamSeek(stream, offset, kIoFromStart) != 0) return false;
  State state = State::kNothing;
  for (uint32_t i = 0; i < kBytes; ++i) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) return false;
    state = Advance(state, byte);
  }
  return state == State::kO;
}

}  // namespace fi
