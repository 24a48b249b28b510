#include "run/passwords.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace fi::app {
namespace {

constexpr size_t kRoom = Passwords::kMostBytes + 1;  // one more tells what is too large

// Published as the password of such workbooks.
constexpr std::string_view kDefaultPassword = "VelvetSweatshop";

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Reads to the end of the input or of the room. False, with errno set, when it cannot be read.
bool Fill(int descriptor, char* buffer, size_t& filled) {
  while (filled < kRoom) {
    const ssize_t count = ::read(descriptor, buffer + filled, kRoom - filled);
    if (count == 0) break;
    if (count > 0) {
      filled += static_cast<size_t>(count);
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace

Passwords::~Passwords() {
  if (bytes_ != nullptr) ::explicit_bzero(bytes_.get(), kRoom);
}

// Returns the fault, or nothing.
std::string Passwords::Split(std::string_view text) {
  if (text.size() > kMostBytes) return "holds more than 64 KB of passwords";
  // Text in UTF-16 would otherwise pass as passwords of one character.
  if (text.find('\0') != std::string_view::npos) return "holds a NUL byte (not text in UTF-8)";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  while (!text.empty()) {
    if (lines_.size() == kMostPasswords) return "holds more than 1,000 passwords";
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    if (line.size() > kLongestPassword) return "holds a password of more than 1,023 bytes";
    lines_.push_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines_.empty() ? "holds no password" : "";
}

bool Passwords::ReadDescriptor(int descriptor, std::string& error) {
  bytes_ = std::make_unique<char[]>(kRoom);
  size_t filled = 0;
  error = Fill(descriptor, bytes_.get(), filled) ? Split({bytes_.get(), filled})
                                                 : std::string(::strerror(errno));
  return error.empty();
}

bool Passwords::ReadFile(const std::string& path, std::string& error) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor < 0) {
    error = ::strerror(errno);
    return false;
  }
  const bool read = ReadDescriptor(descriptor, error);
  ::close(descriptor);
  return read;
}

void Passwords::AddDefault() {
  lines_.push_back(kDefaultPassword);
  hasDefault_ = true;
}

bool PasswordRounds::Next() {
  if (passwords_ == nullptr || passwords_->lines().size() - first_ <= kPerRound) return false;
  first_ += kPerRound;
  return true;
}

bool PasswordRounds::Give(size_t attempt, char* buffer, size_t capacity) {
  const std::vector<std::string_view>& lines = passwords_->lines();
  if (attempt >= kPerRound || attempt >= lines.size() - first_) return false;
  const std::string_view password = lines[first_ + attempt];
  if (password.size() >= capacity) return false;
  *std::copy(password.begin(), password.end(), buffer) = '\0';
  const size_t index = first_ + attempt;
  lastLine_ = passwords_->IsDefault(index) ? 0 : static_cast<int32_t>(index + 1);
  return true;
}

}  // namespace fi::app
