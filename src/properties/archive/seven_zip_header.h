// The header of a 7z archive (7zFormat.txt of the LZMA SDK): how its streams are packed. Folders
// are what the format calls a chain of coders.
#ifndef FI_PROPERTIES_ARCHIVE_SEVEN_ZIP_HEADER_H_
#define FI_PROPERTIES_ARCHIVE_SEVEN_ZIP_HEADER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace fi {

// What a header says of its packed streams. The first one is what an encoded header lies in.
struct SevenZipStreams {
  bool isKnown = false;  // the coders were read to their end
  bool isEncrypted = false;
  bool isLzmaAlone = false;             // one folder of one coder, LZMA
  std::array<uint8_t, 5> properties{};  // of that coder
  uint64_t packPosition = 0;            // in bytes behind the signature header
  uint64_t packSize = 0;
  uint64_t unpackSize = 0;
};

enum class SevenZipHeader { kNone, kPlain, kEncoded };

// Reads a header, which may be cut behind the coders. `*streams` counts for kPlain and kEncoded; a
// plain header without streams, of an archive of empty files, is known and not encrypted.
SevenZipHeader ReadSevenZipHeader(std::span<const uint8_t> header, SevenZipStreams* streams);

}  // namespace fi

#endif  // FI_PROPERTIES_ARCHIVE_SEVEN_ZIP_HEADER_H_
