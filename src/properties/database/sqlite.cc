#include "properties/database/sqlite.h"

#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {

void ReadSqliteProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kTextEncoding = 56;
  constexpr size_t kWriterVersion = 96;  // 3039004 for 3.39.4
  constexpr std::string_view kEncodings[] = {"", "utf-8", "utf-16le", "utf-16be"};
  const FileBytes<100> head(question.stream, 0);
  if (!head.Holds(0, "SQLite format 3")) return;
  if (!head.Has(0, 100)) return out.Set(Property::kDamaged, "header", "header", 0);
  // A program that uses databases as its own files may say so.
  constexpr size_t kApplication = 68;
  if (const uint32_t application = head.DwordBE(kApplication); application != 0) {
    ShortText profile("application ");
    profile.AppendNumber(application);
    out.Set(Property::kProfile, profile.view(), "header", kApplication);
  }
  const uint32_t encoding = head.DwordBE(kTextEncoding);
  if (encoding < std::size(kEncodings)) {
    out.Set(Property::kCharset, kEncodings[encoding], "header", kTextEncoding);
  }
  const uint32_t writer = head.DwordBE(kWriterVersion);
  if (writer < 3000000 || writer >= 4000000) return;
  ShortText version;
  version.AppendNumber(writer / 1000000);
  version.Append(".");
  version.AppendNumber(writer / 1000 % 1000);
  version.Append(".");
  version.AppendNumber(writer % 1000);
  out.Set(Property::kVersion, version.view(), "header", kWriterVersion);
}

}  // namespace fi
