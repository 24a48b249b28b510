// The first bytes of a member of a package, for a look at what a document says of itself.
#ifndef FI_PROPERTIES_PACKAGE_MEMBER_TEXT_H_
#define FI_PROPERTIES_PACKAGE_MEMBER_TEXT_H_

#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>

#include "formatid/io.h"
#include "platform/io.h"
#include "stream/package_member.h"

namespace fi {

class MemberText {
 public:
  static constexpr size_t kCapacity = 32 * 1024;  // bytes

  // Empty when there is no member of that name, or memory runs out.
  MemberText(IOHandle* package, std::string_view path) {
    const io::OwnedHandle member = OpenMember(package, path);
    if (member == nullptr) return;
    bytes_.reset(new (std::nothrow) std::array<uint8_t, kCapacity>);
    if (bytes_ != nullptr) size_ = io::ReadFully(member.get(), bytes_->data(), kCapacity);
  }

  std::string_view View() const {
    return bytes_ == nullptr
               ? std::string_view()
               : std::string_view(reinterpret_cast<const char*>(bytes_->data()), size_);
  }
  explicit operator bool() const { return size_ > 0; }

 private:
  std::unique_ptr<std::array<uint8_t, kCapacity>> bytes_;
  size_t size_ = 0;
};

// What stands between `before` and the next `after`; empty where either is missing.
inline std::string_view Between(std::string_view text, std::string_view before,
                                std::string_view after) {
  const size_t at = text.find(before);
  if (at == std::string_view::npos) return {};
  const std::string_view rest = text.substr(at + before.size());
  const size_t end = rest.find(after);
  return end == std::string_view::npos ? std::string_view() : rest.substr(0, end);
}

}  // namespace fi

#endif  // FI_PROPERTIES_PACKAGE_MEMBER_TEXT_H_
