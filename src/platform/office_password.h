// Whether an encrypted Office document opens without asking for a password: with Excel's fixed
// password for workbooks protected only against changes, or with the empty password
// ([MS-OFFCRYPTO]).
#ifndef FI_PLATFORM_OFFICE_PASSWORD_H_
#define FI_PLATFORM_OFFICE_PASSWORD_H_

#include <cstdint>
#include <span>

#include "formatid/io.h"

namespace fi {

enum class OfficeOpening { kUnknown, kWithoutPassword, kWithPassword };

// A compound file that holds an encrypted package. The rounds of the key derivation count for its
// identification. kUnknown for a scheme that is not described, a damaged descriptor, rounds that
// the limits do not allow, and where libcrypto is not to be had.
OfficeOpening HowPackageOpens(IOHandle* document);

// A workbook of Excel 5 to 2003, by the contents of its record FilePass.
OfficeOpening HowWorkbookOpens(std::span<const uint8_t> filePass);

// A document by the encryption header of its RC4 scheme, from the version on.
OfficeOpening HowHeaderOpens(std::span<const uint8_t> header);

}  // namespace fi

#endif  // FI_PLATFORM_OFFICE_PASSWORD_H_
