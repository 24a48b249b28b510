// The one identifier of the PRONOM registry that a file has, where its format has several there.
#ifndef FI_PROPERTIES_PUID_PUID_H_
#define FI_PROPERTIES_PUID_PUID_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "formatid/formatid.h"
#include "properties/record/property_set.h"
#include "stream/id_stream.h"

namespace fi {

// An identifier in the registry's notation, "fmt/1129" or "x-fmt/392", NUL-terminated; empty where
// there is none.
using PuidText = std::array<char, 16>;

// By the properties that were read, else by bytes of the file, else the format's only candidate.
// Empty rather than a guess. `candidates` are those of the format, divided by commas.
PuidText ExactPuid(IdentificationStream* stream, FormatId id, const PropertySet& properties,
                   std::string_view candidates);

// Identifiers as numbers: that of "fmt/", or that of "x-fmt/" and kOtherSeries.
inline constexpr uint16_t kOtherSeries = 20000;

// By bytes at fixed places; 0 where no row of the format fits.
uint16_t PuidByBytes(IdentificationStream* stream, FormatId id);

// By the properties; 0 where no row of the format fits.
uint16_t PuidByProperties(FormatId id, const PropertySet& properties);

}  // namespace fi

#endif  // FI_PROPERTIES_PUID_PUID_H_
