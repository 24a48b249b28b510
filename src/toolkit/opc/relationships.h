// The relationships of a package or a part: the elements "Relationship" of a document, whatever
// their namespace, by their attributes Id, Type and Target.
#ifndef FI_TOOLKIT_OPC_RELATIONSHIPS_H_
#define FI_TOOLKIT_OPC_RELATIONSHIPS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "formatid/io.h"
#include "toolkit/memory/growing_array.h"

namespace fi::xml {
class PullParser;
}

namespace fi::opc {

class Relationships {
 public:
  struct Entry {
    std::u16string_view id;
    std::u16string_view target;  // as written
    bool isExternal;
  };

  // Reads the document. Those that stand before a fault, or fit into memory and limits, count.
  // To be called once.
  void Read(IOHandle* document);

  // The first one of that type or Id, compared exactly. False when there is none. The views are as
  // long valid as this object, and a NUL stands behind each.
  bool FindByType(std::string_view type, Entry* entry) const;
  bool FindById(std::u16string_view id, Entry* entry) const;

 private:
  // Places in `types_` and `text_`, where the target stands behind the Id.
  struct Record {
    uint32_t typeAt;
    uint32_t typeSize;
    uint32_t idAt;
    uint32_t idLength;
    uint32_t targetLength;
    bool isExternal;
  };

  bool Add(xml::PullParser& element);
  bool AddText(std::string_view text, uint32_t* length);
  Entry EntryOf(const Record& record) const;

  bool noMemory_ = false;
  GrowingArray<Record> records_;
  GrowingArray<char> types_;
  GrowingArray<char16_t> text_;
};

}  // namespace fi::opc

#endif  // FI_TOOLKIT_OPC_RELATIONSHIPS_H_
