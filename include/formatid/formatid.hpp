// FIIdentify for C++20: sources, requests and results as values. Header only over the C interface;
// nothing of the C++ runtime crosses it.
//
//   const formatid::Result result = formatid::identify(formatid::Source::file("report.doc"));
//   if (result) std::cout << result.name() << '\n';
#ifndef FI_FORMATID_FORMATID_HPP_
#define FI_FORMATID_FORMATID_HPP_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formatid/identify.h"

namespace formatid {

// What a reader of a host's own answers.
struct Read {
  std::size_t count = 0;  // bytes stored
  int error = 0;          // errno, or kFiReadMissing
};

// Stores up to buffer.size() bytes from `offset` on; none: the source ends there. What it throws
// counts as a failed read.
using Reader = std::function<Read(std::uint64_t offset, std::span<std::byte> buffer)>;

// Bytes of a file that are known. They are borrowed.
struct Part {
  std::uint64_t offset = 0;
  std::span<const std::byte> bytes;
};

// Where the bytes come from. Memory and parts are borrowed until the identification ends.
class Source {
 public:
  static Source file(const std::filesystem::path& path) {
    Source source(kFiSourcePath);
    source.path_ = path.string();
    return source;
  }
  static Source memory(std::span<const std::byte> bytes) {
    Source source(kFiSourceMemory);
    source.memory_ = bytes;
    source.size_ = bytes.size();
    return source;
  }
  static Source memory(std::string_view bytes) {
    return memory(std::as_bytes(std::span(bytes.data(), bytes.size())));
  }
  static Source descriptor(int descriptor) {
    Source source(kFiSourceDescriptor);
    source.descriptor_ = descriptor;
    return source;
  }
  static Source reader(Reader reader, std::optional<std::uint64_t> size = std::nullopt) {
    Source source(kFiSourceCallbacks);
    source.reader_ = std::move(reader);
    source.size_ = size.value_or(FI_UNKNOWN_SIZE);
    return source;
  }
  static Source parts(std::span<const Part> parts,
                      std::optional<std::uint64_t> size = std::nullopt) {
    Source source(kFiSourceParts);
    for (const Part& part : parts) {
      source.parts_.push_back({part.offset, part.bytes.size(), part.bytes.data()});
    }
    source.size_ = size.value_or(FI_UNKNOWN_SIZE);
    return source;
  }

  // The file's name, of which the extension counts.
  Source& named(std::string name) & {
    name_ = std::move(name);
    return *this;
  }
  Source&& named(std::string name) && { return std::move(this->named(std::move(name))); }

 private:
  friend class Request;

  explicit Source(std::uint32_t kind) : kind_(kind) {}

  FISource ToC() const {
    FISource source{};
    source.kind = kind_;
    source.descriptor = descriptor_;
    source.name = name_.has_value() ? name_->c_str() : nullptr;
    source.path = path_.c_str();
    source.data = memory_.data();
    source.size = size_;
    source.readAt = ReadAt;
    source.context = const_cast<Reader*>(&reader_);
    source.parts = parts_.data();
    source.partCount = static_cast<std::uint32_t>(parts_.size());
    return source;
  }

  static std::int32_t ReadAt(void* context, std::uint64_t offset, void* buffer, std::uint32_t size,
                             std::uint32_t* count) {
    const Reader& reader = *static_cast<const Reader*>(context);
    const Read read = reader(offset, {static_cast<std::byte*>(buffer), size});
    *count = static_cast<std::uint32_t>(std::min<std::size_t>(read.count, UINT32_MAX));
    return read.error;
  }

  std::uint32_t kind_;
  int descriptor_ = -1;
  std::uint64_t size_ = 0;
  std::optional<std::string> name_;
  std::string path_;
  std::span<const std::byte> memory_;
  Reader reader_;
  std::vector<FIPart> parts_;
};

// Bytes that an incomplete source lacks.
struct Range {
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
};

class Result {
 public:
  explicit Result(const FIResult& result) : result_(result) {}

  // Whether the identification ran to its end and found a format.
  explicit operator bool() const { return status() == kFiOk && id() != kFormatUnknown; }

