#include "properties/drawing/dxf.h"

#include <string_view>

#include "properties/text/text.h"
#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// Where the header variable and its value stand: both forms keep the header at the start.
constexpr size_t kLooked = 4096;

// The release, "AC1015", behind the name of the variable and a group code.
std::string_view Release(std::string_view text, size_t* offset) {
  const size_t variable = text.find("$ACADVER");
  if (variable == std::string_view::npos) return {};
  constexpr size_t kNear = 32;
  const size_t at = text.substr(0, variable + kNear).find("AC1", variable);
  const size_t old = text.substr(0, variable + kNear).find("AC2.", variable);
  *offset = at != std::string_view::npos ? at : old;
  if (*offset == std::string_view::npos) return {};
  const std::string_view release = text.substr(*offset, 6);
  return release.substr(0, release.find_first_not_of("AC0123456789."));
}

}  // namespace

void ReadDxfProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<kLooked> head(question.stream, 0);
  size_t offset = 0;
  const std::string_view release = Release(head.View(), &offset);
  out.Set(Property::kVersion, release, "$ACADVER", static_cast<int64_t>(offset));
  if (question.id == kFormatDxfText) ReadTextProperties(question, out);
}

}  // namespace fi
