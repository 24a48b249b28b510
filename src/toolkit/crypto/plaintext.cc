#include "toolkit/crypto/plaintext.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace fi::crypto {
namespace {

// The folder for temporary files. A program with raised rights does not let the environment choose.
const char* TemporaryFolder() {
  const char* folder = ::secure_getenv("TMPDIR");
  return folder != nullptr && folder[0] == '/' ? folder : "/tmp";
}

// Opens a file of the owner's alone that no path leads to; -1 when that fails. Where the file
// system knows no such files, one is made and its name removed.
int OpenNamelessFile() {
  const char* folder = TemporaryFolder();
  const int descriptor = ::open(folder, O_TMPFILE | O_RDWR | O_CLOEXEC | O_EXCL, S_IRUSR | S_IWUSR);
  if (descriptor >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) {
    return descriptor;
  }
  std::array<char, PATH_MAX> path{};
  const int length = std::snprintf(path.data(), path.size(), "%s/formatid-XXXXXX", folder);
  if (length < 0 || static_cast<size_t>(length) >= path.size()) return -1;
  const int named = ::mkostemp(path.data(), O_CLOEXEC);
  if (named >= 0) (void)::unlink(path.data());
  return named;
}

bool WriteAt(int descriptor, Bytes bytes, uint64_t offset) {
  while (!bytes.empty()) {
    const ssize_t count =
        ::pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes = bytes.subspan(static_cast<size_t>(count));
    offset += static_cast<uint64_t>(count);
  }
  return true;
}

// Best effort: a file system that writes to new places keeps the old ones.
void Overwrite(int descriptor, uint64_t size) {
  static constexpr std::array<uint8_t, 16384> kZeros{};
  for (uint64_t offset = 0; offset < size; offset += kZeros.size()) {
    const auto part = static_cast<size_t>(std::min<uint64_t>(kZeros.size(), size - offset));
    if (!WriteAt(descriptor, Bytes(kZeros).first(part), offset)) return;
  }
}

}  // namespace

Plaintext::~Plaintext() {
  for (const auto& block : blocks_) {
    if (block != nullptr) explicit_bzero(block.get(), kBlockSize);
  }
  if (descriptor_ >= 0) {
    Overwrite(descriptor_, size_);
    ::close(descriptor_);
  }
}

bool Plaintext::Reserve(uint64_t size, const DecryptionLimits& limits) {
  reserved_ = size;
  if (size <= std::min(limits.mostMemory, kMaxPlaintextMemory)) return true;
  descriptor_ = OpenNamelessFile();
  return descriptor_ >= 0;
}

bool Plaintext::Append(Bytes bytes) {
  if (bytes.size() > reserved_ - size_) return false;
  return InMemory() ? AppendToMemory(bytes) : AppendToFile(bytes);
}

bool Plaintext::AppendToMemory(Bytes bytes) {
  while (!bytes.empty()) {
    std::unique_ptr<uint8_t[]>& block = blocks_[static_cast<size_t>(size_ / kBlockSize)];
    if (block == nullptr) block.reset(new (std::nothrow) uint8_t[kBlockSize]);
    if (block == nullptr) return false;
    const auto start = static_cast<size_t>(size_ % kBlockSize);
    const size_t count = std::min(bytes.size(), kBlockSize - start);
    std::copy_n(bytes.begin(), count, block.get() + start);
    bytes = bytes.subspan(count);
    size_ += count;
  }
  return true;
}

// The remains of a failed write count as written, so that they are overwritten too.
bool Plaintext::AppendToFile(Bytes bytes) {
  const uint64_t offset = size_;
  size_ += bytes.size();
  return WriteAt(descriptor_, bytes, offset);
}

bool Plaintext::ReadAt(uint64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) const {
  *count = 0;
  while (*count < size && offset < size_) {
    uint64_t part = std::min<uint64_t>(size - *count, size_ - offset);
    if (InMemory()) {
      const uint64_t start = offset % kBlockSize;
      part = std::min(part, kBlockSize - start);
      const uint8_t* block = blocks_[static_cast<size_t>(offset / kBlockSize)].get();
      std::copy_n(block + start, part, buffer + *count);
    } else {
      const ssize_t got = ::pread(descriptor_, buffer + *count, static_cast<size_t>(part),
                                  static_cast<off_t>(offset));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return false;
      part = static_cast<uint64_t>(got);
    }
    *count += static_cast<uint32_t>(part);
    offset += part;
  }
  return true;
}

}  // namespace fi::crypto
