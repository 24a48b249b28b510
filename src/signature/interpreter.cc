#include "signature/interpreter.h"

#include <cstring>

#include "platform/io.h"
#include "platform/trace.h"
#include "signature/opcodes.h"
#include "signature/probe_lookup.h"

namespace fi {
namespace {

constexpr uint16_t Word(const uint8_t* bytes) {
  return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

constexpr uint32_t Dword(const uint8_t* bytes) {
  return Word(bytes) | static_cast<uint32_t>(Word(bytes + 2)) << 16;
}

// One function per instruction that can fail. `operands` stands behind the opcode; the result is
// whether the file passes.

inline bool Literal(IdentificationStream* stream, uint8_t expected) {
  return IdStreamGetByte(stream) == expected;
}

inline bool NotByte(IdentificationStream* stream, const uint8_t* operands) {
  const uint32_t byte = IdStreamGetByte(stream);
  return byte != kEndOfData && byte != operands[0];
}

inline bool OneOf(IdentificationStream* stream, const uint8_t* operands) {
  const uint32_t byte = IdStreamGetByte(stream);
  return byte == operands[0] || byte == operands[1];
}

inline bool ByteRange(IdentificationStream* stream, const uint8_t* operands) {
  for (uint32_t i = 0; i < operands[0]; ++i) {
    const uint32_t byte = IdStreamGetByte(stream);
    // End of data lies above every upper bound.
    if (byte < operands[1] || byte > operands[2]) return false;
  }
  return true;
}

// Deliberate: a word of 0xFFFF fails like the end of data, even when the file holds it.
inline bool WordOutsideRange(IdentificationStream* stream, const uint8_t* operands) {
  const uint16_t low = Word(operands + 1);
  const uint16_t high = Word(operands + 3);
  for (uint32_t i = 0; i < operands[0]; ++i) {
    const int32_t word = IdStreamGetWordLE(stream);
    if (word < 0 || word == 0xFFFF || (word >= low && word <= high)) return false;
  }
  return true;
}

inline bool Skip(IdentificationStream* stream, const uint8_t* operands) {
  const int32_t count = operands[0];
  if (stream->remaining >= count) {
    stream->remaining -= count;
    stream->next += count;
    return true;
  }
  return IdStreamSkip(operands[0], stream) == 0;
}

inline bool ExtensionBegins(const Extension& extension, const uint8_t* operands) {
  const uint8_t count = operands[0];
  return count <= extension.size() && std::memcmp(extension.data(), operands + 1, count) == 0;
}

inline bool SeekFromEnd(IdentificationStream* stream, const uint8_t* operands) {
  return IdStreamSeek32(stream, Dword(operands), kIoFromEnd) == 0;
}

// The operand may hold the identifier in memory order or in text order. Which of the two is decided
// by its first four bytes alone.
inline bool ClassMatches(const SignatureRun& run, const uint8_t* operand) {
  if (!run.isStorage) return false;
  const uint8_t* id = run.classId.data();
  if (std::memcmp(id + 8, operand + 8, 8) != 0) return false;
  if (std::memcmp(id, operand, 4) == 0) return std::memcmp(id + 4, operand + 4, 4) == 0;
  return id[0] == operand[3] && id[1] == operand[2] && id[2] == operand[1] && id[3] == operand[0] &&
         id[4] == operand[5] && id[5] == operand[4] && id[6] == operand[7] && id[7] == operand[6];
}

// Compares the operand with the document root's name. Returns the first byte behind the operand, or
// null when they differ.
inline const uint8_t* RootNameMatches(SignatureRun& run, const uint8_t* operand) {
  NamespaceBuffer& name = run.nameCache;
  if (name[0] == kNamespaceUnread) ReadXmlNamespace(run.stream, name);
  if (name[0] == kNamespaceNone) return nullptr;
  for (uint32_t i = 0; i < name.size() - 1; ++i) {
    if (name[i] != operand[i]) return nullptr;
    if (name[i] == 0) return operand + i + 1;
  }
  return operand + name.size() - 1;
}

FormatId Asked(const ProbeEntry& probe, SignatureRun& run) {
  const FormatId id = probe.run({run, probe.code});
  Tell(run.stream->job->work, {.kind = kFiTraceProbe, .id = id, .number = probe.code});
  return id;
}

template <bool kTraced>
FormatId Run(const uint8_t* program, SignatureRun& run);

}  // namespace

bool MoveTo(IdentificationStream* stream, uint32_t target) {
  if (IdStreamReposition(stream, target)) return true;
  stream->remaining = 0;
  stream->filled = 0;
  // Deliberate: from 2 GB on the position is negative. On a handle of 64-bit positions the next
  // refill then fails, and nothing matches.
  stream->bufferPos = static_cast<int32_t>(target);
  return io::Seek(stream->handle, kIoFromStart, target);
}

FormatId RunProgram(const uint8_t* program, SignatureRun& run) { return Run<false>(program, run); }

FormatId RunTracedProgram(const uint8_t* program, SignatureRun& run) {
  return Run<true>(program, run);
}

namespace {

template <bool kTraced>
FormatId Run(const uint8_t* program, SignatureRun& run) {
  IdentificationStream* stream = run.stream;
  for (;;) {
    if (program[0] != kEscape) {
      if (!Literal(stream, program[0])) return kNoMatch;
      ++program;
      continue;
    }
    const uint8_t* operands = program + 2;
    bool passed = true;
    switch (program[1]) {
      case kOpLiteralEscape:
        passed = Literal(stream, kEscape);
        program = operands;
        break;
      case kOpSeek:
        passed = MoveTo(stream, Dword(operands));
        program = operands + 4;
        break;
      case kOpNotByte:
        passed = NotByte(stream, operands);
        program = operands + 1;
        break;
      case kOpByteRange:
        passed = ByteRange(stream, operands);
        program = operands + 3;
        break;
      case kOpWordOutsideRange:
        passed = WordOutsideRange(stream, operands);
        program = operands + 5;
        break;
      case kOpSkip:
        passed = Skip(stream, operands);
        program = operands + 1;
        break;
      case kOpReturn:
        return Word(operands);
      case kOpRewind:
        passed = MoveTo(stream, 0);
        program = operands;
        break;
      case kOpProbe: {
        const ProbeEntry* probe = FindProbe(Word(operands));
        if (probe != nullptr) {
          return kTraced ? Asked(*probe, run) : probe->run({run, probe->code});
        }
        // Deliberate: a code without a row takes only its first byte along; the second is executed.
        program = operands + 1;
        break;
      }
      case kOpOneOf:
        passed = OneOf(stream, operands);
        program = operands + 2;
        break;
      case kOpExtension:
        passed = ExtensionBegins(run.extension, operands);
        program = operands + 1 + operands[0];
        break;
      case kOpSeekFromEnd:
        passed = SeekFromEnd(stream, operands);
        program = operands + 4;
        break;
      case kOpClass:
        passed = ClassMatches(run, operands);
        program = operands + kClassIdSize;
        break;
      case kOpRootName:
        program = RootNameMatches(run, operands);
        passed = program != nullptr;
        break;
      case kOpEndOfTable:
        return kNoMatch;
      default:
        program = operands;
        break;
    }
    if (!passed) return kNoMatch;
  }
}

}  // namespace
}  // namespace fi
