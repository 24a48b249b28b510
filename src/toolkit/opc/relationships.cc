#include "toolkit/opc/relationships.h"

#include <optional>

#include "platform/work.h"
#include "toolkit/opc/limits.h"
#include "toolkit/text/utf16.h"
#include "toolkit/xml/pull_parser.h"

namespace fi::opc {
namespace {

// A target's length is handed out in 16 bits.
constexpr size_t kMaxTarget = 0xFFFF;

}  // namespace

void Relationships::Read(IOHandle* document) {
  xml::PullParser parser(document);
  while (parser.Next() == xml::PullParser::Result::kTag) {
    if (parser.isEnd() || parser.localName() != "Relationship") continue;
    if (!Add(parser)) break;
  }
  if (noMemory_) NoteNoMemory(document);
}

// False when nothing more can be kept.
bool Relationships::Add(xml::PullParser& element) {
  const std::optional<std::string_view> type = element.Attribute("Type");
  const std::optional<std::string_view> target = element.Attribute("Target");
  if (!type.has_value() || !target.has_value() || target->size() > kMaxTarget) return true;
  const std::string_view id = element.Attribute("Id").value_or(std::string_view());

  Record record{};
  record.typeAt = static_cast<uint32_t>(types_.size());
  record.typeSize = static_cast<uint32_t>(type->size());
  record.idAt = static_cast<uint32_t>(text_.size());
  record.isExternal = element.Attribute("TargetMode") == "External";
  if (type->size() > kMaxRelationshipText - types_.size()) return false;
  noMemory_ = !types_.Append(type->data(), type->size());
  return !noMemory_ && AddText(id, &record.idLength) && AddText(*target, &record.targetLength) &&
         !(noMemory_ = !records_.Append(record));
}

bool Relationships::AddText(std::string_view text, uint32_t* length) {
  const size_t at = text_.size();
  if (text.size() >= kMaxRelationshipText - at) return false;
  noMemory_ = !text_.Resize(at + text.size() + 1);
  if (noMemory_) return false;
  const size_t units = WidenUtf8(text, text_.data() + at, text.size());
  text_[at + units] = 0;
  *length = static_cast<uint32_t>(units);
  return text_.Resize(at + units + 1);
}

Relationships::Entry Relationships::EntryOf(const Record& record) const {
  const char16_t* const id = text_.data() + record.idAt;
  return {
      {id, record.idLength}, {id + record.idLength + 1, record.targetLength}, record.isExternal};
}

bool Relationships::FindByType(std::string_view type, Entry* entry) const {
  for (const Record& record : records_) {
    if (std::string_view(types_.data() + record.typeAt, record.typeSize) != type) continue;
    *entry = EntryOf(record);
    return true;
  }
  return false;
}

bool Relationships::FindById(std::u16string_view id, Entry* entry) const {
  for (const Record& record : records_) {
    const Entry candidate = EntryOf(record);
    if (candidate.id != id) continue;
    *entry = candidate;
    return true;
  }
  return false;
}

}  // namespace fi::opc
