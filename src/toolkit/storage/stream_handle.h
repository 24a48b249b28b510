// A handle on a stream of a compound file. The handle follows the stream's chain only as far as its
// caller reads. It reads the requested bytes from the file, neighbouring sectors in one call.
#ifndef FI_TOOLKIT_STORAGE_STREAM_HANDLE_H_
#define FI_TOOLKIT_STORAGE_STREAM_HANDLE_H_

#include <cstdint>

#include "toolkit/io/positioned_handle.h"
#include "toolkit/storage/chain.h"
#include "toolkit/storage/compound_file.h"
#include "toolkit/storage/directory_entry.h"

namespace fi::storage {

class StreamHandle final : public io::PositionedHandle {
 public:
  // `file` is borrowed: the handle on the whole file outlives this one.
  StreamHandle(CompoundFile& file, const DirectoryEntry& entry);

 protected:
  // The claimed size, but not more than the file has room for. A broken chain yields fewer bytes.
  int64_t Size() override { return size_; }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;
  int32_t OtherInfo(uint32_t code, void* out) override;

 private:
  // Bytes of the file that follow one another as they do in the stream.
  struct Run {
    uint64_t offset;
    uint32_t size;
  };

  ~StreamHandle() override = default;

  Run RunAt(int64_t offset, uint32_t wanted);

  CompoundFile& file_;
  const uint64_t claimed_;
  const uint32_t unitShift_;
  int64_t size_;
  Chain chain_;
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_STREAM_HANDLE_H_
