// The files below a directory, in an order that does not depend on the file system.
#ifndef FI_RUN_INPUT_FILE_WALK_H_
#define FI_RUN_INPUT_FILE_WALK_H_

#include <dirent.h>
#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "run/input/link_use.h"
#include "run/input/open_below.h"
#include "run/input/sorted_names.h"

namespace fi::app {

struct WalkOptions {
  LinkUse links = LinkUse::kArguments;
  bool isOneFileSystem = false;  // directories of other file systems are passed over
  // Shell patterns, for the name or, with a slash in them, for the path below the root. Files pass
  // when one of `include` matches, or when there is none; what `exclude` matches is passed over,
  // and a directory with all below it.
  std::vector<std::string> include;
  std::vector<std::string> exclude;
};

// Walks depth first; the entries of a directory come sorted by their bytes. The root alone stays
// open. The depth is bounded by the length that the system allows a path, and the memory for names
// by kNamesLimit and, beyond it, kLevelLimit for each level.
//
// Regular files are delivered. Fifos, sockets and devices are passed over, and so are links. With
// LinkUse::kAll a link counts as its target, and a link without a target is delivered. In the other
// two modes no link is entered, not even a link made just before the opening.
class FileWalk {
 public:
  static constexpr size_t kNamesLimit = size_t{4} << 20;
  static constexpr size_t kLevelLimit = size_t{64} << 10;

  // `options` is borrowed.
  FileWalk(std::string_view root, const WalkOptions& options);

  // Moves to the next file, or to a directory that cannot be read. False at the end.
  bool Next();

  const std::string& path() const { return path_; }

  // Why the directory at path() cannot be read; empty when path() is a file.
  const std::string& fault() const { return fault_; }

  // The directory to open the file from, and where in path() the relative path begins. Without a
  // directory (LinkUse::kAll) the file is opened by path().
  const SharedDirectory& directory() const { return directory_; }
  size_t rootLength() const { return rootLength_; }

 private:
  enum Kind : char { kFile = 'f', kDirectory = 'd', kOther = 'o' };

  struct Level {
    explicit Level(size_t limit) : names(limit) {}
    size_t pathLength = 0;  // of the directory, with the slash behind it
    SortedNames names;
    dev_t device = 0;
    ino_t inode = 0;
  };

  // Reads the directory at path_ and makes it the innermost level.
  void Enter();
  int OpenDirectory();
  bool IsPassedOver(int directory, Level& level);
  bool IsWanted(const char* name, Kind kind) const;
  size_t NamesLimit() const;
  void ReadEntries(DIR* directory, Level& level);
  Kind Classify(int directory, const dirent& entry) const;
  Kind Examine(int directory, const char* name, bool follow) const;

  const WalkOptions& options_;
  std::string path_;
  std::string fault_;
  SharedDirectory directory_;
  size_t rootLength_;
  dev_t rootDevice_ = 0;
  std::vector<Level> levels_;
  bool isStarted_ = false;
};

}  // namespace fi::app

#endif  // FI_RUN_INPUT_FILE_WALK_H_
