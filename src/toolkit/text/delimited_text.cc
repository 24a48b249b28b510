#include "platform/delimited_text.h"

uint32_t InitCSV(CsvSniffer* sniffer, fi::IdentificationStream* stream, FormatId id) noexcept {
  *sniffer = {stream, id};
  return 0;
}

uint32_t IsCSV(CsvSniffer* /*sniffer*/) noexcept { return 0; }

void DeinitCSV(CsvSniffer* /*sniffer*/) noexcept {}
