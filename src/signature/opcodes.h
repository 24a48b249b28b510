// The instruction set of signature programs. A byte other than 0xFF is a literal to match at the
// stream's position; 0xFF begins an instruction, whose opcode is the next byte. Operands of more
// than one byte are little-endian.
#ifndef FI_SIGNATURE_OPCODES_H_
#define FI_SIGNATURE_OPCODES_H_

#include <cstdint>

namespace fi {

inline constexpr uint8_t kEscape = 0xFF;

enum Opcode : uint8_t {
  kOpNothing = 0x00,           // any opcode that is not listed here does nothing, too
  kOpSeek = 0x01,              // offset32: go to an absolute offset
  kOpNotByte = 0x03,           // b: the next byte must not be b
  kOpByteRange = 0x04,         // n lo hi: each of the next n bytes lies in lo..hi
  kOpWordOutsideRange = 0x05,  // n lo16 hi16: none of the next n LE words lies in lo..hi
  kOpSkip = 0x06,              // n: pass over n bytes
  kOpReturn = 0x08,            // id16: the file is identified
  kOpRewind = 0x0A,            // go to offset 0
  kOpProbe = 0x0C,             // code16: hand the file to a probe
  kOpOneOf = 0x0D,             // a b: the next byte is a or b
  kOpExtension = 0x0E,         // n bytes: the extension begins with them
  kOpSeekFromEnd = 0x0F,       // offset32: go to an offset from the end, normally negative
  kOpClass = 0x10,             // 16 bytes: the handle is a storage of this class
  kOpRootName = 0x11,          // text, NUL: the document root's name
  kOpEndOfEntry = 0xE0,        // where the walk finds the next program; does nothing when executed
  kOpEndOfTable = 0xE1,        // no match
  kOpLiteralEscape = 0xFF,     // the byte 0xFF as a literal
};

}  // namespace fi

#endif  // FI_SIGNATURE_OPCODES_H_
