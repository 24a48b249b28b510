#include "properties/media/wave.h"

#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint32_t kMaxChunks = 64;

std::string_view NameOfCoding(uint32_t tag) {
  switch (tag) {
    case 0x0001:
      return "PCM";
    case 0x0002:
      return "Microsoft ADPCM";
    case 0x0003:
      return "IEEE float";
    case 0x0006:
      return "A-law";
    case 0x0007:
      return "mu-law";
    case 0x0011:
      return "IMA ADPCM";
    case 0x0031:
      return "GSM 6.10";
    case 0x0050:
      return "MPEG";
    case 0x0055:
      return "MPEG layer 3";
    case 0xFFFE:
      return "extensible";
    default:
      return {};
  }
}

}  // namespace

void ReadWaveProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kBroadcastVersion = 8 + 346;
  IdentificationStream* stream = question.stream;
  const FileBytes<12> head(stream, 0);
  if (!head.Holds(8, "WAVE")) return;
  bool isBroadcast = false;
  int64_t offset = 12;
  for (uint32_t count = 0; count < kMaxChunks; ++count) {
    const FileBytes<10> chunk(stream, offset);
    if (!chunk.Has(0, 8)) break;
    if (chunk.Holds(0, "fmt "))
      out.Set(Property::kKind, NameOfCoding(chunk.WordLE(8)), "fmt", offset);
    if (chunk.Holds(0, "bext")) {
      isBroadcast = true;
      const FileBytes<kBroadcastVersion + 2> extension(stream, offset);
      out.SetNumber(Property::kVersion, extension.WordLE(kBroadcastVersion), "bext",
                    offset + static_cast<int64_t>(kBroadcastVersion));
    }
    // Behind the sound nothing is looked for.
    if (chunk.Holds(0, "data")) break;
    const uint32_t size = chunk.DwordLE(4);
    offset += 8 + int64_t{size} + (size & 1);
  }
  const bool is64 = head.Holds(0, "RF64") || head.Holds(0, "BW64");
  ShortText profile(is64 ? head.View().substr(0, 4) : std::string_view());
  if (isBroadcast) profile.Append(is64 ? ", BWF" : "BWF");
  out.Set(Property::kProfile, profile.view(), isBroadcast ? "bext" : "header");
}

}  // namespace fi
