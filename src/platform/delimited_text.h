// The delimited-text sniffer of the toolkit: each question takes a call of InitCSV, of IsCSV and of
// DeinitCSV.
#ifndef FI_PLATFORM_DELIMITED_TEXT_H_
#define FI_PLATFORM_DELIMITED_TEXT_H_

#include <cstdint>

#include "formatid/formatid.h"

namespace fi {
struct IdentificationStream;
}

extern "C" {

// The record of one question. The caller owns it and reads `id` after IsCSV.
struct CsvSniffer {
  fi::IdentificationStream* stream;  // borrowed
  FormatId id;
};

// Prepares the record for the text in `stream` that so far is called `id`. 0 on success.
uint32_t InitCSV(CsvSniffer* sniffer, fi::IdentificationStream* stream, FormatId id) noexcept;

// 1 when the text is delimited, with the identifier of its kind in the record; else 0, with the
// record's identifier unchanged. Reads at most 64 KB from the start of the file and leaves the
// stream anywhere.
uint32_t IsCSV(CsvSniffer* sniffer) noexcept;

// Releases what the record holds.
void DeinitCSV(CsvSniffer* sniffer) noexcept;

}  // extern "C"

#endif  // FI_PLATFORM_DELIMITED_TEXT_H_
