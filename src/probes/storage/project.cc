#include "probes/storage/project.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

// The last digit of the version in the user type's name ("... 14") of the stream "CompObj".
FormatId ByUserType(IdentificationStream* child) {
  constexpr uint32_t kVersionDigitAt = 51;
  (void)IdStreamSeek(child, kVersionDigitAt, kIoFromStart);
  switch (IdStreamGetByte(child)) {
    case '4':
      return kFormatProject2010;
    case '5':
      return kFormatProject2013;
    case '6':
      return kFormatProject2016;
    default:
      return kFormatUnknown;
  }
}

}  // namespace

FormatId ProbeNumberedStorages(IdentificationStream* stream) {
  IOHandle* document = stream->handle;
  if (HasSubStorage(document, "   19")) return kFormatProject2000;
  if (HasSubStorage(document, "   112")) return kFormatProject2007;
  if (!HasSubStorage(document, "   114")) return kNoMatch;
  const ChildStream child(document, "\001CompObj");
  return child ? ByUserType(child.get()) : kNoMatch;
}

}  // namespace fi
