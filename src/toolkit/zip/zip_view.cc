#include "toolkit/zip/zip_view.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "toolkit/zip/member_handle.h"
#include "toolkit/zip/records.h"

namespace fi::zip {
namespace {

uint64_t Packable(uint64_t fileSize, uint32_t nesting) {
  if (nesting > 0) return kMaxPackedByNestedView;
  return std::min(fileSize, kMaxInflatedByView) * kMaxPasses + kFreeOfPasses;
}

}  // namespace

namespace {

int32_t Open(IOHandle* handle, uint32_t nesting, bool (ZipView::*load)(), IOHandle** target) {
  *target = nullptr;
  if (nesting > kMaxNesting) return kIoError;
  auto* view = Allocated(WorkOf(handle), new (std::nothrow) ZipView(handle, nesting));
  if (view == nullptr) return kIoError;
  if (!(view->*load)()) {
    (void)view->operations->close(view);
    return kIoError;
  }
  *target = view;
  return kIoOk;
}

}  // namespace

int32_t OpenView(IOHandle* handle, uint32_t nesting, IOHandle** target) {
  return Open(handle, nesting, &ZipView::Load, target);
}

int32_t OpenRepairedView(IOHandle* handle, uint32_t nesting, IOHandle** target) {
  return Open(handle, nesting, &ZipView::Rebuild, target);
}

ZipView::ZipView(IOHandle* handle, uint32_t nesting)
    : PositionedHandle({}, {nesting, WorkOf(handle)}),
      reader_(handle),
      fileSize_(reader_.Size()),
      directory_(work()),
      packable_(Packable(fileSize_, nesting)) {}

int32_t ZipView::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  *count = reader_.ReadAt(static_cast<uint64_t>(offset), buffer, size);
  return 0;
}

int32_t ZipView::OtherInfo(uint32_t code, void* out) {
  if (code == kIoInfoMemberName) return TellName(static_cast<IOMemberName*>(out));
  if (code != kIoInfoReadError && code != kIoInfoViewDepth) return -1;
  IOHandle* handle = reader_.handle();
  return handle->operations->getInfo(handle, code, out);
}

int32_t ZipView::TellName(IOMemberName* question) {
  if (question->index >= directory_.count()) return -1;
  std::string_view name = directory_.At(question->index).name;
  if (name.size() > kMaxName || name.find('\0') != std::string_view::npos) name = {};
  name_[name.copy(name_.data(), name.size())] = '\0';
  question->name = name_.data();
  return 0;
}

std::span<const uint8_t> ZipView::Kept(uint64_t offset) const {
  const uint64_t skipped = offset - inputOffset_;
  if (offset < inputOffset_ || skipped > inputSize_) return {};
  return std::span<const uint8_t>(input_).subspan(skipped, inputSize_ - skipped);
}

std::span<const uint8_t> ZipView::Input(uint64_t offset, uint32_t least, uint64_t most) {
  const std::span<const uint8_t> kept = Kept(offset);
  if (!kept.empty() && kept.size() >= least) return kept;
  const auto had = static_cast<uint32_t>(kept.size());
  std::copy(kept.begin(), kept.end(), input_.begin());
  const auto wanted = std::max(least, static_cast<uint32_t>(std::min<uint64_t>(most, kInputBlock)));
  inputSize_ = had + reader_.ReadAt(offset + had, input_.data() + had, wanted - had);
  inputOffset_ = offset;
  return {input_.data(), inputSize_};
}

std::unique_ptr<Inflater> ZipView::TakeInflater() {
  std::unique_ptr<Inflater> inflater = std::move(idle_);
  if (inflater == nullptr) inflater.reset(Allocated(work(), new (std::nothrow) Inflater));
  if (inflater != nullptr && !inflater->Start())
    return Allocated(work(), std::unique_ptr<Inflater>());
  return inflater;
}

void ZipView::GiveBack(std::unique_ptr<Inflater> inflater) { idle_ = std::move(inflater); }

// The local header is read together with what is probably needed of the data behind it. It tells
// where that begins; everything else is taken from the directory, whose packed size then is no
// larger than the file has room for.
bool ZipView::Locate(Entry* entry, uint64_t* data) {
  constexpr uint32_t kExpectedExtra = 64;
  const uint64_t expected = local::kSize + entry->name.size() + kExpectedExtra;
  const uint64_t most = expected + std::min<uint64_t>(entry->packedSize, kInputBlock);
  const std::span<const uint8_t> header = Input(entry->localOffset, local::kSize, most);
  if (header.size() < local::kSize || LoadLE32(header.data()) != local::kSignature) return false;
  const uint64_t length = uint64_t{local::kSize} + LoadLE16(header.data() + local::kNameLength) +
                          LoadLE16(header.data() + local::kExtraLength);
  if (length > fileSize_ - std::min(entry->localOffset, fileSize_)) return false;
  *data = entry->localOffset + length;
  entry->packedSize = std::min(entry->packedSize, fileSize_ - *data);
  return true;
}

int32_t ZipView::OpenMember(IOHandle** target, const IOMemberSource& source) {
  const std::string_view path(source.path, ::strnlen(source.path, sizeof(source.path)));
  Entry entry;
  if (path.size() == sizeof(source.path) || !directory_.Find(path, &entry)) return kIoNotFound;
  if (entry.IsFolder()) {
    *target = Allocated(work(), new (std::nothrow) FolderHandle(*this, entry.name));
    return *target == nullptr ? kIoError : kIoOk;
  }
  uint64_t data = 0;
  if ((entry.flags & kEncrypted) != 0 || !Locate(&entry, &data)) return kIoError;
  if (entry.method == kStored) {
    *target = Allocated(work(), new (std::nothrow) StoredHandle(*this, entry, data));
  } else if (entry.method == kDeflated) {
    *target = Allocated(work(), new (std::nothrow) DeflatedHandle(*this, entry, data));
  }
  return *target == nullptr ? kIoError : kIoOk;
}

}  // namespace fi::zip
