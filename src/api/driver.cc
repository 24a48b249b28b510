#include "api/driver.h"

#include <array>
#include <optional>

#include "api/extension.h"
#include "api/password_relay.h"
#include "api/protected_formats.h"
#include "api/corrections.h"
#include "api/supplement.h"
#include "platform/delimited_text.h"
#include "platform/io.h"
#include "probes/protection/rights_management.h"
#include "probes/storage/classifier.h"
#include "probes/storage/message_class.h"
#include "probes/text/plain_text.h"
#include "registry/format_ids.h"
#include "signature/interpreter.h"
#include "stream/id_stream.h"
#include "tables/signature_table.h"

namespace fi {
namespace {

// Bits of the behaviour word, option 338486.
constexpr uint32_t kBehaviourText = 1;
constexpr uint32_t kBehaviourDelimited = 2;

// Beside them: the supplement is asked. It is no part of the option.
constexpr uint32_t kBehaviourSupplement = 1u << 31;

// Takes the behaviour from the flags and publishes it, or from the option. An option that is not
// set, or cannot be read, allows nothing.
uint32_t Behaviour(uint32_t flags) {
  UTOptionSet* set = UTGetGlobalOptionSet();
  uint32_t word = 0;
  if ((flags & kFiUseFlags) != 0) {
    if ((flags & kFiTextFallback) != 0) word |= kBehaviourText;
    if ((flags & kFiDelimitedText) != 0) word |= kBehaviourDelimited;
    if (set != nullptr) (void)UTSetOption(set, kUtOptionBehaviour, &word, sizeof(word));
    return word;
  }
  uint32_t size = sizeof(word);
  if (set == nullptr || UTGetOption(set, kUtOptionBehaviour, &word, &size) != 0) return 0;
  return word & (kBehaviourText | kBehaviourDelimited);  // a host may have set other bits
}

bool ReadClassId(IOHandle* handle, ClassId& classId) {
  ClassId answer{};
  if (!io::GetInfo(handle, kIoInfoIsStorage, nullptr)) return false;
  if (!io::GetInfo(handle, kIoInfoClassId, answer.data())) return false;
  classId = answer;
  return true;
}

void Rewind(IOHandle* handle) { (void)io::Seek(handle, kIoFromStart, 0); }

// The identifier that stands for a class in class-only mode.
std::optional<FormatId> KnownClass(const ClassId& classId) {
  constexpr ClassId kMessage = {0x0B, 0x0D, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};
  constexpr ClassId kTemplate = {0x46, 0xF0, 0x06, 0x00, 0x00, 0x00, 0x00, 0x00,
                                 0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};
  if (classId == kMessage) return kFormatOutlookMessage;
  if (classId == kTemplate) return kFormatOutlookItemTemplate;
  if (classId == ClassId{}) return kFormatUnknown;
  return std::nullopt;
}

uint32_t IdentifyByClass(const SignatureRun& run, FormatId* idOut, FIEvidence* evidence) {
  const std::optional<FormatId> known = KnownClass(run.classId);
  if (!known.has_value()) return kFiUnknownClass;
  *idOut = MapMessageClass(run.stream, *known);
  evidence->basis = kFiBasisClass;
  return kFiOk;
}

// Lets the sniffer look whether text is delimited.
FormatId RefineDelimitedText(IdentificationStream* stream, FormatId id) {
  CsvSniffer sniffer{};
  if (InitCSV(&sniffer, stream, id) != 0) return id;
  const bool delimited = IsCSV(&sniffer) == 1;
  DeinitCSV(&sniffer);
  return delimited ? sniffer.id : id;
}

FormatId FallBackToText(IdentificationStream* stream, uint32_t behaviour) {
  if ((behaviour & kBehaviourText) == 0) return kFormatUnknown;
  const FormatId id = ClassifyPlainText(stream);
  if (id == kFormatUnknown || (behaviour & kBehaviourDelimited) == 0) return id;
  return RefineDelimitedText(stream, id);
}

void Take(const SupplementAnswer& answer, FormatId* idOut, FIEvidence* evidence) {
  *idOut = answer.id;
  *evidence = {answer.basis, 0};
}

// Puts what the supplement knows in the place of a general answer.
void Refine(SignatureRun& run, FormatId* idOut, FIEvidence* evidence) {
  if (const SupplementAnswer answer = RefineGeneralAnswer(run, *idOut); answer) {
    Take(answer, idOut, evidence);
  }
}

FormatId IdentifyWithoutName(const SignatureRun& run, uint32_t behaviour);

// Puts what the content proves in the place of a fixed answer that is false. The evidence then says
// which that was.
void Correct(SignatureRun& run, uint32_t behaviour, FormatId* idOut, FIEvidence* evidence) {
  const FixedAnswer answer = {*idOut, evidence->signature, behaviour, IdentifyWithoutName};
  const FormatId id = CorrectionOf(run, answer);
  if (id == kNoMatch) return;
  *evidence = {kFiBasisContent | kFiBasisCorrection, static_cast<uint16_t>(*idOut)};
  *idOut = id;
}

void RefineOrCorrect(SignatureRun& run, uint32_t behaviour, FormatId* idOut,
                     FIEvidence* evidence) {
  const FormatId before = *idOut;
  Refine(run, idOut, evidence);
  if (*idOut == before) Correct(run, behaviour, idOut, evidence);
}

// A file that is no storage and that no signature claimed: the text fallback and, where it is asked
// for, the supplement. Delimited text is a specific answer, which the supplement must leave alone;
// but what begins like no text need not be read on to know that it is none.
void IdentifyRest(SignatureRun& run, uint32_t behaviour, FormatId* idOut, FIEvidence* evidence) {
  const bool asksFurther = (behaviour & kBehaviourSupplement) != 0;
  SupplementAnswer further;
  if (asksFurther) {
    further = AskSupplementSignatures(run);
    // It also leaves the head of the file in the stream's buffer, where the fallback looks first.
    const bool isBinary = BeginsBinary(run.stream);
    if (further && isBinary) return Take(further, idOut, evidence);
  }
  *idOut = FallBackToText(run.stream, behaviour);
  if (*idOut != kFormatUnknown) evidence->basis = kFiBasisText;
  if (!asksFurther) return;
  if (!IsGeneralAnswer(*idOut)) return Correct(run, behaviour, idOut, evidence);
  if (further) return Take(further, idOut, evidence);
  Refine(run, idOut, evidence);
}

// No signature claimed the file: the classifier, then the fallbacks, then unknown.
uint32_t IdentifyUnmatched(SignatureRun& run, uint32_t behaviour, FormatId* idOut,
                           FIEvidence* evidence) {
  const bool asksFurther = (behaviour & kBehaviourSupplement) != 0;
  if (run.isStorage && run.classifierRan == 0) {
    const uint32_t result = ClassifyCompoundDocument(run.stream, run.extension.data(), idOut);
    if (*idOut != kFormatUnknown && *idOut != kNoMatch) {
      evidence->basis = kFiBasisContent;
      if (asksFurther) RefineOrCorrect(run, behaviour, idOut, evidence);
      return result;
    }
  }
  *idOut = kFormatUnknown;
  if (!run.isStorage) {
    IdentifyRest(run, behaviour, idOut, evidence);
  } else if (asksFurther) {
    Refine(run, idOut, evidence);
  }
  Rewind(run.stream->handle);
  return kFiOk;
}

// Formats whose probe decrypts, and reports beside the identifier how that went.
bool ReportsDecryption(FormatId id) {
  return id == kFormatEncryptedOfficeXml || id == kFormatEncryptedIWork;
}

// Passes the answer of a signature through the rules that apply to all of them.
uint32_t FinishMatch(SignatureRun& run, bool isProtected, uint32_t behaviour, FormatId* idOut,
                     FIEvidence* evidence) {
  IOHandle* handle = run.stream->handle;
  Rewind(handle);
  if (isProtected) {
    *idOut = ProtectedFormat(*idOut);
  } else if (ReportsDecryption(*idOut) && run.status != kFiPasswordNeeded) {
    return run.status;
  }
  if (*idOut == kFormatPlainUtf8Text && (behaviour & kBehaviourDelimited) != 0) {
    if (const ScopedStream fresh(handle); fresh) *idOut = RefineDelimitedText(fresh.get(), *idOut);
    Rewind(handle);
  }
  if ((behaviour & kBehaviourSupplement) != 0) {
    RefineOrCorrect(run, behaviour, idOut, evidence);
    Rewind(handle);
  }
  return kFiOk;
}

// What the content alone makes of the file; the answer may be corrected in its turn, but for those
// by name.
FormatId IdentifyWithoutName(const SignatureRun& run, uint32_t behaviour) {
  SignatureRun unnamed;
  unnamed.stream = run.stream;
  unnamed.isStorage = run.isStorage;
  unnamed.classId = run.classId;
  const WalkResult match = WalkSignatures(unnamed);
  FormatId id = match.id;
  FIEvidence evidence{kFiBasisNone, match.row};
  const uint32_t status =
      id == kNoMatch ? IdentifyUnmatched(unnamed, behaviour, &id, &evidence)
                     : FinishMatch(unnamed, false, behaviour, &id, &evidence);
  return status == kFiOk ? id : kNoMatch;
}

uint32_t IdentifyDecrypted(IOHandle* handle, FormatId* idOut) {
  return IdentifyHandle(handle, 0, idOut, nullptr);
}

}  // namespace

constinit const IdentificationJob kHostJob = {IdentifyDecrypted, RelayPasswordRequest};

uint32_t IdentifyHandle(IOHandle* handle, uint32_t flags, FormatId* idOut, FIEvidence* evidence) {
  FIEvidence unused{};
  if (evidence == nullptr) evidence = &unused;
  *evidence = {};
  const ScopedStream stream(handle, kHostJob);
  if (!stream) {
    *idOut = kFormatUnknown;
    return FI_NO_STREAM;
  }
  *idOut = kNoMatch;
  SignatureRun run;
  run.stream = stream.get();
  uint32_t behaviour = Behaviour(flags);
  if ((flags & kFiSupplement) != 0) behaviour |= kBehaviourSupplement;
  run.isStorage = ReadClassId(handle, run.classId);
  run.extension = ReadExtension(handle);
  const bool isProtected = run.isStorage && CheckDrmContentStream(run.stream);
  if ((flags & kFiClassOnly) != 0) return IdentifyByClass(run, idOut, evidence);

  const WalkResult match = WalkSignatures(run);
  *idOut = match.id;
  if (match.id == kNoMatch) return IdentifyUnmatched(run, behaviour, idOut, evidence);
  if (match.id != kFormatUnknown) *evidence = {BasisOfRow(match.row), match.row};
  return FinishMatch(run, isProtected, behaviour, idOut, evidence);
}

}  // namespace fi
