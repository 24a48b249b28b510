#include "tests/support/zip_writer.h"

#include <zlib.h>

#include <vector>

#include "tests/support/bytes.h"

namespace fi::testing {
namespace {

constexpr uint64_t kNarrow = 0xFFFFFFFF;  // the number stands in the extra field

std::string Deflated(const std::string& data) {
  z_stream stream{};
  deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&stream, data.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  stream.avail_in = static_cast<uInt>(data.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

std::string Numbers(size_t size, const std::vector<uint64_t>& values) {
  std::string bytes;
  for (const uint64_t value : values) bytes += LittleEndian(value, size);
  return bytes;
}

}  // namespace

ZipWriter& ZipWriter::Raw(const std::string& bytes) {
  bytes_ += bytes;
  return *this;
}

ZipWriter& ZipWriter::Add(const std::string& name, const std::string& data,
                          const ZipMember& member) {
  const std::string packed = member.method == Z_DEFLATED ? Deflated(data) : data;
  const uint64_t packedSize = member.packedSize.value_or(packed.size());
  const uint64_t size = member.size.value_or(data.size());
  const uint64_t offset = member.offset.value_or(bytes_.size());
  const bool behind = (member.flags & 8) != 0;
  const std::string start = Numbers(2, {20, member.flags, member.method}) + Numbers(4, {0, 0});

  bytes_ += Bytes("PK\3\4") + start + Numbers(4, {behind ? 0 : packedSize, behind ? 0 : size}) +
            Numbers(2, {name.size(), member.extra.size()}) + name + member.extra + packed;
  if (behind) bytes_ += Bytes("PK\7\10") + Numbers(4, {0, packedSize, size});

  std::string extra;
  if (member.zip64) extra = Numbers(2, {1, 24}) + Numbers(8, {size, packedSize, offset});
  directory_ += Bytes("PK\1\2") + LittleEndian(20, 2) + start;
  directory_ += Numbers(4, {member.zip64 ? kNarrow : packedSize, member.zip64 ? kNarrow : size});
  directory_ += Numbers(2, {name.size(), extra.size(), 0, 0, 0}) + LittleEndian(0, 4);
  directory_ += LittleEndian(member.zip64 ? kNarrow : offset, 4) + name + extra;
  ++count_;
  return *this;
}

std::string ZipWriter::Finish(const ZipEnd& end) const {
  const uint64_t at = bytes_.size();
  const uint64_t size = directory_.size();
  std::string bytes = bytes_ + directory_;
  if (end.zip64) {
    bytes += Bytes("PK\6\6") + LittleEndian(44, 8) + Numbers(2, {45, 45}) + Numbers(4, {0, 0}) +
             Numbers(8, {count_, count_, size, at});
    bytes += Bytes("PK\6\7") + LittleEndian(0, 4) + LittleEndian(at + size, 8) + LittleEndian(1, 4);
  }
  bytes += Bytes("PK\5\6") + Numbers(2, {0, 0, count_, count_}) +
           Numbers(4, {end.zip64 ? kNarrow : size, end.zip64 ? kNarrow : at});
  return bytes + LittleEndian(end.comment.size(), 2) + end.comment;
}

}  // namespace fi::testing
