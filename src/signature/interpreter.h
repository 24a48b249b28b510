// Runs one signature program (opcodes.h) against the stream of an identification.
#ifndef FI_SIGNATURE_INTERPRETER_H_
#define FI_SIGNATURE_INTERPRETER_H_

#include <array>
#include <cstdint>

#include "formatid/formatid.h"
#include "platform/class_id.h"
#include "signature/namespace_reader.h"
#include "signature/opcodes.h"
#include "stream/id_stream.h"

namespace fi {

// Up to four upper-cased characters of the file name's extension, zero-padded.
inline constexpr uint32_t kExtensionSize = 5;
using Extension = std::array<char, kExtensionSize>;

// State that the programs of one identification share. A program starts where the last program left
// the stream, so every program except a mere call of a probe begins with a move.
struct SignatureRun {
  IdentificationStream* stream = nullptr;  // borrowed
  Extension extension{};
  bool isStorage = false;  // a structured storage whose class identifier is known
  ClassId classId{};
  NamespaceBuffer nameCache = UnreadNamespace();
  uint32_t classifierRan = 0;  // set when a program ran the compound-document classifier
  uint32_t status = 0;         // secondary result of the package dispatcher and the classifier
};

// The identifier that the program returns, or 0 when the file does not match it. `program` ends in
// a return, a probe or the end of the table.
FormatId RunProgram(const uint8_t* program, SignatureRun& run);

// The same, and each probe that is asked is told to the trace of the identification.
FormatId RunTracedProgram(const uint8_t* program, SignatureRun& run);

// The rule that seek and rewind share: stays inside the buffer where it can and else moves the
// handle. False when the handle refuses.
bool MoveTo(IdentificationStream* stream, uint32_t target);

}  // namespace fi

#endif  // FI_SIGNATURE_INTERPRETER_H_
