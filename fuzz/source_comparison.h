// One file by every way that leads to the library: path, memory, descriptor, and a handle whose
// reads are short. The answer is the same for all of them. Under limits it is the same where no
// limit was reached, and none is passed.
#ifndef FI_FUZZ_SOURCE_COMPARISON_H_
#define FI_FUZZ_SOURCE_COMPARISON_H_

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "api/driver.h"
#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "fuzz/input_handle.h"
#include "platform/io.h"
#include "platform/work.h"

namespace fi::fuzzing {

inline void Require(bool condition) {
  if (!condition) std::abort();
}

// A file in memory-backed storage, under a folder of this process, while the object lives.
class ScratchFile {
 public:
  ScratchFile(const std::string& bytes, const char* name) : path_(Folder() + "/" + name) {
    descriptor_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    Require(descriptor_ >= 0);
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    Require(written == static_cast<ssize_t>(bytes.size()));
  }
  ~ScratchFile() {
    (void)::close(descriptor_);
    (void)::unlink(path_.c_str());
  }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  const std::string& path() const { return path_; }
  int descriptor() const { return descriptor_; }

 private:
  struct OwnFolder {
    OwnFolder() {
      std::array<char, 64> name{"/dev/shm/formatid-fuzz-XXXXXX"};
      Require(::mkdtemp(name.data()) != nullptr);
      path = name.data();
    }
    ~OwnFolder() { (void)::rmdir(path.c_str()); }
    std::string path;
  };
  static const std::string& Folder() {
    static const OwnFolder kFolder;
    return kFolder.path;
  }

  std::string path_;
  int descriptor_;
};

// The host of these targets knows the password "secret", but says something else first.
inline uint32_t AnswerSecret(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
  constexpr char kPassword[] = "secret";
  if (request->attempts > 1) return kFiNoCallback;
  Require(request->capacity >= sizeof(kPassword));
  if (request->attempts > 0) std::memcpy(request->password, kPassword, sizeof(kPassword));
  return 0;
}

inline bool SameAnswer(const Answer& one, const Answer& other) {
  return one.status == other.status && one.id == other.id &&
         one.evidence.basis == other.evidence.basis &&
         one.evidence.signature == other.evidence.signature;
}

class SourceComparison {
 public:
  SourceComparison(const std::string& file, const char* name, uint32_t flags)
      : file_(file), name_(name), flags_(flags | kFiUseFlags), scratch_(file, name) {
    static FIPasswordCallback callback = AnswerSecret;
    Require(UTSetGlobalData(kUtDataPasswordCallback, &callback) == 0);
  }

  // `limits` are those of the second round.
  void Run(const WorkLimits& limits) {
    WorkLimits open;
    // Rounds cost the time that is for other inputs, and no count of bytes.
    open.keyRounds = kRounds;
    open.bytesRead = open.reads = open.bytesInflated = open.steps = kNoWorkLimit;
    open.memory = open.depth = kNoWorkLimit;
    const Answer answer = Identify(0, open);
    for (int source = 1; source < kSources; ++source)
      Require(SameAnswer(Identify(source, open), answer));

    WorkLimits tight = limits;
    tight.keyRounds = std::min<uint64_t>(tight.keyRounds, kRounds);
    for (int source = 0; source < kSources; ++source) {
      WorkLimit limit = WorkLimit::kNone;
      const Answer limited = Identify(source, tight, &limit);
      if (limit == WorkLimit::kNone) Require(SameAnswer(limited, answer));
    }
  }

 private:
  static constexpr int kSources = 4;
  static constexpr uint64_t kRounds = 400;

  io::OwnedHandle Open(int source, Work* work) {
    const IOMemorySource memory = {file_.data(), file_.size(), name_};
    const IODescriptorSource descriptor = {scratch_.descriptor(), name_};
    IOHandle* handle = nullptr;
    int32_t result = kIoOk;
    switch (source) {
      case 0:
        result = OpenSource(&handle, kIoSourcePath, scratch_.path().c_str(), work);
        break;
      case 1:
        result = OpenSource(&handle, kIoSourceMemory, &memory, work);
        break;
      case 2:
        result = OpenSource(&handle, kIoSourceDescriptor, &descriptor, work);
        break;
      default: {
        auto* slow = new InputHandle(reinterpret_cast<const uint8_t*>(file_.data()), file_.size(),
                                     name_, {.nesting = 0, .work = work, .isSource = true});
        slow->mostPerRead = file_.size() < 4096 ? 3 : 509;
        handle = slow;
        break;
      }
    }
    Require(result == kIoOk && handle != nullptr);
    return io::OwnedHandle(handle);
  }

  Answer Identify(int source, const WorkLimits& limits, WorkLimit* reached = nullptr) {
    Work work(limits);
    const io::OwnedHandle handle = Open(source, &work);
    const Answer answer = IdentifyWithWork(handle.get(), flags_, &work);
    const WorkSpent& spent = work.spent;
    Require(spent.bytesRead <= limits.bytesRead && spent.reads <= limits.reads);
    Require(spent.steps <= limits.steps && spent.memory <= limits.memory);
    Require(spent.keyRounds <= limits.keyRounds && spent.depth <= limits.depth);
    Require(work.readError == 0 && !work.noMemory);
    Require(!work.stopped || work.limit != WorkLimit::kNone);
    if (reached != nullptr) *reached = work.limit;
    return answer;
  }

  const std::string& file_;
  const char* const name_;
  const uint32_t flags_;
  const ScratchFile scratch_;
};

inline const char* NameFor(uint8_t choice) {
  static constexpr std::array<const char*, 16> kNames = {
      "x",     "x.ai",  "x.tga",  "x.img",  "x.wbm",  "x.pwp",   "x.jsh",     "x.dat",
      "x.rbf", "x.eml", "x.docx", "x.xlsx", "x.pptx", "x.pages", "x.numbers", "x.vsdx"};
  return kNames[choice % kNames.size()];
}

// Limits from four bytes: each is a power of two, so that small ones are as likely as large ones.
inline WorkLimits LimitsFor(const std::array<uint8_t, 4>& choices) {
  WorkLimits limits;
  limits.bytesRead = uint64_t{1} << (choices[0] & 15) << 8;
  limits.reads = uint64_t{1} << (choices[0] >> 4);
  limits.bytesInflated = uint64_t{1} << (choices[1] & 15) << 6;
  limits.steps = uint64_t{1} << (choices[1] >> 4) << 3;
  limits.memory = uint64_t{1} << (choices[2] & 15) << 8;
  limits.depth = choices[2] >> 4;
  limits.keyRounds = uint64_t{choices[3]};
  return limits;
}

}  // namespace fi::fuzzing

#endif  // FI_FUZZ_SOURCE_COMPARISON_H_
