// Matches signature programs (opcodes.h) against text in memory: those that rewind and
// then hold nothing but bytes and choices of two bytes.
#ifndef FI_SIGNATURE_TEXT_PROGRAM_H_
#define FI_SIGNATURE_TEXT_PROGRAM_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "formatid/formatid.h"
#include "signature/opcodes.h"
#include "signature/signature_encoder.h"
#include "signature/signature_index.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier that the program returns, or kNoMatch.
// REQUIRES: IsTextProgram.
constexpr FormatId RunTextProgram(const uint8_t* program, std::string_view text) {
  program += 2;  // the rewind
  for (size_t at = 0;; ++at) {
    const bool isInstruction = program[0] == kEscape;
    if (isInstruction && program[1] == kOpReturn) {
      return static_cast<FormatId>(program[2] | program[3] << 8);
    }
    if (at == text.size()) return kNoMatch;
    const auto byte = static_cast<uint8_t>(text[at]);
    if (!isInstruction) {
      if (byte != program[0]) return kNoMatch;
      program += 1;
    } else {  // one of two
      if (byte != program[2] && byte != program[3]) return kNoMatch;
      program += 4;
    }
  }
}

// Whether the program rewinds, tests bytes one by one and returns.
constexpr bool IsTextProgram(const uint8_t* program) {
  if (!BeginsWithRewind(program)) return false;
  for (program += 2;;) {
    if (program[0] != kEscape) {
      program += 1;
    } else if (program[1] == kOpOneOf) {
      program += 4;
    } else {
      return program[1] == kOpReturn;
    }
  }
}

template <class Table>
consteval bool AreTextPrograms(const Table& table) {
  for (const uint16_t start : table.starts) {
    if (!IsTextProgram(table.bytes.data() + start)) return false;
  }
  return true;
}

}  // namespace fi

#endif  // FI_SIGNATURE_TEXT_PROGRAM_H_
