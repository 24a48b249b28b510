// ZIP package views: opens every member that the directory lists, and the names that documents
// have, reads them in several ways, and goes into those that are packages or compound files
// themselves; the same over the headers of the members. Then asks what the package is.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "formatid/io.h"
#include "fuzz/input_handle.h"
#include "platform/io.h"
#include "probes/package/package_supplement.h"
#include "toolkit/zip/limits.h"

namespace {

using fi::fuzzing::InputHandle;
using fi::io::OwnedHandle;

constexpr const char* kNames[] = {"", "/", "a", "A", "_rels/.rels", "[content_types].XML", "d/"};

constexpr int kMaxMembers = 24;            // opened for one input
constexpr uint32_t kMaxListed = 64;        // names of one view
constexpr uint32_t kMostCompared = 20000;  // bytes of a member that are read in every way
constexpr int64_t kMostNested = 1 << 16;   // bytes of a member that is looked into

void Require(bool holds) {
  if (!holds) __builtin_trap();
}

class Walk {
 public:
  Walk(InputHandle& input, size_t size, uint32_t source)
      : input_(input), size_(size), source_(source) {}

  // `depth` is the number of packages around the view.
  void Package(IOHandle* handle, uint32_t depth) {
    int64_t before = 0;
    int64_t after = 0;
    const uint64_t readBefore = input_.bytesRead;
    Require(fi::io::Seek64(handle, kIoFromStart, 7) && fi::io::Tell64(handle, &before));
    IOHandle* opened = handle;
    const int32_t result = handle->operations->open(handle, &opened, source_, nullptr, 0);
    const OwnedHandle view(opened);
    Require((result == kIoOk) == (view != nullptr));
    Require(fi::io::Tell64(handle, &after) && before == after);
    // The tail twice, the directory, and what is probed of end records; or for each member, of 31
    // bytes at least, a header with a name as long as can be.
    const uint64_t most = (source_ == kIoSourcePackage ? 3 : 20) * size_ + 4096;
    if (depth == 0) Require(input_.bytesRead - readBefore <= most);
    if (view == nullptr) return;
    Require(depth <= fi::zip::kMaxNesting);
    Require(IOSetInfo(view.get(), kIoSetPackageMode, 2, nullptr) == 0);
    for (const char* name : kNames) Member(view.get(), name, depth);
    IOMemberName question{0, nullptr};
    for (; question.index < kMaxListed; ++question.index) {
      if (!fi::io::GetInfo(view.get(), kIoInfoMemberName, &question)) break;
      const std::string name = question.name;
      Require(name.size() <= fi::zip::kMaxName);
      Member(view.get(), name, depth);
    }
  }

 private:
  void Member(IOHandle* view, std::string_view name, uint32_t depth) {
    if (members_ == kMaxMembers) return;
    IOMemberSource source{view, {}, -1, {0, 0}};
    std::memcpy(source.path, name.data(), name.size());
    IOHandle* opened = nullptr;
    const int32_t result =
        view->operations->open(view, &opened, kIoSourcePackageMember, &source, 0);
    const OwnedHandle member(opened);
    Require((result == kIoOk) == (member != nullptr));
    if (member == nullptr) return;
    ++members_;
    Require(fi::io::Seek64(member.get(), kIoFromEnd, 0));
    int64_t size = 0;
    Require(fi::io::Tell64(member.get(), &size) && size >= 0);
    Content(member.get(), static_cast<uint64_t>(size));
    // Somewhere far behind: what is left of the limits ends the search for it.
    if (size > kMostNested) (void)Read(member.get(), static_cast<uint64_t>(size) - 1, 4096, 4096);
    if (size > kMostNested) return;
    Package(member.get(), depth + 1);
    std::array<uint8_t, 16> classId;
    (void)fi::io::GetInfo(member.get(), kIoInfoClassId, classId.data());
  }

  // The same bytes, read bytewise, in large pieces, or from behind.
  static void Content(IOHandle* member, uint64_t size) {
    const std::string large = Read(member, 0, kMostCompared, 1 << 15);
    Require(large.size() <= size);
    Require(Read(member, 0, kMostCompared, 700) == large);
    Require(Read(member, 0, 3000, 1) == large.substr(0, 3000));
    for (size_t at = large.size(); at > 0;) {
      at -= std::min<size_t>(at, 4099);
      Require(Read(member, at, 100, 100) == large.substr(at, 100));
    }
  }

  // At most `most` bytes from `offset` on, `piece` bytes at a time.
  static std::string Read(IOHandle* member, uint64_t offset, uint32_t most, uint32_t piece) {
    std::string bytes;
    std::string buffer(piece, '\0');
    Require(fi::io::Seek64(member, kIoFromStart, static_cast<int64_t>(offset)));
    while (bytes.size() < most) {
      const uint32_t got = fi::io::Read(
          member, buffer.data(), std::min(piece, most - static_cast<uint32_t>(bytes.size())));
      if (got == 0) break;
      bytes.append(buffer, 0, got);
    }
    return bytes;
  }

  InputHandle& input_;
  const uint64_t size_;
  const uint32_t source_;
  int members_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  InputHandle input(data, size);
  Walk(input, size, kIoSourcePackage).Package(&input, 0);
  Walk(input, size, kIoSourceRepairedPackage).Package(&input, 0);
  const fi::ScopedStream stream(&input);
  if (stream) (void)fi::PackageSupplement(stream.get());
  return 0;
}
