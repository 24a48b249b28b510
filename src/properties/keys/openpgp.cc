#include "properties/keys/openpgp.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

// Packet types (RFC 9580, 5).
constexpr uint32_t kPublicKeySession = 1;
constexpr uint32_t kSignature = 2;
constexpr uint32_t kPasswordSession = 3;
constexpr uint32_t kOnePassSignature = 4;
constexpr uint32_t kOldEncryptedData = 9;

uint32_t PacketType(uint8_t first) {
  if ((first & 0x80) == 0) return 0;
  return (first & 0x40) != 0 ? first & 0x3Fu : (first >> 2) & 0x0Fu;
}

void ReadFirstPacket(uint8_t first, std::string_view place, PropertySet& out) {
  switch (PacketType(first)) {
    case kPublicKeySession:
      return out.Set(Property::kEncryption, "certificate", place);
    case kPasswordSession:
    case kOldEncryptedData:
      return out.Set(Property::kEncryption, "password", place);
    case kSignature:
    case kOnePassSignature:
      out.Set(Property::kSigned, "yes", place);
      return out.Set(Property::kEncryption, "none", place);
    default:
      return;
  }
}

int Base64Digit(char c) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const size_t digit = kDigits.find(c);
  return digit == std::string_view::npos ? -1 : static_cast<int>(digit);
}

// The first byte behind the header lines of the armour; -1: there is none.
int FirstByteOfArmour(std::string_view text) {
  Lines lines(text);
  std::string_view line;
  bool inBody = false;
  while (lines.Next(&line)) {
    if (inBody && line.size() >= 2) {
      const int high = Base64Digit(line[0]);
      const int low = Base64Digit(line[1]);
      return high < 0 || low < 0 ? -1 : (high << 2 | low >> 4) & 0xFF;
    }
    if (TrimBlanks(line).empty()) inBody = true;
  }
  return -1;
}

}  // namespace

void ReadOpenPgpProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr std::string_view kBegin = "-----BEGIN PGP ";
  const FileBytes<2048> head(question.stream, 0);
  const size_t armour = head.View().find(kBegin);
  if (armour == std::string_view::npos) {
    if (head.size() > 0) ReadFirstPacket(head.Byte(0), "first packet", out);
    return;
  }
  const std::string_view label = head.View().substr(armour + kBegin.size());
  if (label.starts_with("SIGNED") || label.starts_with("SIGNATURE")) {
    out.Set(Property::kSigned, "yes", "armour", static_cast<int64_t>(armour));
    return out.Set(Property::kEncryption, "none", "armour", static_cast<int64_t>(armour));
  }
  if (!label.starts_with("MESSAGE")) return;
  const int first = FirstByteOfArmour(label);
  if (first >= 0) ReadFirstPacket(static_cast<uint8_t>(first), "first packet", out);
}

}  // namespace fi
