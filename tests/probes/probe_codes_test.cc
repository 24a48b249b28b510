// Probes of binary formats, called by their codes, over the samples in tests/data/probes.

#include <gtest/gtest.h>

#include <string>

#include "probes/keys/openpgp_packets.h"
#include "probes/media/riff.h"
#include "registry/format_ids.h"
#include "signature/probe_lookup.h"
#include "stream/id_stream.h"
#include "tests/support/memory_handle.h"
#include "tests/support/probe_run.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

testing::Probe ByCode(uint16_t code) {
  return [code](IdentificationStream* stream) {
    SignatureRun run;
    run.stream = stream;
    const ProbeEntry* entry = FindProbe(code);
    return entry == nullptr ? FormatId{0} : entry->run(ProbeCall{run, code});
  };
}

TEST(ProbeCodes, HaveTheirAnswers) {
  const struct {
    uint16_t code;
    const char* file;
  } probes[] = {
      {1108, "word_pro"},
      {1416, "lotus_worksheet"},
      {1417, "works_mac"},
      {1505, "cgm"},
      {1518, "macpaint"},
      {1535, "jpeg"},
      {1575, "xwd"},
      {1705, "quicktime"},
      {1710, "mpeg_audio"},
      {1716, "asf"},
      {1720, "real_media"},
      {1721, "mpeg_stream"},
      {1726, "riff"},
      {1803, "tar"},
      {1814, "dos_executable"},
      {1820, "cabinet"},
      {2405, "font_collection"},
      {3021, "zstandard"},
      {3026, "lzma_alone"},
      {3031, "cpio"},
      {3036, "arj"},
      {3040, "optical_disc"},
      {3041, "apple_disk_image"},
      {3042, "virtual_hard_disk"},
      {3065, "icon"},
      {3067, "apple_icon"},
      {3070, "anymap"},
      {3094, "tagged_audio"},
      {3095, "adts"},
      {3096, "ac3"},
      {3111, "matroska"},
      {3114, "transport_stream"},
      {3130, "opentype_cff"},
      {3131, "woff"},
      {3132, "woff2"},
      {3133, "embedded_opentype"},
      {3141, "dbase"},
      {3142, "paradox"},
      {3143, "parquet"},
      {3144, "orc"},
      {3145, "avro"},
      {3146, "arrow"},
      {3147, "hdf5"},
      {3173, "afp"},
      {3175, "pcl"},
      {3176, "pjl"},
      {3221, "pcapng"},
      {3223, "registry_hive"},
      {3231, "torrent"},
      {3244, "stl"},
      {3245, "gltf"},
      {3247, "three_d_studio"},
      {3250, "shapefile"},
  };
  for (const auto& test : probes) {
    testing::ExpectSamples("probes/" + std::string(test.file) + ".txt", ByCode(test.code));
  }
}

// A packet whose end wraps to the start where positions have 32 bits, and there finds a packet.
TEST(OpenPgp, LengthsDoNotWrap) {
  for (const bool has64Bit : {true, false}) {
    testing::MemoryHandle handle(testing::SampleBytes("9A FF FF FF FB 04 43 49 73 C5 01 00*20"));
    handle.has64Bit = has64Bit;
    const ScopedStream stream(&handle);
    EXPECT_EQ(OpenPgpProbe(stream.get()), kNoMatch);
  }
}

// A form whose size was left open asks for no end of the file, which such handles may not know.
TEST(Riff, OpenSizesNeedNoSizeOfTheFile) {
  for (const char* size : {"00", "FF"}) {
    testing::MemoryHandle handle(
        testing::SampleBytes(std::string("'RIFF' ") + size + "*4 'QLCMfmt '"));
    handle.failingSeek = 2;  // the first goes to the start
    const ScopedStream stream(&handle);
    EXPECT_EQ(RiffProbe(stream.get()), kFormatRiff) << size;
  }
}

}  // namespace
}  // namespace fi
