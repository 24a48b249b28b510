// Any program over any bytes. The way that the handle delivers the bytes must not change what the
// program answers or where it leaves the stream.
//
// Input: the program's length in one byte, the program, then the file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "signature/interpreter.h"
#include "tests/support/memory_handle.h"

namespace {

using fi::testing::MemoryHandle;

// Longer than the operands of any instruction, so that a program which runs on ends in it.
constexpr size_t kPadding = 600;

struct Outcome {
  FormatId id;
  int64_t position;

  bool operator==(const Outcome&) const = default;
};

Outcome Run(const std::string& program, MemoryHandle& handle) {
  const fi::ScopedStream stream(&handle);
  fi::SignatureRun run;
  run.stream = stream.get();
  run.extension = {'A', 'I'};
  const auto* bytes = reinterpret_cast<const uint8_t*>(program.data());
  const FormatId id = fi::RunProgram(bytes, run);
  return {id, fi::IdStreamPosition(stream.get())};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const size_t length = std::min<size_t>(data[0], size - 1);
  std::string program(reinterpret_cast<const char*>(data + 1), length);
  for (size_t i = 0; i < kPadding; i += 2) program += "\xFF\xE1";
  const std::string file(reinterpret_cast<const char*>(data + 1 + length), size - 1 - length);

  MemoryHandle plain(file);
  const Outcome outcome = Run(program, plain);
  MemoryHandle slow(file);
  slow.mostPerRead = 1;
  if (!(Run(program, slow) == outcome)) std::abort();
  MemoryHandle narrow(file);
  narrow.has64Bit = false;
  if (Run(program, narrow).id != outcome.id) std::abort();
  return 0;
}
