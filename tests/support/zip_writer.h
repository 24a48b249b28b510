// Writes ZIP packages for tests: well-formed ones, unless a member's options let the directory lie.
#ifndef FI_TESTS_SUPPORT_ZIP_WRITER_H_
#define FI_TESTS_SUPPORT_ZIP_WRITER_H_

#include <cstdint>
#include <optional>
#include <string>

namespace fi::testing {

struct ZipMember {
  uint16_t method = 8;  // 8 deflates; under any other the bytes are written as they are
  uint16_t flags = 0;   // bit 0: encrypted; bit 3: the sizes stand behind the data, not before it
  bool zip64 = false;   // sizes and offset in extra fields
  std::string extra{};  // of the local header
  // What the directory claims instead of the truth.
  std::optional<uint64_t> size{}, packedSize{}, offset{};
};

struct ZipEnd {
  std::string comment{};
  bool zip64 = false;  // end record and locator of ZIP64 in front of the end record
};

class ZipWriter {
 public:
  // Puts bytes between the members. In front of the first, offsets count them.
  ZipWriter& Raw(const std::string& bytes);
  ZipWriter& Add(const std::string& name, const std::string& data, const ZipMember& member = {});

  // The package. A prefix that its offsets do not count is put in front of it by the caller.
  std::string Finish(const ZipEnd& end = {}) const;

 private:
  std::string bytes_;
  std::string directory_;
  uint64_t count_ = 0;
};

// A package of deflated members in the notation of storage_samples.h; what is a storage there is a
// package of its own here, as a stored member:
//
//   'a.xml'= '<a/>'; 'folder/'=; 'Index.zip'{ 'b'= 00 01 }
std::string SamplePackage(const std::string& notation);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_ZIP_WRITER_H_
