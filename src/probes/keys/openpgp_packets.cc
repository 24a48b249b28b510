#include "probes/keys/openpgp_packets.h"

#include <cstdint>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

using Head = FileBytes<32>;

constexpr uint8_t kPacket = 0x80;
constexpr uint8_t kNewForm = 0x40;

enum Tag : uint8_t {
  kSessionKey = 1,
  kSignature = 2,
  kPassphraseKey = 3,
  kSecretKey = 5,
  kPublicKey = 6,
};

struct Packet {
  uint8_t tag = 0;
  size_t body = 0;      // where it begins
  uint64_t length = 0;  // of the body
};

uint8_t TagOf(uint8_t byte) { return (byte & kNewForm) != 0 ? byte & 0x3F : byte >> 2 & 0x0F; }

bool IsOneOf(std::string_view values, uint8_t value) {
  return values.find(static_cast<char>(value)) != std::string_view::npos;
}

// Public-key algorithms: RSA, Elgamal, DSA, and those of elliptic curves.
bool IsPublicKeyAlgorithm(uint8_t value) {
  return IsOneOf("\x01\x02\x03\x10\x11\x12\x13\x16\x19\x1A\x1B\x1C"sv, value);
}

// False where the length is partial or open, or its bytes are missing.
bool ReadHeader(const Head& head, Packet* packet) {
  const uint8_t first = head.Byte(0);
  if ((first & kPacket) == 0 || !head.Has(0, 6)) return false;
  packet->tag = TagOf(first);
  if ((first & kNewForm) != 0) {
    const uint8_t length = head.Byte(1);
    if (length < 192) {
      packet->length = length;
      packet->body = 2;
    } else if (length < 224) {
      packet->length = (uint64_t{length} - 192) * 256 + head.Byte(2) + 192;
      packet->body = 3;
    } else {
      packet->length = head.DwordBE(2);
      packet->body = 6;
      return length == 0xFF;
    }
    return true;
  }
  switch (first & 3) {
    case 0:
      packet->length = head.Byte(1);
      packet->body = 2;
      return true;
    case 1:
      packet->length = head.WordBE(1);
      packet->body = 3;
      return true;
    case 2:
      packet->length = head.DwordBE(1);
      packet->body = 5;
      return true;
    default:
      return false;
  }
}

bool IsKeyBody(const Head& head, size_t at) {
  const uint8_t version = head.Byte(at);
  if (head.DwordBE(at + 1) == 0) return false;  // time of creation
  if (version == 2 || version == 3) return IsOneOf("\x01\x02\x03"sv, head.Byte(at + 7));
  return version >= 4 && version <= 6 && IsPublicKeyAlgorithm(head.Byte(at + 5));
}

bool IsSignatureBody(const Head& head, size_t at) {
  constexpr auto kTypes = "\x00\x01\x02\x10\x11\x12\x13\x18\x19\x1F\x20\x28\x30\x40\x50"sv;
  constexpr auto kHashes = "\x01\x02\x03\x08\x09\x0A\x0B\x0C\x0E"sv;
  const uint8_t version = head.Byte(at);
  if (version == 2 || version == 3) {
    return head.Byte(at + 1) == 5 && IsOneOf(kTypes, head.Byte(at + 2)) &&
           IsPublicKeyAlgorithm(head.Byte(at + 15)) && IsOneOf(kHashes, head.Byte(at + 16));
  }
  return version >= 4 && version <= 6 && IsOneOf(kTypes, head.Byte(at + 1)) &&
         IsPublicKeyAlgorithm(head.Byte(at + 2)) && IsOneOf(kHashes, head.Byte(at + 3));
}

bool IsKnownBody(const Head& head, const Packet& packet) {
  constexpr uint64_t kShortestBody = 10;
  const size_t at = packet.body;
  switch (packet.tag) {
    case kPublicKey:
    case kSecretKey:
      return packet.length >= kShortestBody && IsKeyBody(head, at);
    case kSignature:
      return packet.length >= kShortestBody && IsSignatureBody(head, at);
    case kSessionKey:
      return packet.length >= kShortestBody && head.Byte(at) == 3 &&
             IsOneOf("\x01\x02\x10\x12\x19"sv, head.Byte(at + 9));
    case kPassphraseKey:
      return head.Byte(at) == 4 &&
             IsOneOf("\x01\x02\x03\x04\x07\x08\x09\x0A"sv, head.Byte(at + 1)) &&
             IsOneOf("\x00\x01\x03"sv, head.Byte(at + 2)) && head.Byte(at + 3) >= 1 &&
             head.Byte(at + 3) <= 14;
    default:
      return false;
  }
}

// Whether a packet that may stand behind `tag` begins with that byte.
bool MayFollow(uint8_t tag, uint8_t byte) {
  if ((byte & kPacket) == 0) return false;
  const uint8_t next = TagOf(byte);
  if (tag == kSessionKey || tag == kPassphraseKey) return IsOneOf("\x01\x03\x09\x12\x14"sv, next);
  // Signatures, subkeys, trust, user names and attributes, and the next key; literal data behind a
  // signature.
  return IsOneOf("\x02\x05\x06\x07\x08\x0B\x0C\x0D\x0E\x11"sv, next);
}

}  // namespace

FormatId OpenPgpProbe(IdentificationStream* stream) {
  const Head head(stream, 0);
  Packet packet;
  if (!ReadHeader(head, &packet) || !IsKnownBody(head, packet)) return kNoMatch;
  const uint64_t end = packet.body + packet.length;
  const uint64_t size = FileSize(stream);
  if (end > size) return kNoMatch;
  if (end == size) {
    const bool standsAlone = packet.tag != kSessionKey && packet.tag != kPassphraseKey;
    return standsAlone ? kFormatOpenPgpBinary : kNoMatch;
  }
  const FileBytes<1> next(stream, static_cast<int64_t>(end));
  return MayFollow(packet.tag, next.Byte(0)) ? kFormatOpenPgpBinary : kNoMatch;
}

}  // namespace fi
