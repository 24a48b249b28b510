#include "run/file_walk.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

namespace fi::app {
namespace {

struct DirectoryCloser {
  void operator()(DIR* directory) const { (void)::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, DirectoryCloser>;

bool IsSelfOrParent(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

}  // namespace

FileWalk::FileWalk(std::string_view root, LinkUse links) : links_(links), path_(root) {}

FileWalk::Kind FileWalk::Examine(int directory, const char* name, bool follow) const {
  struct stat status;
  if (::fstatat(directory, name, &status, follow ? 0 : AT_SYMLINK_NOFOLLOW) != 0) {
    return Kind::kFile;  // opening it tells the reason
  }
  if (S_ISREG(status.st_mode)) return Kind::kFile;
  if (S_ISDIR(status.st_mode)) return Kind::kDirectory;
  if (S_ISLNK(status.st_mode) && links_ == LinkUse::kAll) return Examine(directory, name, true);
  return Kind::kOther;
}

// Most file systems tell the type with the name, so that a file costs no call here.
FileWalk::Kind FileWalk::Classify(int directory, const dirent& entry) const {
  switch (entry.d_type) {
    case DT_REG:
      return Kind::kFile;
    case DT_DIR:
      return Kind::kDirectory;
    case DT_UNKNOWN:
      return Examine(directory, entry.d_name, false);
    case DT_LNK:
      return links_ == LinkUse::kAll ? Examine(directory, entry.d_name, true) : Kind::kOther;
    default:
      return Kind::kOther;
  }
}

// Only followed links can lead back into a directory that is being walked.
bool FileWalk::IsLoop(int directory, Level& level) const {
  struct stat status;
  if (links_ != LinkUse::kAll || ::fstat(directory, &status) != 0) return false;
  level.device = status.st_dev;
  level.inode = status.st_ino;
  return std::any_of(levels_.begin(), levels_.end(), [&](const Level& outer) {
    return outer.device == level.device && outer.inode == level.inode;
  });
}

void FileWalk::ReadEntries(DIR* directory, Level& level) {
  const int descriptor = ::dirfd(directory);
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(directory);
    if (entry == nullptr) break;
    if (IsSelfOrParent(entry->d_name)) continue;
    const Kind kind = Classify(descriptor, *entry);
    if (kind == Kind::kOther) continue;
    level.entries.push_back({level.names.size(), kind});
    level.names.append(entry->d_name, std::strlen(entry->d_name) + 1);
  }
  // What was listed before a fault is walked all the same.
  if (errno != 0) fault_ = std::strerror(errno);
  std::sort(level.entries.begin(), level.entries.end(), [&](const Entry& a, const Entry& b) {
    return std::strcmp(&level.names[a.name], &level.names[b.name]) < 0;
  });
}

void FileWalk::Enter() {
  const Directory directory(::opendir(path_.c_str()));
  if (directory == nullptr) {
    fault_ = std::strerror(errno);
    return;
  }
  Level level;
  if (IsLoop(::dirfd(directory.get()), level)) {
    fault_ = "is a directory that contains itself";
    return;
  }
  ReadEntries(directory.get(), level);
  level.pathLength = path_.size();
  if (path_.empty() || path_.back() != '/') ++level.pathLength;
  levels_.push_back(std::move(level));
}

bool FileWalk::Next() {
  fault_.clear();
  if (!std::exchange(isStarted_, true)) {
    Enter();
    if (!fault_.empty()) return true;
  }
  while (!levels_.empty()) {
    Level& level = levels_.back();
    if (level.next == level.entries.size()) {
      levels_.pop_back();
      continue;
    }
    const Entry& entry = level.entries[level.next++];
    // The slash behind the directory is there only after its first entry.
    path_.resize(level.pathLength, '/');
    path_ += &level.names[entry.name];
    if (entry.kind == Kind::kFile) return true;
    Enter();
    if (!fault_.empty()) return true;
  }
  return false;
}

}  // namespace fi::app
