// Names of parts, and where references lead. A name here is that of the ZIP member: without the "/"
// that part names begin with. The package itself, as the source of relationships, has the empty
// name.
#ifndef FI_TOOLKIT_OPC_PART_NAME_H_
#define FI_TOOLKIT_OPC_PART_NAME_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "formatid/io.h"

namespace fi::opc {

// What fits into the path of an IOMemberSource.
class PartName {
 public:
  static constexpr size_t kMost = kIoMemberPathCapacity - 1;

  std::string_view view() const { return {bytes_.data(), size_}; }

  // False, and nothing changes, when there is no room, or the text holds a NUL.
  bool Append(std::string_view text) {
    if (text.size() > kMost - size_ || text.find('\0') != std::string_view::npos) return false;
    std::copy(text.begin(), text.end(), bytes_.data() + size_);
    size_ += text.size();
    return true;
  }

  // REQUIRES: size <= view().size().
  void Cut(size_t size) { size_ = size; }

 private:
  std::array<char, kMost> bytes_;
  size_t size_ = 0;
};

enum class Escapes { kAsWritten, kDecoded };

// Where `reference` leads from the part `source`, as a relative reference (RFC 3986). False when it
// leads out of the package: it has a scheme or an authority. A ".." above the root stays there. A
// query and a fragment are left out. Percent escapes stay as they are, or become the bytes they
// stand for. REQUIRES: *target is empty.
bool ResolveReference(std::string_view source, std::string_view reference, Escapes escapes,
                      PartName* target);

// The part that holds the relationships of `source`. False when its name is too long.
// REQUIRES: *part is empty.
bool RelationshipsPart(std::string_view source, PartName* part);

}  // namespace fi::opc

#endif  // FI_TOOLKIT_OPC_PART_NAME_H_
