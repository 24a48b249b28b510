// Hashes of whole files. The libraries that compute them are loaded when the first is asked for.
#ifndef FI_RUN_HASHER_H_
#define FI_RUN_HASHER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fi::app {

enum class HashKind : uint8_t { kMd5, kSha1, kSha256, kSha512, kBlake2b512, kXxh128 };

// As they are spelled on the command line and in records: "sha256".
std::string_view HashName(HashKind kind);
bool FindHash(std::string_view name, HashKind& kind);

// All spellings, with blanks between them.
inline constexpr std::string_view kHashNames = "md5 sha1 sha256 sha512 blake2b512 xxh128";

struct HashFunctions;

class Hasher {
 public:
  // REQUIRES: Load before any other call.
  explicit Hasher(std::vector<HashKind> kinds);
  ~Hasher();
  Hasher(const Hasher&) = delete;
  Hasher& operator=(const Hasher&) = delete;

  // False, with a reason, when a library is not there.
  bool Load(std::string& error);

  const std::vector<HashKind>& kinds() const { return kinds_; }

  // Each stores the hashes in hexadecimal digits, in the order of the kinds. For several threads at
  // once.
  //
  // Reads the file from its start; its position is not moved. Returns the errno of a read that
  // failed, else 0.
  int HashFile(int descriptor, std::vector<std::string>& hashes) const;
  void HashMemory(std::span<const uint8_t> bytes, std::vector<std::string>& hashes) const;

 private:
  std::vector<HashKind> kinds_;
  std::unique_ptr<HashFunctions> functions_;
};

}  // namespace fi::app

#endif  // FI_RUN_HASHER_H_
