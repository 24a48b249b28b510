#include "probes/package/mail_archive.h"

#include <string_view>

#include "registry/format_ids.h"

namespace fi {

PackageAnswer MailArchiveProbe(IOHandle* package) {
  constexpr std::string_view kFolders[] = {
      "Local/com.microsoft.__Messages/",
      "Local/Address Book/",
      "Local/Tasks/",
      "Local/Calendar/",
      "Local/Notes/",
  };
  if (!HasMember(package, "Categories.xml")) return kGoOn;
  for (const std::string_view folder : kFolders) {
    if (HasMember(package, folder)) return EndsWith(kFormatOutlookForMacArchive);
  }
  return kGoOn;
}

}  // namespace fi
