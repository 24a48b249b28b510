#include "probes/model/protein_data.h"

#include <cstddef>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsProteinData(std::string_view text) {
  constexpr size_t kDate = 50;
  constexpr size_t kCode = 62;
  Lines lines(text);
  std::string_view line;
  return text.starts_with("HEADER    ") && lines.Next(&line) && line.size() >= kCode + 4 &&
         BeginsLike(line.substr(kDate), "99-") && IsDigit(line[kCode]);
}

}  // namespace fi
