// The properties of one file: what stands beside its format, each with the place it was read at.
#ifndef FI_PROPERTIES_RECORD_PROPERTY_SET_H_
#define FI_PROPERTIES_RECORD_PROPERTY_SET_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fi {

// In the order in which they are shown. docs/properties.md tells what each says, by family.
enum class Property : uint8_t {
  kVersion,
  kProfile,           // a conforming subset or a kind: "PDF/A-2b", "strict", "BWF"
  kEncryption,        // none, restricted, password, certificate or rights
  kEncryptionScheme,  // how: "AES-256", "ZipCrypto", "RC4 40-bit"
  kPermissions,       // what an owner's password withholds
  kCharset,
  kLineEnds,  // lf, crlf, cr, mixed or none
  kByteOrder,
  kMachine,
  kKind,
  kSigned,         // yes
  kMacros,         // yes
  kLinearized,     // yes
  kDamaged,        // what is missing
  kTrailingBytes,  // their number, in decimal
  kCount,
};
inline constexpr size_t kPropertyCount = static_cast<size_t>(Property::kCount);

// Its name in records: "version", "encryption_scheme" ...
std::string_view NameOf(Property property);

// A value of up to 63 characters of printable ASCII, NUL-terminated, and where it was read.
class PropertyValue {
 public:
  static constexpr int64_t kNoOffset = -1;

  bool IsSet() const { return isSet_; }
  const char* text() const { return text_.data(); }
  // The stream or member it was read in, or the structure: "xref", "docProps/app.xml".
  const char* place() const { return place_.data(); }
  // In bytes from the start of the file or of the place; kNoOffset where it is of no single place.
  int64_t offset() const { return offset_; }

 private:
  friend class PropertySet;

  bool isSet_ = false;
  int64_t offset_ = kNoOffset;
  std::array<char, 64> text_{};
  std::array<char, 48> place_{};
};

class PropertySet {
 public:
  // Sets a property that is not set yet: the first place that tells it counts. What is longer is
  // cut, and a character that is not printable ASCII becomes "?", for values come out of the file.
  // An empty value sets nothing.
  void Set(Property property, std::string_view value, std::string_view place = {},
           int64_t offset = PropertyValue::kNoOffset);

  // The same in the place of an earlier value.
  void Replace(Property property, std::string_view value, std::string_view place = {},
               int64_t offset = PropertyValue::kNoOffset);

  // As Set, in decimal.
  void SetNumber(Property property, uint64_t value, std::string_view place = {},
                 int64_t offset = PropertyValue::kNoOffset);

  const PropertyValue& operator[](Property property) const {
    return values_[static_cast<size_t>(property)];
  }
  bool Has(Property property) const { return (*this)[property].IsSet(); }
  bool Is(Property property, std::string_view value) const {
    return Has(property) && (*this)[property].text() == value;
  }

 private:
  std::array<PropertyValue, kPropertyCount> values_;
};

}  // namespace fi

#endif  // FI_PROPERTIES_RECORD_PROPERTY_SET_H_
