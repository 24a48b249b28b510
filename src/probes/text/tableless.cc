#include "probes/text/tableless.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint32_t kMostLines = 64;

constexpr std::string_view kDirectives[] = {"include ", "include\t", "define ", "define\t",
                                            "ifndef ",  "ifdef ",    "pragma ", "if "};

constexpr std::string_view kFileSystems[] = {
    "auto", "autofs", "btrfs", "cgroup",  "cifs",  "devpts", "exfat",   "ext2", "ext3",
    "ext4", "f2fs",   "fuse",  "iso9660", "jfs",   "nfs",    "nfs4",    "none", "ntfs",
    "proc", "rootfs", "swap",  "sysfs",   "tmpfs", "udf",    "overlay", "vfat", "xfs"};

// The fields of a line that blanks divide.
constexpr size_t kFields = 4;
size_t SplitAtBlanks(std::string_view line, std::array<std::string_view, kFields>& fields) {
  size_t count = 0;
  while (count < kFields) {
    line = TrimBlanks(line);
    if (line.empty()) break;
    const size_t end = std::min(line.find_first_of(" \t"), line.size());
    fields[count++] = line.substr(0, end);
    line.remove_prefix(end);
  }
  return count;
}

bool IsDirective(std::string_view line) {
  if (!line.starts_with('#')) return false;
  line = TrimBlanks(line.substr(1));
  const auto begins = [line](std::string_view word) { return line.starts_with(word); };
  return std::any_of(std::begin(kDirectives), std::end(kDirectives), begins);
}

// The line that every table of hosts has.
bool IsLocalHost(std::string_view line) {
  std::array<std::string_view, kFields> fields;
  return SplitAtBlanks(line, fields) >= 2 && (fields[0] == "127.0.0.1" || fields[0] == "::1") &&
         fields[1].find("localhost") != std::string_view::npos;
}

// Device, where it is mounted, kind of file system, options.
bool IsMount(std::string_view line) {
  std::array<std::string_view, kFields> fields;
  if (SplitAtBlanks(line, fields) < kFields) return false;
  const bool hasPlace = fields[1].starts_with('/') || fields[1] == "none" || fields[1] == "swap";
  return hasPlace && std::find(std::begin(kFileSystems), std::end(kFileSystems), fields[2]) !=
                         std::end(kFileSystems);
}

}  // namespace

bool IsNoTable(std::string_view text) {
  Lines lines(text);
  std::string_view line;
  uint32_t mounts = 0;
  uint32_t others = 0;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    if (IsDirective(line) || IsLocalHost(line)) return true;
    line = TrimBlanks(line);
    if (line.empty() || line[0] == '#') continue;
    ++(IsMount(line) ? mounts : others);
  }
  return mounts > 0 && others == 0;
}

}  // namespace fi
