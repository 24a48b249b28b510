#include "toolkit/xml/expat_parser.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "platform/io.h"
#include "platform/work.h"

namespace fi::xml {
namespace {

// Between a namespace and a local name. Neither holds one: Expat refuses such a namespace.
constexpr char kSeparator = '\n';

// Expat would ask the system for random numbers. To keep a document from choosing names that
// collide in its tables, a number that is unknown outside of the process is enough: places in
// memory.
unsigned long Salt(const void* here) {
  constexpr unsigned long kOdd = 0x9E3779B1;
  const auto place = reinterpret_cast<uintptr_t>(here);
  const auto stack = reinterpret_cast<uintptr_t>(&here);
  return static_cast<unsigned long>(place * kOdd ^ stack) | 1;  // 0 would count as none
}

// Expat overlooks some failing allocations, and goes on as if a name were not there. Whether one
// has failed in this thread since that was last asked.
thread_local bool allocationFailed = false;

void* Checked(void* block) {
  if (block == nullptr) allocationFailed = true;
  return block;
}

void* Allocate(size_t size) { return Checked(std::malloc(size)); }
void* Reallocate(void* block, size_t size) { return Checked(std::realloc(block, size)); }

constexpr XML_Memory_Handling_Suite kMemory = {Allocate, Reallocate, std::free};

XML_Parser NewParser() {
  const XML_Char separator[] = {kSeparator, '\0'};
  return XML_ParserCreate_MM(nullptr, &kMemory, separator);
}

// The name that some writers give UTF-8.
bool IsUtf8Name(std::string_view name) {
  return name.size() == 4 && (name[0] | 0x20) == 'u' && (name[1] | 0x20) == 't' &&
         (name[2] | 0x20) == 'f' && name[3] == '8';
}

// The character of two to four bytes, -1 when they are none. An XML_Encoding's function.
int DecodeUtf8(void* /*data*/, const char* bytes) {
  const auto lead = static_cast<uint8_t>(bytes[0]);
  const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  int character = lead & (0x3F >> more);
  for (int i = 1; i <= more; ++i) {
    const auto byte = static_cast<uint8_t>(bytes[i]);
    if ((byte & 0xC0) != 0x80) return -1;
    character = character << 6 | (byte & 0x3F);
  }
  constexpr int kLeast[] = {0, 0x80, 0x800, 0x10000};
  return character < kLeast[more] ? -1 : character;
}

size_t LocalNameAt(std::string_view name) { return name.rfind(kSeparator) + 1; }

}  // namespace

ExpatParser::ExpatParser(std::string_view before, IOHandle* handle, uint32_t firstChunk,
                         uint32_t largestChunk)
    : before_(before),
      handle_(handle),
      parser_(NewParser()),
      chunk_(firstChunk),
      largestChunk_(largestChunk) {
  if (parser_ == nullptr) {
    NoMemory();
    return;
  }
  XML_Parser parser = parser_.get();
  (void)XML_SetHashSalt(parser, Salt(parser));
  XML_SetUserData(parser, this);
  XML_SetElementHandler(parser, OnStart, OnEnd);
  XML_SetStartDoctypeDeclHandler(parser, OnDoctype);
  XML_SetStartNamespaceDeclHandler(parser, OnNamespace);
  XML_SetUnknownEncodingHandler(parser, OnEncoding, nullptr);
}

ExpatParser::Result ExpatParser::Next() {
  Tag& before = tags_[current_];
  if (before.endFollows) {
    before.endFollows = false;
    before.isEnd = true;
    return Result::kTag;
  }
  if (!readAhead_) (void)Advance();
  readAhead_ = false;
  if (!stored_) return result_;
  stored_ = false;
  current_ = 1 - current_;
  return Result::kTag;
}

std::optional<std::string_view> ExpatParser::Attribute(std::string_view localName) const {
  if (isEnd()) return std::nullopt;
  const char* at = tag().text.data() + tag().attributesAt;
  const char* const end = tag().text.end();
  while (at != end) {
    const std::string_view name(at);
    const std::string_view value(name.data() + name.size() + 1);
    if (name == localName) return value;
    at = value.data() + value.size() + 1;
  }
  return std::nullopt;
}

std::string_view ExpatParser::Content() {
  if (tag().endFollows) return {};
  if (!readAhead_) {
    content_.Clear();
    if (parser_ != nullptr) XML_SetCharacterDataHandler(parser_.get(), OnText);
    (void)Advance();
    if (parser_ != nullptr) XML_SetCharacterDataHandler(parser_.get(), nullptr);
    readAhead_ = true;
  }
  return {content_.data(), content_.size()};
}

// Parses until the following tag is stored, or until the result tells why there is none.
ExpatParser::Result ExpatParser::Advance() {
  while (result_ == Result::kTag && !stored_) {
    const XML_Status status = suspended_ ? XML_ResumeParser(parser_.get()) : Feed();
    suspended_ = status == XML_STATUS_SUSPENDED;
    if (std::exchange(allocationFailed, false)) NoteNoMemory(handle_);
    if (result_ != Result::kTag) break;
    if (status == XML_STATUS_ERROR) {
      result_ = Result::kMalformed;
      if (XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_MEMORY) NoMemory();
    } else if (!suspended_ && endOfData_) {
      result_ = Result::kEndOfData;
    }
  }
  return result_;
}

XML_Status ExpatParser::Feed() {
  // A piece that is incomplete is parsed again from its start: each time as much is read again, so
  // that the time stays linear. Newer releases of Expat put that off, and do not know meanwhile
  // where they stand.
  const XML_Index at = XML_GetCurrentByteIndex(parser_.get());
  if (at >= 0 && at <= fed_) parsed_ = static_cast<uint32_t>(at);
  const uint32_t pending = fed_ - parsed_;
  if (pending >= kMaxPiece || fed_ == kMaxDocument) {
    Fail(Result::kMalformed);
    return XML_STATUS_ERROR;
  }
  const uint32_t more = std::max(chunk_, std::min(pending, kMaxPiece - pending));
  const uint32_t size = std::min(more, kMaxDocument - fed_);
  chunk_ = std::min(chunk_ * 2, largestChunk_);

  void* const buffer = XML_GetBuffer(parser_.get(), static_cast<int>(size));
  if (buffer == nullptr) {
    Fail(Result::kNoMemory);
    return XML_STATUS_ERROR;
  }
  const uint32_t count = ReadChunk(static_cast<char*>(buffer), size);
  fed_ += count;
  endOfData_ = count < size;
  return XML_ParseBuffer(parser_.get(), static_cast<int>(count), endOfData_ ? XML_TRUE : XML_FALSE);
}

// Less than `size` only at the end of the data.
uint32_t ExpatParser::ReadChunk(char* buffer, uint32_t size) {
  auto count = static_cast<uint32_t>(before_.copy(buffer, size));
  before_.remove_prefix(count);
  while (count < size) {
    const uint32_t got = io::Read(handle_, buffer + count, size - count);
    if (got == 0) break;
    count += got;
  }
  return count;
}

void ExpatParser::NoMemory() {
  NoteNoMemory(handle_);
  result_ = Result::kNoMemory;
}

void ExpatParser::Fail(Result result) {
  result_ = result;
  if (result == Result::kNoMemory) NoMemory();
  (void)XML_StopParser(parser_.get(), XML_FALSE);
}

bool ExpatParser::CountItem(const XML_Char* name) {
  if (items_ == kFreeItems) return CountName(name);
  ++items_;
  return true;
}

// Counts a name that was not met before. A table of numbers stands for the names: that two of them
// share a number cannot be brought about, and does no more than keep one from being counted.
bool ExpatParser::CountName(const XML_Char* name) {
  constexpr size_t kSlots = size_t{4} * kMaxMoreNames;
  constexpr uint64_t kSpread = 0x9E3779B97F4A7C15;
  constexpr size_t kNamesPerByte = 4;  // that cost as much as to inflate a byte
  if (names_.size() == 0) {
    if (!names_.Resize(kSlots)) {
      Fail(Result::kNoMemory);
      return false;
    }
    std::fill_n(names_.data(), kSlots, 0);
    nameSalt_ = Salt(this);
  }
  const std::string_view text = name == nullptr ? std::string_view() : std::string_view(name);
  Work* const work = WorkOf(handle_);
  expanded_ += text.size();
  if (work != nullptr) work->SpendInflated(0, text.size() / kNamesPerByte);
  if (expanded_ > kMaxExpanded || (work != nullptr && work->Inflatable() == 0)) {
    Fail(Result::kMalformed);
    return false;
  }
  uint64_t number = nameSalt_;
  for (const char c : text) {
    number = (number ^ static_cast<uint8_t>(c)) * kSpread;
    number ^= number >> 29;
  }
  number = (number ^ number >> 32) | 1;
  size_t slot = number % kSlots;
  while (names_[slot] != 0 && names_[slot] != number) slot = (slot + 1) % kSlots;
  if (names_[slot] == number) return true;
  names_[slot] = number;
  nameBytes_ += text.size();
  if (++nameCount_ <= kMaxMoreNames && nameBytes_ <= kMaxMoreNameBytes) return true;
  if (work != nullptr) work->Reach(WorkLimit::kMemory);
  Fail(Result::kMalformed);
  return false;
}

// Expat knows UTF-8, UTF-16, ISO-8859-1 and US-ASCII by these names. Of other encodings nothing
// matters but that ASCII is part of them: what lies above reads as ISO-8859-1.
int ExpatParser::OnEncoding(void* /*self*/, const XML_Char* name, XML_Encoding* encoding) noexcept {
  for (int byte = 0; byte < 256; ++byte) encoding->map[byte] = byte;
  encoding->data = nullptr;
  encoding->convert = nullptr;
  encoding->release = nullptr;
  if (!IsUtf8Name(name)) return XML_STATUS_OK;
  for (int byte = 0x80; byte < 256; ++byte) {
    int size = -1;  // no character begins so
    if (byte >= 0xC2 && byte < 0xE0) size = -2;
    if (byte >= 0xE0 && byte < 0xF0) size = -3;
    if (byte >= 0xF0 && byte < 0xF5) size = -4;
    encoding->map[byte] = size;
  }
  encoding->convert = DecodeUtf8;
  return XML_STATUS_OK;
}

// `text` ends in a NUL, which is appended with it.
bool ExpatParser::Append(Tag& tag, std::string_view text) {
  if (tag.text.Append(text.data(), text.size() + 1)) return true;
  Fail(Result::kNoMemory);
  return false;
}

bool ExpatParser::StoreTag(std::string_view name, bool isEnd) {
  Tag& tag = following();
  tag.isEnd = isEnd;
  tag.endFollows = false;
  tag.text.Clear();
  if (name.size() >= kMaxTagText) {
    Fail(Result::kMalformed);
    return false;
  }
  if (!CountItem(name.data()) || !Append(tag, name)) return false;
  tag.attributesAt = tag.text.size();
  return true;
}

bool ExpatParser::StoreAttributes(const XML_Char** attributes) {
  Tag& tag = following();
  uint32_t kept = 0;
  for (; *attributes != nullptr; attributes += 2) {
    const std::string_view name(attributes[0]);
    const std::string_view value(attributes[1]);
    if (!CountItem(name.data())) return false;
    const std::string_view local = name.substr(LocalNameAt(name));
    if (kept == kMaxAttributes) continue;
    if (local.size() + value.size() + 2 > kMaxTagText - tag.text.size()) continue;
    if (!Append(tag, local) || !Append(tag, value)) return false;
    ++kept;
  }
  return true;
}

void ExpatParser::OnStart(void* self, const XML_Char* name, const XML_Char** attributes) noexcept {
  auto& parser = *static_cast<ExpatParser*>(self);
  if (parser.result_ != Result::kTag) return;  // a namespace of this tag is at fault
  if (++parser.depth_ > kMaxDepth) return parser.Fail(Result::kMalformed);
  if (!parser.StoreTag(name, false) || !parser.StoreAttributes(attributes)) return;
  parser.Complete();
}

void ExpatParser::OnEnd(void* self, const XML_Char* name) noexcept {
  auto& parser = *static_cast<ExpatParser*>(self);
  --parser.depth_;
  // For an element without content both calls come in one go.
  if (parser.stored_) {
    parser.following().endFollows = true;
  } else if (parser.result_ == Result::kTag && parser.StoreTag(name, true)) {
    parser.Complete();
  }
}

// The views are made last, since the text may move while it grows.
void ExpatParser::Complete() {
  Tag& tag = following();
  const std::string_view name(tag.text.data());
  const size_t local = LocalNameAt(name);
  tag.namespaceUri = name.substr(0, local == 0 ? 0 : local - 1);
  tag.localName = name.substr(local);
  stored_ = true;
  (void)XML_StopParser(parser_.get(), XML_TRUE);
}

void ExpatParser::OnText(void* self, const XML_Char* text, int size) noexcept {
  auto& parser = *static_cast<ExpatParser*>(self);
  const size_t count = std::min(static_cast<size_t>(size), kMaxContent - parser.content_.size());
  if (!parser.content_.Append(text, count)) parser.Fail(Result::kNoMemory);
}

// Packages have no document types of their own; old office packages refer to one outside, which is
// never fetched. Without declarations there are neither entities nor default values to multiply.
void ExpatParser::OnDoctype(void* self, const XML_Char*, const XML_Char*, const XML_Char*,
                            int hasSubset) noexcept {
  if (hasSubset != 0) static_cast<ExpatParser*>(self)->Fail(Result::kMalformed);
}

void ExpatParser::OnNamespace(void* self, const XML_Char* prefix, const XML_Char* uri) noexcept {
  auto& parser = *static_cast<ExpatParser*>(self);
  if (!parser.CountItem(prefix) || uri == nullptr || std::strlen(uri) <= kMaxNamespaceUri) return;
  parser.Fail(Result::kMalformed);
}

}  // namespace fi::xml
