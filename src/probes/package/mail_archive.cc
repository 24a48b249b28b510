#include "probes/package/mail_archive.h"

#include <string_view>

#include "registry/format_ids.h"

namespace fi {

GoOn MailArchiveProbe(IOHandle* package, FormatId* id) {
  constexpr std::string_view kFolders[] = {
      "Local/com.microsoft.__Messages/",
      "Local/Address Book/",
      "Local/Tasks/",
      "Local/Calendar/",
      "Local/Notes/",
  };
  if (!HasMember(package, "Categories.xml")) return kGoOn;
  for (const std::string_view folder : kFolders) {
    if (!HasMember(package, folder)) continue;
    *id = kFormatOutlookForMacArchive;
    return kChainEnds;
  }
  return kGoOn;
}

}  // namespace fi
