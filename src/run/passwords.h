// Passwords for encrypted documents, and how the library gets them.
#ifndef FI_RUN_PASSWORDS_H_
#define FI_RUN_PASSWORDS_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "formatid/platform.h"

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

// While it lives, the library is given the passwords when it meets an encrypted document: the first
// one, and the next one each time it asks again. There is one at a time.
class PasswordAnswers {
 public:
  explicit PasswordAnswers(const Passwords& passwords);  // borrowed
  PasswordAnswers(const PasswordAnswers&) = delete;
  PasswordAnswers& operator=(const PasswordAnswers&) = delete;
  ~PasswordAnswers();

 private:
  // The library's global data points here, at the callback. It hands no context to the callback,
  // which finds its passwords by the same address.
  struct Slot {
    FIPasswordCallback callback;
    const Passwords* passwords;
  };

  static uint32_t Answer(uint32_t code, FIPasswordRequest* request, uintptr_t first,
                         uintptr_t second) noexcept;

  Slot slot_;
};

}  // namespace fi::app

#endif  // FI_RUN_PASSWORDS_H_
