#include "run/input/file_walk.h"

#include <fcntl.h>
#include <fnmatch.h>
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

bool MatchesOne(const std::vector<std::string>& patterns, const char* name, const char* path) {
  return std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
    const bool isForPath = pattern.find('/') != std::string::npos;
    return ::fnmatch(pattern.c_str(), isForPath ? path : name, isForPath ? FNM_PATHNAME : 0) == 0;
  });
}

}  // namespace

FileWalk::FileWalk(std::string_view root, const WalkOptions& options)
    : options_(options), path_(root), rootLength_(root.size()) {
  if (root.empty() || root.back() != '/') ++rootLength_;
}

FileWalk::Kind FileWalk::Examine(int directory, const char* name, bool follow) const {
  struct stat status;
  if (::fstatat(directory, name, &status, follow ? 0 : AT_SYMLINK_NOFOLLOW) != 0) {
    return kFile;  // opening it tells the reason
  }
  if (S_ISREG(status.st_mode)) return kFile;
  if (S_ISDIR(status.st_mode)) return kDirectory;
  if (S_ISLNK(status.st_mode) && options_.links == LinkUse::kAll)
    return Examine(directory, name, true);
  return kOther;
}

// Most file systems tell the type with the name, so that a file costs no call here.
FileWalk::Kind FileWalk::Classify(int directory, const dirent& entry) const {
  switch (entry.d_type) {
    case DT_REG:
      return kFile;
    case DT_DIR:
      return kDirectory;
    case DT_UNKNOWN:
      return Examine(directory, entry.d_name, false);
    case DT_LNK:
      return options_.links == LinkUse::kAll ? Examine(directory, entry.d_name, true) : kOther;
    default:
      return kOther;
  }
}

// The directory at path_ may be outside of what is asked for. Only followed links can lead back
// into a directory that is being walked.
bool FileWalk::IsPassedOver(int directory, Level& level) {
  const bool isRoot = levels_.empty();
  if (options_.links != LinkUse::kAll && !options_.isOneFileSystem) return false;
  struct stat status;
  if (::fstat(directory, &status) != 0) return false;
  level.device = status.st_dev;
  level.inode = status.st_ino;
  if (isRoot) rootDevice_ = status.st_dev;
  if (options_.isOneFileSystem && status.st_dev != rootDevice_) return true;
  const bool isLoop = std::any_of(levels_.begin(), levels_.end(), [&](const Level& outer) {
    return outer.device == level.device && outer.inode == level.inode;
  });
  if (isLoop) fault_ = "is a directory that contains itself";
  return isLoop;
}

bool FileWalk::IsWanted(const char* name, Kind kind) const {
  if (kind == kOther) return false;
  if (options_.include.empty() && options_.exclude.empty()) return true;
  std::string path;
  if (path_.size() > rootLength_) path = path_.substr(rootLength_) + '/';
  path += name;
  if (MatchesOne(options_.exclude, name, path.c_str())) return false;
  return kind == kDirectory || options_.include.empty() ||
         MatchesOne(options_.include, name, path.c_str());
}

// The outer levels leave less for the inner ones.
size_t FileWalk::NamesLimit() const {
  size_t held = 0;
  for (const Level& level : levels_) held += level.names.Footprint();
  return std::max(kLevelLimit, held < kNamesLimit ? kNamesLimit - held : 0);
}

void FileWalk::ReadEntries(DIR* directory, Level& level) {
  const int descriptor = ::dirfd(directory);
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(directory);
    if (entry == nullptr) break;
    if (IsSelfOrParent(entry->d_name)) continue;
    const Kind kind = Classify(descriptor, *entry);
    if (!IsWanted(entry->d_name, kind)) continue;
    if (!level.names.Add(kind, entry->d_name)) break;
  }
  // What was listed before a fault is walked all the same.
  if (errno != 0) fault_ = std::strerror(errno);
  if (!level.names.Finish()) fault_ = std::strerror(errno);
}

// The directory at path_; -1 with errno set.
int FileWalk::OpenDirectory() {
  const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  if (options_.links == LinkUse::kAll) return ::open(path_.c_str(), flags);
  if (directory_ != nullptr)
    return OpenBelow(directory_->get(), path_.c_str() + rootLength_, O_DIRECTORY);
  const int ofLinks = options_.links == LinkUse::kNone ? O_NOFOLLOW : 0;
  const int opened = ::open(path_.c_str(), flags | ofLinks);
  if (opened < 0) return -1;
  directory_ = std::make_shared<DirectoryDescriptor>(::dup(opened));
  return opened;
}

void FileWalk::Enter() {
  const int opened = OpenDirectory();
  const Directory directory(opened < 0 ? nullptr : ::fdopendir(opened));
  if (directory == nullptr) {
    fault_ = std::strerror(errno);
    if (opened >= 0) ::close(opened);
    return;
  }
  Level level(NamesLimit());
  if (IsPassedOver(opened, level)) return;
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
    char kind = kOther;
    const char* name = level.names.Next(kind);
    if (name == nullptr) {
      const int error = level.names.error();
      path_.resize(std::max<size_t>(level.pathLength, 2) - 1);
      levels_.pop_back();
      if (error == 0) continue;
      fault_ = std::strerror(error);
      return true;
    }
    // The slash behind the directory is there only after its first entry.
    path_.resize(level.pathLength, '/');
    path_ += name;
    if (kind == kFile) return true;
    Enter();
    if (!fault_.empty()) return true;
  }
  return false;
}

}  // namespace fi::app
