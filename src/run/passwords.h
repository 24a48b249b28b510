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

  // In the order of the lines. They go with this object.
  const std::vector<std::string_view>& lines() const { return lines_; }

 private:
  std::string Split(std::string_view text);

  std::unique_ptr<char[]> bytes_;
  std::vector<std::string_view> lines_;
};

// While it lives, the library finds passwords when it meets an encrypted document: those of the
// PasswordRounds of the calling thread. There is one at a time.
class PasswordAnswers {
 public:
  PasswordAnswers();
  PasswordAnswers(const PasswordAnswers&) = delete;
  PasswordAnswers& operator=(const PasswordAnswers&) = delete;
  ~PasswordAnswers();
};

// The passwords of one document. The library asks three times in one identification; each round
// gives it the next three. What is asked for in the thread that made the object is its to answer.
class PasswordRounds {
 public:
  // nullptr: there are none. Borrowed.
  explicit PasswordRounds(const Passwords* passwords);
  PasswordRounds(const PasswordRounds&) = delete;
  PasswordRounds& operator=(const PasswordRounds&) = delete;
  ~PasswordRounds();

  // Moves to the next round. False when there is no further password.
  bool Next();

  // Stores the password of attempt `attempt` (from 0) of this round, with a NUL behind it. False
  // when there is none or no room for it.
  bool Give(size_t attempt, char* buffer, size_t capacity);

  // Line of the password that was given last, from 1; 0: none was.
  uint32_t lastLine() const { return lastLine_; }

 private:
  static constexpr size_t kPerRound = 3;

  const Passwords* passwords_;
  size_t first_ = 0;  // of the round
  uint32_t lastLine_ = 0;
};

}  // namespace fi::app

#endif  // FI_RUN_PASSWORDS_H_
