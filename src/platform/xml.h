// The XML pull reader and the comparisons of its 16-bit strings. Strings are UTF-16 in host order,
// terminated by 0; lengths count characters without the terminator.
//
// A reader knows the elements that tag maps name. It delivers the starts and ends of all elements;
// nothing is expanded beyond the five entities that XML itself has, a document with declarations of
// its own counts as faulty, and what stood before a fault is delivered before the fault.
#ifndef FI_PLATFORM_XML_H_
#define FI_PLATFORM_XML_H_

#include <cstdint>

#include "formatid/io.h"

extern "C" {

// Results of the reader.
enum {
  kXmlOk = 0,
  kXmlNoElement = 101,  // something that is no element (a processing instruction, a comment) was
                        // passed: reading goes on. Readers of other toolkits answer it
  kXmlEndOfData = -1,   // the document has ended
  kXmlMalformed = -2,   // a fault in the document, or a limit reached
  kXmlFailure = -3,     // the reader was not set up, or there is no memory
};

// Of UTXMLTag::flags.
constexpr uint32_t kXmlEndTag = 0x1000;

// Of UTXMLFindStringInMap.
constexpr uint16_t kXmlNotInMap = 0xFFFF;

// Bytes of a document that a reader reads at most: what stands behind them is as if it were not
// there.
constexpr uint32_t kXmlMaxDocument = 64 << 20;

struct UTXMLTagName {
  uint32_t id;            // not 0
  const char* localName;  // borrowed for the life of the reader
};

struct UTXMLTag {
  uint32_t id;               // of the tag map; 0: no map names this element
  uint32_t flags;            // kXmlEndTag
  uint32_t namespaceNumber;  // both as given with the map; 0 without one
  uint32_t attributeNamespaceNumber;
};

struct UTXMLStringValue {
  uint32_t value;
  const char* name;
};

// State of a reader; zeroed before UTXMLInit.
struct UTXMLReader {
  void* state;
};

// Starts to read `handle` from its current position. The handle is borrowed.
int32_t UTXMLInit(UTXMLReader* reader, IOHandle* handle) noexcept;

// Releases the reader; one that was never started, or is already released, is left alone.
void UTXMLDeInit(UTXMLReader* reader) noexcept;

// Registers the local names of a namespace ("": none). A namespace may be registered several times;
// the first map that holds a name decides. At most 8 maps; `names` is borrowed.
int32_t UTXMLAddTagMap(UTXMLReader* reader, const char* namespaceUri, uint32_t namespaceNumber,
                       uint32_t attributeNamespaceNumber, const UTXMLTagName* names,
                       uint32_t count) noexcept;

// Accepts every option; none changes what this reader does.
int32_t UTXMLSetOption(UTXMLReader* reader, uint32_t option, uint32_t value) noexcept;

// Advances to the next start or end of an element. `workArea` is reserved: null.
int32_t UTXMLReadNextTag(UTXMLReader* reader, UTXMLTag* tag, void* workArea) noexcept;

// The first attribute of that local name, in any namespace, of the current start tag. `*value` is
// valid until the next call of UTXMLReadNextTag. Returns 0 when it exists.
int32_t UTXMLGetAttribute(UTXMLReader* reader, uint32_t attributeNamespaceNumber,
                          const char* localName, const char16_t** value, uint32_t* length) noexcept;

// Copies the character data between the current tag and the next one, up to `capacity` characters,
// not terminated. `mode` is reserved: 1. Returns 0, without such data too; data in which a fault
// stands may be cut before it.
int32_t UTXMLReadContent(UTXMLReader* reader, uint32_t mode, char16_t* buffer, uint32_t capacity,
                         uint32_t* length) noexcept;

// The number that the leading decimal digits give, modulo 2^32; 0 without a digit. `*end`, where
// `end` is not null, is the first character behind them. Returns 0.
int32_t UTXMLGetDecDWord(const char16_t* text, uint32_t* value, const char16_t** end) noexcept;

// The index of the entry of that name, whose value goes to `*value`; kXmlNotInMap without one.
uint16_t UTXMLFindStringInMap(const char16_t* text, const UTXMLStringValue* map, uint32_t count,
                              uint32_t* value) noexcept;

// Compare a wide string with a narrow one byte for character, whole or in their first `count`
// characters: 0 when equal, else the sign of the first difference.
int32_t UTwsstrcmp(const char16_t* wide, const char* narrow) noexcept;
int32_t UTwsstrncmp(const char16_t* wide, const char* narrow, uint32_t count) noexcept;

}  // extern "C"

namespace fi::xml {

// A reader for a scope. The handle is borrowed and outlives it.
class ScopedReader {
 public:
  explicit ScopedReader(IOHandle* handle) : started_(UTXMLInit(&reader_, handle) == kXmlOk) {}
  ~ScopedReader() { UTXMLDeInit(&reader_); }
  ScopedReader(const ScopedReader&) = delete;
  ScopedReader& operator=(const ScopedReader&) = delete;

  explicit operator bool() const { return started_; }
  UTXMLReader* get() { return &reader_; }

 private:
  UTXMLReader reader_{};
  bool started_;
};

}  // namespace fi::xml

#endif  // FI_PLATFORM_XML_H_
