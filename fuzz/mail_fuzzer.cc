// Any bytes as a message. Input: one byte that chooses the extension, then the file.

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

#include "fuzz/line_probe_run.h"
#include "probes/mail/mail.h"

namespace {

constexpr const char* kExtensions[] = {"", "EML", "NWS", "EMLX"};
constexpr FormatId kIds[] = {1132, 1187, 1192, 1193, 1194, 1195,
                             1198, 1356, 1370, 1371, 1394, 1817};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const char* extension = kExtensions[data[0] % std::size(kExtensions)];
  const std::string file(reinterpret_cast<const char*>(data + 1), size - 1);
  fi::fuzz::CheckLineProbe(file, kIds, [&](fi::IdentificationStream* stream) {
    return fi::MailProbe(stream, extension);
  });
  return 0;
}
