// The files below a directory, in an order that does not depend on the file system.
#ifndef FI_RUN_FILE_WALK_H_
#define FI_RUN_FILE_WALK_H_

#include <dirent.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "run/identify.h"

namespace fi::app {

// Walks depth first; the entries of a directory come sorted by their bytes. No directory stays
// open. The depth is bounded by the length that the system allows a path.
//
// Regular files are delivered. Fifos, sockets and devices are passed over, and so are links, except
// that with LinkUse::kAll a link counts as what it leads to (and is delivered where it leads
// nowhere).
class FileWalk {
 public:
  FileWalk(std::string_view root, LinkUse links);

  // Moves to the next file, or to a directory that cannot be read. False at the end.
  bool Next();

  const std::string& path() const { return path_; }

  // Why the directory at path() cannot be read; empty when path() is a file.
  const std::string& fault() const { return fault_; }

 private:
  enum class Kind : uint8_t { kFile, kDirectory, kOther };

  struct Entry {
    size_t name;  // offset of the NUL-terminated name in Level::names
    Kind kind;
  };

  struct Level {
    size_t pathLength;  // of the directory, with the slash behind it
    std::string names;
    std::vector<Entry> entries;
    size_t next = 0;
    dev_t device = 0;
    ino_t inode = 0;
  };

  // Reads the directory at path_ and makes it the innermost level.
  void Enter();
  bool IsLoop(int directory, Level& level) const;
  void ReadEntries(DIR* directory, Level& level);
  Kind Classify(int directory, const dirent& entry) const;
  Kind Examine(int directory, const char* name, bool follow) const;

  LinkUse links_;
  std::string path_;
  std::string fault_;
  std::vector<Level> levels_;
  bool isStarted_ = false;
};

}  // namespace fi::app

#endif  // FI_RUN_FILE_WALK_H_
