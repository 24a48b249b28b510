#include "properties/program/python_byte_code.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "stream/file_bytes.h"

namespace fi {
namespace {

// The first magic number of each release, as CPython's importlib/_bootstrap_external.py lists them.
// Numbers rise with the releases since 3.0; those of Python 2 stand apart.
struct Release {
  uint32_t first;
  std::string_view version;
};

constexpr Release kReleases[] = {
    {3000, "3.0"},  {3141, "3.1"},  {3160, "3.2"},  {3190, "3.3"}, {3250, "3.4"},  {3320, "3.5"},
    {3360, "3.6"},  {3390, "3.7"},  {3400, "3.8"},  {3420, "3.9"}, {3430, "3.10"}, {3450, "3.11"},
    {3500, "3.12"}, {3550, "3.13"}, {3600, "3.14"}, {3650, ""},    {50428, "2.0"}, {50824, ""},
    {60202, "2.1"}, {60203, ""},    {60717, "2.2"}, {60718, ""},   {62011, "2.3"}, {62031, ""},
    {62041, "2.4"}, {62062, ""},    {62071, "2.5"}, {62132, ""},   {62151, "2.6"}, {62162, ""},
    {62171, "2.7"}, {62212, ""},
};
static_assert(std::ranges::is_sorted(kReleases, {}, &Release::first));

}  // namespace

void ReadPythonByteCodeProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<4> head(question.stream, 0);
  if (!head.Holds(2, "\r\n")) return;
  const Release* next = std::ranges::upper_bound(kReleases, head.WordLE(0), {}, &Release::first);
  if (next != std::begin(kReleases))
    out.Set(Property::kVersion, std::prev(next)->version, "header", 0);
}

}  // namespace fi
