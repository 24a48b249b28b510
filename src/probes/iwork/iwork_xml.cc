// The package holds a build history, the index (for presentations under another name) whose root
// element names the application, and where the user wanted one, a preview in PDF.

#include "probes/iwork/iwork_xml.h"

#include <cstdint>
#include <string_view>

#include "platform/io.h"
#include "platform/xml.h"
#include "probes/iwork/element_search.h"
#include "registry/format_ids.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

struct Application {
  const char* namespaceUri;
  uint32_t namespaceNumber;
  UTXMLTagName names[1];
  FormatId plain;
  FormatId withPreview;
};

constexpr Application kApplications[] = {
    {"http://developer.apple.com/namespaces/sl",
     200,
     {{100, "document"}},
     kFormatPagesXml,
     kFormatPagesXmlWithPreview},
    {"http://developer.apple.com/namespaces/keynote2",
     201,
     {{101, "presentation"}},
     kFormatKeynoteXml,
     kFormatKeynoteXmlWithPreview},
    {"http://developer.apple.com/namespaces/ls",
     202,
     {{102, "document"}},
     kFormatNumbersXml,
     kFormatNumbersXmlWithPreview},
};

// All names of the table above.
constexpr std::string_view kNames[] = {"document", "presentation"};

io::OwnedHandle OpenIndex(IOHandle* package) {
  io::OwnedHandle index = OpenMember(package, "index.xml");
  if (index == nullptr) index = OpenMember(package, "index.apxl");
  return index;
}

}  // namespace

PackageAnswer IworkXmlPackageProbe(IOHandle* package) {
  if (!HasMember(package, "buildVersionHistory.plist")) return kGoOn;
  const bool hasPreview = HasMember(package, "QuickLook/Preview.pdf");
  const io::OwnedHandle index = OpenIndex(package);
  if (index == nullptr) return kGoOn;

  xml::ScopedReader reader(index.get());
  if (!reader) return kChainEnds;
  for (const Application& application : kApplications) {
    if (!AddTagMap(reader.get(), application.namespaceUri, application.namespaceNumber,
                   application.names)) {
      return kChainEnds;
    }
  }
  // Deliberate: the last of the elements wins, its end included. So the root decides, whose end is
  // the last of all, unless an element in it has such a name and the index ends before the root
  // does.
  PackageAnswer answer = kChainEnds;
  UTXMLTag tag{};
  for (bool isRoot = true; NextElement(reader.get(), &tag); isRoot = false) {
    for (const Application& application : kApplications) {
      if (tag.id != application.names[0].id) continue;
      answer.id = hasPreview ? application.withPreview : application.plain;
      if (isRoot && HasOneElementOf(kNames, index.get())) return answer;
    }
  }
  return answer;
}

}  // namespace fi
