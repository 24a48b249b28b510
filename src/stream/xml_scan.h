// Steps that the probes of packages share when they read XML.
#ifndef FI_STREAM_XML_SCAN_H_
#define FI_STREAM_XML_SCAN_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/xml.h"

namespace fi {

// Registers the names under the namespace, whose attributes are asked for by `attributeNumber`.
template <size_t count>
bool AddTagMap(UTXMLReader* reader, const char* namespaceUri, uint32_t number,
               const UTXMLTagName (&names)[count], uint32_t attributeNumber = 0) {
  return UTXMLAddTagMap(reader, namespaceUri, number, attributeNumber, names,
                        static_cast<uint32_t>(count)) == kXmlOk;
}

// Sets what the readers of other toolkits are told before manifests and sheets; ours accepts every
// option.
inline void SetPackageOption(UTXMLReader* reader) { (void)UTXMLSetOption(reader, 1, 1); }

// Advances to the next start or end of an element, over what is neither. False when there is none.
inline bool NextElement(UTXMLReader* reader, UTXMLTag* tag) {
  int32_t result = kXmlNoElement;
  while (result == kXmlNoElement) result = UTXMLReadNextTag(reader, tag, nullptr);
  return result == kXmlOk;
}

inline bool IsEndTag(const UTXMLTag& tag) { return (tag.flags & kXmlEndTag) != 0; }

// The value of an attribute, terminated by 0, until the reader advances; no data when the current
// start tag has none of that name.
inline std::u16string_view Attribute(UTXMLReader* reader, const char* name,
                                     uint32_t attributeNumber = 0) {
  const char16_t* value = nullptr;
  uint32_t length = 0;
  if (UTXMLGetAttribute(reader, attributeNumber, name, &value, &length) != kXmlOk) return {};
  return {value, length};
}

// Whether a terminated text begins with `prefix`, which is a literal.
inline bool BeginsWith(const char16_t* text, std::string_view prefix) {
  return UTwsstrncmp(text, prefix.data(), static_cast<uint32_t>(prefix.size())) == 0;
}

inline char16_t FoldCase(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

// The same, ASCII letters compared without regard to case.
inline bool BeginsWithAnyCase(const char16_t* text, std::string_view prefix) {
  for (const char c : prefix) {
    if (FoldCase(*text++) != FoldCase(static_cast<unsigned char>(c))) return false;
  }
  return true;
}

}  // namespace fi

#endif  // FI_STREAM_XML_SCAN_H_
