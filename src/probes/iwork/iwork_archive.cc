#include "probes/iwork/iwork_archive.h"

#include <utility>

#include "platform/io.h"
#include "platform/iwork.h"
#include "platform/work.h"
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

// No further member is asked for, and a directory may be larger than the archive.
void ForgetNames(IOHandle* package) {
  if (package != nullptr) (void)IOSetInfo(package, kIoSetNamesUnneeded, 0, nullptr);
}

class ArchiveWindow {
 public:
  ArchiveWindow() = default;
  ~ArchiveWindow() { FUTFreeBuf(&buffer_); }
  ArchiveWindow(const ArchiveWindow&) = delete;
  ArchiveWindow& operator=(const ArchiveWindow&) = delete;

  // Goes on to the next chunk, of which as much as `records` needs is decompressed for them.
  // Returns what FUTDecompSnappyToBuf does.
  int32_t Next(IOHandle* archive, IworkRecords* records) {
    const uint64_t unwanted = records->Unwanted();
    const uint32_t before = buffer_.total;
    buffer_.unwanted = unwanted;
    const int32_t result = FUTDecompSnappyToBuf(archive, &buffer_);
    if (result != 0) return result;
    if (buffer_.total - before <= unwanted) {
      records->Skip(buffer_.total - before);
    } else {
      records->Take({buffer_.start, buffer_.length});
    }
    return result;
  }

 private:
  FUTBuffer buffer_{};
};

// Goes through all chunks of the archive, those behind the answer too; false when it cannot be
// decoded to its end.
bool ReadArchive(IOHandle* archive, IworkRecords* records) {
  ArchiveWindow window;
  for (uint32_t chunk = 0; chunk <= kMaxChunks; ++chunk) {
    const int32_t result = window.Next(archive, records);
    if (result != 0) return result == kFutEndOfData;
  }
  return false;
}

// The application that the archive names; null where it names none. Without the module no chunk can
// be decoded, but an archive without chunks is sound.
const IworkApplication* ReadApplication(IOHandle* archive, bool* isSound) {
  Work* const work = WorkOf(archive);
  const IworkModule* module = LoadIworkModule();
  if (module == nullptr) {
    FUTBuffer none{};
    *isSound = FUTDecompSnappyToBuf(archive, &none) == kFutEndOfData;
    return nullptr;
  }
  IworkRecords records(*module, work);
  *isSound = ReadArchive(archive, &records);
  return records.application();
}

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

  ForgetNames(package);
  ForgetNames(archive.nestedPackage.get());
  bool isSound = true;
  const IworkApplication* application = ReadApplication(archive.member.get(), &isSound);
  if (!isSound) return EndsWith(kFormatEncryptedIWork);
  // Deliberate: a plain archive without a known message is no match, not a ZIP archive.
  if (application == nullptr) return EndsWith(encrypted ? kFormatEncryptedIWork : kNoMatch);
  return EndsWith(encrypted ? application->encryptedId : application->id);
}

}  // namespace fi
