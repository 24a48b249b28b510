// Whether a PDF file opens without a password (ISO 32000-1, 7.6.3; ISO 32000-2, 7.6.4).
#ifndef FI_PLATFORM_PDF_PASSWORD_H_
#define FI_PLATFORM_PDF_PASSWORD_H_

#include <array>
#include <cstddef>
#include <cstdint>

namespace fi {

// The entries of an encryption dictionary of the standard security handler, and the first element
// of the file identifier. `length` is that of the key in bits.
struct PdfEncryption {
  static constexpr size_t kMaxString = 127;

  int64_t revision = 0;     // R, 2 to 6
  int64_t length = 40;      // Length
  int64_t permissions = 0;  // P
  bool encryptsMetadata = true;
  std::array<uint8_t, kMaxString> owner{};  // O
  size_t ownerSize = 0;
  std::array<uint8_t, kMaxString> user{};  // U
  size_t userSize = 0;
  std::array<uint8_t, kMaxString> fileId{};
  size_t fileIdSize = 0;
};

enum class PdfOpening { kUnknown, kWithoutPassword, kWithPassword };

// Tries the empty user password. kUnknown for a revision that is not described, for entries of
// another size, and where libcrypto is not to be had.
PdfOpening HowPdfOpens(const PdfEncryption& encryption);

}  // namespace fi

#endif  // FI_PLATFORM_PDF_PASSWORD_H_
