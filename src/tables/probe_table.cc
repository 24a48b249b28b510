#include "signature/probe_lookup.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "probes/archive/arj.h"
#include "probes/archive/cabinet.h"
#include "probes/archive/cpio.h"
#include "probes/archive/disk_image.h"
#include "probes/archive/lzma_alone.h"
#include "probes/archive/tar.h"
#include "probes/archive/zstandard.h"
#include "probes/database/columnar.h"
#include "probes/database/dbase.h"
#include "probes/database/hdf5.h"
#include "probes/database/paradox.h"
#include "probes/document/ami_pro.h"
#include "probes/document/dif.h"
#include "probes/document/lotus_worksheet.h"
#include "probes/document/mif.h"
#include "probes/document/pdf_header.h"
#include "probes/document/portable_transcript.h"
#include "probes/document/word_perfect_42.h"
#include "probes/document/word_pro.h"
#include "probes/document/works_mac.h"
#include "probes/drawing/dwf.h"
#include "probes/drawing/dxf_text.h"
#include "probes/drawing/microstation.h"
#include "probes/encoded/encoded_text.h"
#include "probes/font/opentype.h"
#include "probes/font/sfnt.h"
#include "probes/font/web_fonts.h"
#include "probes/forensic/ad1.h"
#include "probes/forensic/encase.h"
#include "probes/image/anymap.h"
#include "probes/image/apple_icon.h"
#include "probes/image/cgm.h"
#include "probes/image/icon.h"
#include "probes/image/jpeg.h"
#include "probes/image/macpaint.h"
#include "probes/image/pict.h"
#include "probes/image/x_bitmap.h"
#include "probes/image/x_pixmap.h"
#include "probes/image/xwd.h"
#include "probes/keys/der_objects.h"
#include "probes/keys/openpgp_packets.h"
#include "probes/mail/card_calendar.h"
#include "probes/mail/mail.h"
#include "probes/mail/trillian_log.h"
#include "probes/markup/markup.h"
#include "probes/markup/message_history.h"
#include "probes/media/ac3.h"
#include "probes/media/adts.h"
#include "probes/media/asf.h"
#include "probes/media/iso_brands.h"
#include "probes/media/iso_media.h"
#include "probes/media/matroska.h"
#include "probes/media/mpeg_audio.h"
#include "probes/media/mpeg_stream.h"
#include "probes/media/ogg.h"
#include "probes/media/quicktime.h"
#include "probes/media/real_media.h"
#include "probes/media/riff.h"
#include "probes/media/transport_stream.h"
#include "probes/model/shapefile.h"
#include "probes/model/sized_models.h"
#include "probes/model/stl.h"
#include "probes/package/dispatcher.h"
#include "probes/print/afp.h"
#include "probes/print/eps_preview.h"
#include "probes/print/hpgl.h"
#include "probes/print/pjl_pcl.h"
#include "probes/storage/classifier.h"
#include "probes/storage/designer.h"
#include "probes/storage/legacy_document.h"
#include "probes/storage/message_class.h"
#include "probes/storage/project.h"
#include "probes/storage/publisher.h"
#include "probes/storage/quattro_pro.h"
#include "probes/storage/visio.h"
#include "probes/storage/word_fib.h"
#include "probes/storage/workbook.h"
#include "probes/system/dos_executable.h"
#include "probes/system/internet_shortcut.h"
#include "probes/system/pcapng.h"
#include "probes/system/registry_hive.h"
#include "probes/system/resource_fork.h"
#include "probes/system/torrent.h"
#include "probes/unidentified/escape_sequence.h"
#include "probes/unidentified/header_checksum.h"
#include "probes/unidentified/marker_sequence.h"
#include "registry/format_ids.h"
#include "tables/unanswered_probes.h"

