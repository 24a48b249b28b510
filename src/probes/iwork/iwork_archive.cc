#include "probes/iwork/iwork_archive.h"

#include <utility>

#include "platform/iwork.h"
#include "probes/iwork/iwork_records.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr char kVerifier[] = ".iwpv2";
constexpr char kArchive[] = "Index/Document.iwa";
constexpr char kNestedPackage[] = "Index.zip";

// Chunks of an archive. Applications write one for each 64 KB.
constexpr uint32_t kMaxChunks = 65536;

class Decryption {
 public:
  Decryption(IOHandle* package, const IdentificationJob& job)
      : request_{sizeof(IworksRequest),
                 job.askPassword,
                 {sizeof(IworksPackageSource), package, nullptr, job.passwordContext}} {}
  ~Decryption() { IworksEndDecryption(request_.source.context); }
  Decryption(const Decryption&) = delete;
  Decryption& operator=(const Decryption&) = delete;

  int16_t Prepare() { return IworksInitDecryption(&request_); }

  // Null when the member cannot be decrypted.
  io::OwnedHandle Decrypt(IOHandle* member) const {
    return io::OwnedHandle(IworksSetDecryptedTempFile(member, request_.source.context));
  }

 private:
  IworksRequest request_;
};

// The archive's member, null when there is none, behind what it is read through.
struct ArchiveMember {
  io::OwnedHandle nestedFile;
  io::OwnedHandle nestedPackage;
  io::OwnedHandle member;
};

ArchiveMember OpenArchive(IOHandle* package) {
  ArchiveMember archive;
  archive.member = OpenMember(package, kArchive);
  if (archive.member != nullptr) return archive;
  archive.nestedFile = OpenMember(package, kNestedPackage);
  if (archive.nestedFile == nullptr) return archive;
  archive.nestedPackage = OpenPackage(archive.nestedFile.get());
  if (archive.nestedPackage == nullptr) return archive;
  archive.member = OpenMember(archive.nestedPackage.get(), kArchive);
  return archive;
}

class ArchiveContent {
 public:
  ArchiveContent() = default;
  ~ArchiveContent() { FUTFreeBuf(&buffer_); }
  ArchiveContent(const ArchiveContent&) = delete;
  ArchiveContent& operator=(const ArchiveContent&) = delete;

  // All chunks of the archive; false when it cannot be decoded to its end.
  bool Read(IOHandle* archive) {
    for (uint32_t chunk = 0; chunk <= kMaxChunks; ++chunk) {
      const int32_t result = FUTDecompSnappyToBuf(archive, &buffer_);
      if (result != 0) return result == kFutEndOfData;
    }
    return false;
  }

  const IworkApplication* FindApplication() const {
    const IworkModule* module = LoadIworkModule();
    return module == nullptr ? nullptr
                             : FindIworkApplication({buffer_.start, buffer_.length}, *module);
  }

 private:
  FUTBuffer buffer_{};
};

}  // namespace

PackageAnswer IworkArchiveProbe(IOHandle* package, const IdentificationJob& job) {
  Decryption decryption(package, job);
  const bool encrypted = HasMember(package, kVerifier);
  if (encrypted) {
    const int16_t status = decryption.Prepare();
    if (status != kFiOk) {
      return {kFormatEncryptedIWork, true, static_cast<uint32_t>(int32_t{status})};
    }
  }
  ArchiveMember archive = OpenArchive(package);
  if (archive.member == nullptr) return {.id = kFormatZip};
  // What cannot be decrypted is read as it is: to no avail, unless it was never encrypted.
  if (encrypted) {
    io::OwnedHandle decrypted = decryption.Decrypt(archive.member.get());
    if (decrypted != nullptr) archive.member = std::move(decrypted);
  }

  ArchiveContent content;
  if (!content.Read(archive.member.get())) return EndsWith(kFormatEncryptedIWork);
  // Deliberate: a plain archive without a known message is no match, not a ZIP archive.
  const IworkApplication* application = content.FindApplication();
  if (application == nullptr) return EndsWith(encrypted ? kFormatEncryptedIWork : kNoMatch);
  return EndsWith(encrypted ? application->encryptedId : application->id);
}

}  // namespace fi
