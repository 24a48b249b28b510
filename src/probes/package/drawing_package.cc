// The drawing is a member of RIFF form: "RIFF", its size, and a form type of "CD" and two more
// characters, of which the third tells a drawing's version.

#include "probes/package/drawing_package.h"

#include <cstdint>
#include <string_view>

#include "platform/io.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

// Four bytes of a member, and the status of their read; bytes behind the end of data stay 0.
struct FourBytes {
  char bytes[4] = {};
  int32_t status = 0;

  std::string_view Text() const { return {bytes, sizeof bytes}; }
};

FourBytes ReadFourBytes(IOHandle* member) {
  FourBytes four;
  uint32_t filled = 0;
  while (filled < sizeof four.bytes) {
    const auto wanted = static_cast<uint32_t>(sizeof four.bytes) - filled;
    uint32_t count = 0;
    four.status = member->operations->read(member, four.bytes + filled, wanted, &count);
    if (four.status != 0 || count == 0 || count > wanted) break;
    filled += count;
  }
  return four;
}

}  // namespace

PackageAnswer DrawingPackageProbe(IOHandle* package) {
  io::OwnedHandle member = OpenMember(package, "content/riffData.cdr");
  if (member == nullptr) member = OpenMember(package, "content/root.dat");
  if (member == nullptr) return kGoOn;

  (void)io::Seek(member.get(), kIoFromStart, 0);
  PackageAnswer answer;
  FourBytes four = ReadFourBytes(member.get());
  if (four.Text() == "RIFF") {
    (void)io::Seek(member.get(), kIoFromCurrent, 4);
    four = ReadFourBytes(member.get());
    const std::string_view form = four.Text();
    if (form.substr(0, 3) == "CDR") answer.id = kFormatCorelDrawPackage;
    if (form == "CDTH") answer.id = kFormatCorelDrawCdthPackage;
  }
  // Deliberate: a member that can be read ends the chain, whatever is in it.
  answer.ends = four.status == 0;
  return answer;
}

}  // namespace fi