namespace fi {
namespace {

// Adapters from the call of the table to the shapes that probes have.

template <FormatId (*probe)(IdentificationStream*)>
FormatId OfStream(const ProbeCall& call) {
  return probe(call.run.stream);
}

// Codes without a probe: the probe is no part of the library, or its format is not publicly known.
// They keep their rows: a code without a row changes how its program goes on. unanswered_probes.h
// lists them too.
FormatId NoProbe(const ProbeCall& /*call*/) { return kNoMatch; }

// What leads here is proof enough: five bytes of Rich Text, the namespace of Domino XML.
template <FormatId id>
FormatId Settled(const ProbeCall& /*call*/) {
  return id;
}

// The code is the format that the storage's class stands for.
FormatId PerfectOfficeMain(const ProbeCall& call) {
  return ProbePerfectOfficeMain(call.run.stream, call.code);
}

FormatId MessageClass(const ProbeCall& call) { return MapMessageClass(call.run.stream, call.code); }

FormatId Mail(const ProbeCall& call) {
  return MailProbe(call.run.stream, call.run.extension.data());
}

FormatId HpGl(const ProbeCall& call) {
  return HpGlProbe(call.run.stream, call.run.extension.data());
}

FormatId Classifier(const ProbeCall& call) {
  call.run.classifierRan = 1;
  FormatId id = kFormatUnknown;
  call.run.status = ClassifyCompoundDocument(call.run.stream, call.run.extension.data(), &id);
  return id;
}

FormatId Package(const ProbeCall& call) {
  const PackageFormat format = PackageProbe(call.run.stream);
  call.run.status = format.status;
  return format.id;
}

// Both kinds of font have a directory of the same form, at the start of the file.
FormatId Font(const ProbeCall& call) {
  return SfntDirectoryProbe(call.run.stream, 0) ? call.code : kNoMatch;
}

template <uint32_t offset>
FormatId MarkerSequence(const ProbeCall& call) {
  return MarkerSequenceProbe(call.run.stream, offset) ? call.code : kNoMatch;
}

// Sorted by code.
constexpr ProbeEntry kProbes[] = {
    {1003, NoProbe},  // WordStar up to version 4 has no header, and high bits mark its words as
                      // they do others
    {1007, NoProbe},  // of which word processor is not known
    {1010, OfStream<HeaderChecksumProbe>},
    {1018, NoProbe},  // of which word processor is not known
    {1019, OfStream<EscapeSequenceProbe>},
    {1020, NoProbe},  // of which word processor is not known
    {1021, MarkerSequence<120>},
    {1023, OfStream<WordPerfect42Probe>},
    {1025, NoProbe},  // of which word processor is not known
    {1028, Settled<kFormatRichText>},
    {1034, NoProbe},  // of which word processor, of the Macintosh perhaps, is not known
    {1041, NoProbe},  // of which word processor is not known
    {1057, OfStream<AmiProProbe>},
    {1077, MarkerSequence<118>},
    {1082, OfStream<ProbeLegacyDocument>},
    {1108, OfStream<WordProProbe>},
    {1141, OfStream<CardCalendarProbe>},
    {1143, MessageClass},
    {1146, OfStream<ProbeWordFib>},
    {1168, OfStream<MifProbe>},
    {1187, Mail},
    {1190, OfStream<MarkupProbe>},
    {1201, NoProbe},  // which database format is meant is not known
    {1206, NoProbe},  // which database format is meant is not known
    {1210, NoProbe},  // R:BASE: no description of its header is public
    {1212, NoProbe},  // which database format is meant is not known
    {1213, NoProbe},  // R:BASE, the other form: no description of its header is public
    {1224, OfStream<ProbeNumberedStorages>},
    {1311, MessageClass},
    {1341, OfStream<TrillianLogProbe>},
    {1342, OfStream<MessageHistoryProbe>},
    {1416, OfStream<LotusWorksheetProbe>},
    {1417, OfStream<WorksMacProbe>},
    {1445, OfStream<ProbeNativeContentMain>},
    {1446, OfStream<ProbeWorkbook>},
    {1447, PerfectOfficeMain},
    {1450, PerfectOfficeMain},
    {1453, PerfectOfficeMain},
    {1472, OfStream<DifProbe>},
    {1504, OfStream<EpsPreviewProbe>},
    {1505, OfStream<CgmProbe>},
    {1515, NoProbe},  // which bitmap without a signature is meant is not known
    {1518, OfStream<MacPaintProbe>},
    {1528, NoProbe},  // which image format is meant is not known
    {1535, OfStream<JpegProbe>},
    {1544, OfStream<DxfTextProbe>},
    {1557, OfStream<PdfHeaderProbe>},
    {1569, NoProbe},  // a graphic in a storage; which streams it has is not known
    {1570, NoProbe},  // a graphic in a storage; which streams it has is not known
    {1571, OfStream<XBitmapProbe>},
    {1572, OfStream<XPixmapProbe>},
    {1575, OfStream<XwdProbe>},
    {1579, OfStream<ProbeDesignerDoc>},
    {1580, HpGl},
    {1588, NoProbe},  // which image format is meant is not known
    {1597, OfStream<ProbeVisioDocument>},
    {1601, OfStream<MicroStationProbe>},
    {1631, OfStream<ProbeVisioDocument>},
    {1644, OfStream<DwfProbe>},
    {1705, OfStream<QuickTimeProbe>},
    {1710, OfStream<MpegAudioProbe>},
    {1716, OfStream<AsfProbe>},
    {1720, OfStream<RealMediaProbe>},
    {1721, OfStream<MpegStreamProbe>},
    {1723, OfStream<IsoMediaProbe>},
    {1726, OfStream<RiffProbe>},
    {1730, OfStream<OggProbe>},
    {1802, Package},
    {1803, OfStream<TarProbe>},
    {1807, NoProbe},  // which kind of compound file is meant is not known
    {1814, OfStream<DosExecutableProbe>},
    {1820, OfStream<CabinetProbe>},
    {1999, Classifier},
    {2007, Settled<kFormatDominoXml>},
    {2202, OfStream<ProbeContentsStream>},
    {2233, NoProbe},  // which kind of drawing is meant is not known
    {2400, OfStream<InternetShortcutProbe>},
    {2404, Font},
    {2405, OfStream<FontCollectionProbe>},
    {2406, Font},
    {3021, OfStream<ZstandardProbe>},
    {3026, OfStream<LzmaAloneProbe>},
    {3031, OfStream<CpioProbe>},
    {3036, OfStream<ArjProbe>},
    {3040, OfStream<OpticalDiscProbe>},
    {3041, OfStream<AppleDiskImageProbe>},
    {3042, OfStream<VirtualHardDiskProbe>},
    {3065, OfStream<IconProbe>},
    {3067, OfStream<AppleIconProbe>},
    {3070, OfStream<AnymapProbe>},
    {3094, OfStream<TaggedAudioProbe>},
    {3095, OfStream<AdtsProbe>},
    {3096, OfStream<Ac3Probe>},
    {3111, OfStream<MatroskaProbe>},
    {3114, OfStream<TransportStreamProbe>},
    {3130, OfStream<OpenTypeCffProbe>},
    {3131, OfStream<WoffProbe>},
    {3132, OfStream<Woff2Probe>},
    {3133, OfStream<EmbeddedOpenTypeProbe>},
    {3141, OfStream<DbaseProbe>},
    {3142, OfStream<ParadoxProbe>},
    {3143, OfStream<ParquetProbe>},
    {3144, OfStream<OrcProbe>},
    {3145, OfStream<AvroProbe>},
    {3146, OfStream<ArrowProbe>},
    {3147, OfStream<Hdf5Probe>},
    {3173, OfStream<AfpProbe>},
    {3175, OfStream<PclProbe>},
    {3176, OfStream<PjlProbe>},
    {3221, OfStream<PcapngProbe>},
    {3223, OfStream<RegistryHiveProbe>},
    {3231, OfStream<TorrentProbe>},
    {3233, OfStream<OpenPgpProbe>},
    {3234, OfStream<DerObjectProbe>},
    {3244, OfStream<StlProbe>},
    {3245, OfStream<GltfProbe>},
    {3247, OfStream<ThreeDStudioProbe>},
    {3250, OfStream<ShapefileProbe>},
    {3287, OfStream<ResourceForkProbe>},
    {3435, OfStream<IsoBrandProbe>},
    {4050, OfStream<EncodedTextProbe>},
    {5004, OfStream<PictHeaderProbe>},
    {6100, OfStream<Ad1Probe>},
    {6102, OfStream<Ad1EncryptedProbe>},
    {6103, OfStream<EnCaseEx01Probe>},
    {6104, OfStream<EnCaseL01Probe>},
    {6106, OfStream<EnCaseLx01Probe>},
    {6108, OfStream<EnCaseE01Probe>},
    {6200, OfStream<PortableTranscriptProbe>},
    {6201, NoProbe},  // which XML vocabulary is meant is not known
    {6202, NoProbe},  // which XML vocabulary is meant is not known
    {6203, NoProbe},  // which XML vocabulary is meant is not known
};

constexpr bool IsSorted() {
  for (size_t i = 1; i < std::size(kProbes); ++i) {
    if (kProbes[i - 1].code >= kProbes[i].code) return false;
  }
  return true;
}
static_assert(IsSorted());

constexpr bool UnansweredAreListed() {
  return std::ranges::all_of(kProbes, [](const ProbeEntry& probe) {
    return (probe.run == NoProbe) == IsUnanswered(probe.code);
  });
}
static_assert(UnansweredAreListed());

// For each code from the first on the place of its row in the table, counted from 1; 0: it has
// none.
constexpr uint16_t kFirstCode = kProbes[0].code;
constexpr auto kPlaces = [] {
  std::array<uint8_t, std::prev(std::end(kProbes))->code - kFirstCode + 1> places{};
  static_assert(std::size(kProbes) <= 0xFF);
  uint8_t place = 0;
  for (const ProbeEntry& probe : kProbes) places[probe.code - size_t{kFirstCode}] = ++place;
  return places;
}();

}  // namespace

const ProbeEntry* FindProbe(uint16_t code) {
  const size_t at = size_t{code} - kFirstCode;  // huge for a code before the first
  if (at >= kPlaces.size() || kPlaces[at] == 0) return nullptr;
  return &kProbes[kPlaces[at] - 1];
}

}  // namespace fi
