#include <cstdint>

#include "platform/xml.h"

int32_t UTXMLGetDecDWord(const char16_t* text, uint32_t* value, const char16_t** end) noexcept {
  uint32_t number = 0;
  for (; *text >= u'0' && *text <= u'9'; ++text) number = number * 10 + (*text - u'0');
  *value = number;
  if (end != nullptr) *end = text;
  return kXmlOk;
}

uint16_t UTXMLFindStringInMap(const char16_t* text, const UTXMLStringValue* map, uint32_t count,
                              uint32_t* value) noexcept {
  for (uint32_t i = 0; i < count && i < kXmlNotInMap; ++i) {
    if (UTwsstrcmp(text, map[i].name) != 0) continue;
    *value = map[i].value;
    return static_cast<uint16_t>(i);
  }
  return kXmlNotInMap;
}

int32_t UTwsstrcmp(const char16_t* wide, const char* narrow) noexcept {
  return UTwsstrncmp(wide, narrow, UINT32_MAX);
}

int32_t UTwsstrncmp(const char16_t* wide, const char* narrow, uint32_t count) noexcept {
  for (; count > 0; --count, ++wide, ++narrow) {
    const auto byte = static_cast<unsigned char>(*narrow);
    if (*wide != byte) return *wide < byte ? -1 : 1;
    if (byte == 0) break;
  }
  return 0;
}
