#include "probes/media/iso_brands.h"

#include <algorithm>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kTypeAt = 4;
constexpr size_t kMajorAt = 8;
constexpr size_t kCompatibleAt = 16;
constexpr size_t kBrandSize = 4;

// Holds 60 compatible brands; real files name a dozen.
using Head = FileBytes<256>;

struct Brand {
  std::string_view beginning;
  FormatId id;
};

// Brands that name one kind of file by themselves.
constexpr Brand kDeciding[] = {
    {"avif", kFormatAvif},           {"avis", kFormatAvif},         {"avio", kFormatAvif},
    {"j2ki", kFormatHeifJpeg2000},   {"j2is", kFormatHeifJpeg2000}, {"crx ", kFormatCanonRaw3},
    {"M4A ", kFormatMpeg4Audio},     {"M4P ", kFormatMpeg4Audio},   {"M4B ", kFormatMpeg4Audiobook},
    {"M4V", kFormatAppleMpeg4Video}, {"F4V ", kFormatFlashMpeg4},   {"F4P ", kFormatFlashMpeg4},
    {"F4A ", kFormatFlashMpeg4},     {"F4B ", kFormatFlashMpeg4},   {"3g2", kFormatThreeGpp2},
    {"KDDI", kFormatThreeGpp2},      {"3gp", kFormatThreeGpp},      {"3ge", kFormatThreeGpp},
    {"3gg", kFormatThreeGpp},        {"3gh", kFormatThreeGpp},      {"3gm", kFormatThreeGpp},
    {"3gr", kFormatThreeGpp},        {"3gs", kFormatThreeGpp},      {"3gt", kFormatThreeGpp},
    {"mmp4", kFormatThreeGpp},
};

// Brands that many kinds of files carry besides others.
constexpr Brand kCommon[] = {
    {"heic", kFormatHeif},           {"heix", kFormatHeif},
    {"heim", kFormatHeif},           {"heis", kFormatHeif},
    {"avci", kFormatHeif},           {"jpeg", kFormatHeif},
    {"hevc", kFormatHeicSequence},   {"hevx", kFormatHeicSequence},
    {"hevm", kFormatHeicSequence},   {"hevs", kFormatHeicSequence},
    {"mj2s", kFormatMotionJpeg2000}, {"mjp2", kFormatMotionJpeg2000},
    {"qt  ", kFormatQuickTimeMovie}, {"dash", kFormatMediaSegment},
    {"msdh", kFormatMediaSegment},   {"msix", kFormatMediaSegment},
    {"cmf", kFormatMediaSegment},    {"iso", kFormatIsoMpeg4},
    {"avc1", kFormatIsoMpeg4},       {"mp4", kFormatMp4},
    {"mp71", kFormatMp4Mpeg7},       {"MSNV", kFormatIsoMpeg4},
    {"ND", kFormatIsoMpeg4},         {"XAVC", kFormatIsoMpeg4},
    {"piff", kFormatIsoMpeg4},       {"isml", kFormatIsoMpeg4},
    {"MGSV", kFormatIsoMpeg4},       {"CAEP", kFormatIsoMpeg4},
};

// Brands of a structure, where those of the coding are among the compatible ones.
constexpr Brand kStructures[] = {
    {"mif", kFormatHeif},
    {"miaf", kFormatHeif},
    {"msf1", kFormatHeifSequence},
};

template <size_t count>
FormatId Find(std::string_view brand, const Brand (&brands)[count]) {
  for (const Brand& known : brands) {
    if (brand.starts_with(known.beginning)) return known.id;
  }
  return kNoMatch;
}

FormatId FindAny(std::string_view brand) {
  const FormatId id = Find(brand, kDeciding);
  return id != kNoMatch ? id : Find(brand, kCommon);
}

std::string_view MajorBrand(const Head& head) {
  if (!head.Holds(kTypeAt, "ftyp") || !head.Has(kMajorAt, kBrandSize)) return {};
  return head.View().substr(kMajorAt, kBrandSize);
}

// The compatible brands that the box and the window hold.
std::string_view CompatibleBrands(const Head& head) {
  const size_t end = std::min<size_t>(head.DwordBE(0), head.size());
  return end < kCompatibleAt ? std::string_view()
                             : head.View().substr(kCompatibleAt, end - kCompatibleAt);
}

// The first identifier that `find` has for one of the brands.
FormatId FirstKnown(std::string_view brands, FormatId (*find)(std::string_view brand)) {
  for (; brands.size() >= kBrandSize; brands.remove_prefix(kBrandSize)) {
    if (const FormatId id = find(brands.substr(0, kBrandSize)); id != kNoMatch) return id;
  }
  return kNoMatch;
}

// Of images: their coding. Of an animation the brand of its still image may stand first.
FormatId ImageCoding(std::string_view brand) {
  const FormatId id = FindAny(brand);
  const bool isImage = id == kFormatAvif || id == kFormatHeif || id == kFormatHeicSequence ||
                       id == kFormatHeifJpeg2000;
  return isImage ? id : kNoMatch;
}

FormatId StructureBrand(std::string_view brand) { return Find(brand, kStructures); }

}  // namespace

FormatId IsoBrandProbe(IdentificationStream* stream) {
  const Head head(stream, 0);
  if (head.Holds(kTypeAt, "styp")) return kFormatMediaSegment;
  const std::string_view major = MajorBrand(head);
  if (major.empty()) return kNoMatch;
  const std::string_view compatible = CompatibleBrands(head);
  if (const FormatId structure = StructureBrand(major); structure != kNoMatch) {
    const FormatId coding = FirstKnown(compatible, ImageCoding);
    return coding != kNoMatch ? coding : structure;
  }
  if (const FormatId id = FindAny(major); id != kNoMatch) return id;
  const FormatId id = FirstKnown(compatible, FindAny);
  return id != kNoMatch ? id : FirstKnown(compatible, StructureBrand);
}

FormatId DecidingMajorBrand(IdentificationStream* stream) {
  return Find(MajorBrand(Head(stream, 0)), kDeciding);
}

}  // namespace fi
