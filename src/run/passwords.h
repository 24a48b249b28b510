// Passwords for encrypted documents, and how the library gets them.
#ifndef FI_RUN_PASSWORDS_H_
#define FI_RUN_PASSWORDS_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fi::app {

// Passwords in one block of memory that is wiped when they go, and never moves before.
class Passwords {
 public:
  static constexpr size_t kMostPasswords = 1000;
  static constexpr size_t kMostBytes = size_t{64} << 10;  // with line ends
  static constexpr size_t kLongestPassword = 1023;        // what the library's buffer holds

  Passwords() = default;
  Passwords(const Passwords&) = delete;
  Passwords& operator=(const Passwords&) = delete;
  ~Passwords();

  // Read one password a line to the end of the input. False, with a reason in `error` that tells
  // nothing of the content, when it cannot be read, holds none or goes beyond a limit. The
  // descriptor is borrowed.
  // REQUIRES: nothing was read before.
  bool ReadDescriptor(int descriptor, std::string& error);
  bool ReadFile(const std::string& path, std::string& error);

  // Adds the password that a workbook carries which is protected against writing only: whoever
  // opens it is not asked.
  void AddDefault();
  bool IsDefault(size_t index) const { return hasDefault_ && index + 1 == lines_.size(); }

  // In the order of the lines. They go with this object.
  const std::vector<std::string_view>& lines() const { return lines_; }

 private:
  std::string Split(std::string_view text);

  std::unique_ptr<char[]> bytes_;
  std::vector<std::string_view> lines_;
  bool hasDefault_ = false;
};

// The passwords of one document. The library asks three times in one identification; each round
// gives it the next three.
class PasswordRounds {
 public:
  // nullptr: there are none. Borrowed.
  explicit PasswordRounds(const Passwords* passwords) : passwords_(passwords) {}

  // Moves to the next round. False when there is no further password.
  bool Next();

  // Stores the password of attempt `attempt` (from 0) of this round, with a NUL behind it. False
  // when there is none or no room for it.
  bool Give(size_t attempt, char* buffer, size_t capacity);

  // Line of the password that was given last, from 1; 0: the default password; -1: none was.
  int32_t lastLine() const { return lastLine_; }

  static constexpr size_t kPerRound = 3;

 private:
  const Passwords* passwords_;
  size_t first_ = 0;  // of the round
  int32_t lastLine_ = -1;
};

}  // namespace fi::app

#endif  // FI_RUN_PASSWORDS_H_
