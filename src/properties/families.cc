#include "properties/families.h"

#include <algorithm>
#include <iterator>

#include "properties/pdf.h"
#include "properties/text.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

using Family = void (*)(const PropertyQuestion& question, PropertySet& out);

struct FamilyRow {
  FormatId id;
  Family read;
};

// Sorted by identifier. A format without a family is read as text, where its bytes are.
constexpr FamilyRow kFamilies[] = {
    {kFormatPdf, ReadPdfProperties},
    {kFormatIllustratorPdf, ReadPdfProperties},
};
static_assert(std::ranges::is_sorted(kFamilies, {}, &FamilyRow::id));

}  // namespace

void ReadProperties(const PropertyQuestion& question, PropertySet& out) {
  const FamilyRow* row = std::ranges::lower_bound(kFamilies, question.id, {}, &FamilyRow::id);
  if (row != std::end(kFamilies) && row->id == question.id) return row->read(question, out);
  ReadTextProperties(question, out);
}

}  // namespace fi
