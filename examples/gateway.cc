// A gateway: it lets a file through by what it is, not by what it is called, and decides on as few
// bytes as it can. The file arrives from a server that gives ranges; here a local file plays it.
//
//   formatid_example_gateway FILE...
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "formatid/formatid.hpp"

namespace {

// Ranges of a file far away, counted.
class Server {
 public:
  explicit Server(const char* path) : file_(path, std::ios::binary) {
    file_.seekg(0, std::ios::end);
    size_ = file_ ? static_cast<std::uint64_t>(file_.tellg()) : 0;
  }

  bool IsThere() const { return static_cast<bool>(file_); }
  std::uint64_t size() const { return size_; }
  std::uint64_t requests() const { return requests_; }
  std::uint64_t bytes() const { return bytes_; }

  std::string Get(formatid::Range range) {
    ++requests_;
    std::string part(range.size, '\0');
    file_.clear();
    file_.seekg(static_cast<std::streamoff>(range.offset));
    file_.read(part.data(), static_cast<std::streamsize>(part.size()));
    part.resize(static_cast<std::size_t>(std::max<std::streamsize>(file_.gcount(), 0)));
    bytes_ += part.size();
    return part;
  }

 private:
  std::ifstream file_;
  std::uint64_t size_ = 0;
  std::uint64_t requests_ = 0;
  std::uint64_t bytes_ = 0;
};

// What a message may cost before it is held back as hostile.
constexpr FILimits kBudget = {.bytesRead = 8 << 20,
                              .reads = 4096,
                              .bytesInflated = 16 << 20,
                              .steps = 100'000,
                              .memory = 16 << 20,
                              .keyRounds = 0,
                              .depth = 4,
                              .milliseconds = 0};

constexpr std::uint64_t kFirstRequest = 4096;

// Asks with what is known, and gets what the answer still depends on.
formatid::Result ByRanges(Server& server, const char* name) {
  std::vector<std::string> bytes;
  std::vector<std::uint64_t> offsets;
  formatid::Range range{0, std::min(kFirstRequest, server.size())};
  for (;;) {
    offsets.push_back(range.offset);
    bytes.push_back(server.Get(range));
    std::vector<formatid::Part> parts;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      parts.push_back({offsets[i], std::as_bytes(std::span(bytes[i]))});
    }
    formatid::Request request(formatid::Source::parts(parts, server.size()).named(name));
    const formatid::Result result = request.limits(kBudget).identify();
    if (!result.wantedRange().has_value() || bytes.back().empty()) return result;
    range = *result.wantedRange();
  }
}

// The same for a store that is read through a callback.
formatid::Result ByCallback(Server& server, const char* name) {
  const auto read = [&server](std::uint64_t offset, std::span<std::byte> buffer) {
    const std::string part = server.Get({offset, buffer.size()});
    std::copy_n(std::as_bytes(std::span(part)).begin(), part.size(), buffer.begin());
    return formatid::Read{part.size(), 0};
  };
  formatid::Request request(formatid::Source::reader(read, server.size()).named(name));
  return request.limits(kBudget).identify();
}

std::string_view Verdict(const formatid::Result& result) {
  constexpr std::string_view kRefused[] = {"executable", "script"};
  if (result.status() == kFiLimitReached) return "hold: too costly";
  if (result.status() == kFiPasswordNeeded) return "hold: encrypted";
  if (result.status() != kFiOk) return "hold";
  for (const std::string_view category : kRefused) {
    if (result.category() == category) return "refuse";
  }
  return result.extensionFits() == false ? "hold: misnamed" : "pass";
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    Server ranges(argv[i]);
    Server whole(argv[i]);
    if (!ranges.IsThere()) return 1;
    const formatid::Result result = ByRanges(ranges, argv[i]);
    if (ByCallback(whole, argv[i]).id() != result.id()) return 1;
    const std::string_view verdict = Verdict(result);
    std::printf("%.*s: %u %s (%llu of %llu bytes in %llu requests)\n",
                static_cast<int>(verdict.size()), verdict.data(), unsigned{result.id()},
                result.raw().name, static_cast<unsigned long long>(ranges.bytes()),
                static_cast<unsigned long long>(ranges.size()),
                static_cast<unsigned long long>(ranges.requests()));
  }
  return 0;
}