  std::uint32_t status() const { return result_.status; }
  std::string_view statusText() const { return FIStatusText(result_.status); }
  FormatId id() const { return result_.id; }
  std::string_view name() const { return result_.name; }
  std::string_view mimeType() const { return result_.mimeType; }
  std::string_view category() const { return result_.category; }
  std::vector<std::string_view> extensions() const { return Split(result_.extensions); }
  std::vector<std::string_view> puids() const { return Split(result_.puids); }
  std::string_view basisText() const { return FIBasisText(result_.basis); }

  // Whether the file's extension is one of the format's; nothing where that cannot be told.
  std::optional<bool> extensionFits() const {
    if (result_.extensionFit == kFiFitUnknown) return std::nullopt;
    return result_.extensionFit == kFiFits;
  }
  std::optional<std::uint64_t> fileSize() const {
    if (result_.fileSize == FI_UNKNOWN_SIZE) return std::nullopt;
    return result_.fileSize;
  }

  // Whether more of an incomplete source could change the answer: bytes, or its size.
  bool wantsMore() const { return result_.more != kFiMoreNone; }
  bool wantsSize() const { return result_.more == kFiMoreSize; }
  std::optional<Range> wantedRange() const {
    if (result_.more != kFiMoreBytes) return std::nullopt;
    return Range{result_.wantedOffset, result_.wantedSize};
  }

  // Everything else.
  const FIResult& raw() const { return result_; }

 private:
  static std::vector<std::string_view> Split(std::string_view list) {
    std::vector<std::string_view> items;
    while (!list.empty()) {
      const std::size_t end = std::min(list.find(','), list.size());
      items.push_back(list.substr(0, end));
      list.remove_prefix(std::min(end + 1, list.size()));
    }
    return items;
  }

  FIResult result_;
};

// An identification to be. What its functions throw ends inside the call: a password is declined, a
// cancellation is granted, a step of the trace is lost.
class Request {
 public:
  explicit Request(Source source) : source_(std::move(source)) {}

  // kFiTextFallback and its like; everything is on.
  Request& flags(std::uint32_t flags) {
    flags_ = flags;
    return *this;
  }
  Request& limits(const FILimits& limits) {
    limits_ = limits;
    return *this;
  }
  // Answers the password to try, by the number of those tried before; nothing declines.
  Request& password(std::function<std::optional<std::string>(std::uint32_t attempt)> answer) {
    password_ = std::move(answer);
    return *this;
  }
  Request& cancel(std::function<bool()> isCancelled) {
    cancel_ = std::move(isCancelled);
    return *this;
  }
  Request& trace(std::function<void(const FITraceRecord&)> tell) {
    trace_ = std::move(tell);
    return *this;
  }

  Result identify() const {
    FIRequest request = FI_REQUEST_INIT;
    request.flags = flags_;
    request.limits = limits_;
    request.source = source_.ToC();
    void* const self = const_cast<Request*>(this);
    if (password_) {
      request.password = AskPassword;
      request.passwordContext = self;
    }
    if (cancel_) {
      request.cancel = IsCancelled;
      request.cancelContext = self;
    }
    if (trace_) {
      request.trace = Tell;
      request.traceContext = self;
    }
    FIResult result = FI_RESULT_INIT;
    (void)FIIdentify(&request, &result);
    return Result(result);
  }

 private:
  static const Request& Self(void* context) { return *static_cast<const Request*>(context); }

  static std::uint32_t AskPassword(void* context, const FIRequest* /*request*/,
                                   FIPasswordRequest* ask) {
    const std::optional<std::string> password = Self(context).password_(ask->attempts);
    if (!password.has_value() || password->size() >= ask->capacity) return 1;
    std::memcpy(ask->password, password->c_str(), password->size() + 1);
    return 0;
  }
  static std::int32_t IsCancelled(void* context) { return Self(context).cancel_() ? 1 : 0; }
  static void Tell(void* context, const FITraceRecord* record) { Self(context).trace_(*record); }

  Source source_;
  std::uint32_t flags_ = kFiEverything;
  FILimits limits_{};
  std::function<std::optional<std::string>(std::uint32_t attempt)> password_;
  std::function<bool()> cancel_;
  std::function<void(const FITraceRecord&)> trace_;
};

inline Result identify(Source source) { return Request(std::move(source)).identify(); }

}  // namespace formatid

#endif  // FI_FORMATID_FORMATID_HPP_
