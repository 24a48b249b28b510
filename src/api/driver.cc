#include "api/driver.h"

#include <optional>

#include "api/corrections.h"
#include "api/extension.h"
#include "api/password_relay.h"
#include "api/protected_formats.h"
#include "api/supplement.h"
#include "platform/delimited_text.h"
#include "platform/io.h"
#include "platform/no_throw.h"
#include "platform/trace.h"
#include "probes/protection/rights_management.h"
#include "probes/storage/classifier.h"
#include "probes/storage/message_class.h"
#include "probes/text/plain_text.h"
#include "registry/format_ids.h"
#include "signature/interpreter.h"
#include "stream/id_stream.h"
#include "tables/signature_table.h"
#include "tables/supplement_table.h"

namespace fi {
namespace {

// The walks over the tables: what a caller who asked for a trace is told of costs nobody else.
struct Walks {
  WalkResult (*signatures)(SignatureRun& run);
  WalkResult (*supplement)(SignatureRun& run);
  void (*drop)(const SignatureRun& run, FormatId id, const char* reason);  // of a candidate
};

constexpr void DropSilently(const SignatureRun& /*run*/, FormatId /*id*/, const char* /*reason*/) {}

void TellDropped(const SignatureRun& run, FormatId id, const char* reason) {
  if (id == kNoMatch) return;
  Tell(run.stream->job->work, {.kind = kFiTraceCandidate, .text = reason, .id = id});
}

constexpr Walks kPlainWalks = {WalkSignatures, WalkSupplement, DropSilently};
constexpr Walks kTracedWalks = {WalkSignaturesTraced, WalkSupplementTraced, TellDropped};

// Bits of option 338486.
constexpr uint32_t kOptionText = 1;
constexpr uint32_t kOptionDelimited = 2;

// Takes the behaviour from the flags and publishes it, or from the option. An option that is not
// set, or cannot be read, allows nothing. The supplement is asked by a flag alone.
Behaviour BehaviourOfHost(uint32_t flags) {
  UTOptionSet* set = UTGetGlobalOptionSet();
  Behaviour behaviour;
  behaviour.supplement = (flags & kFiSupplement) != 0;
  uint32_t word = 0;
  if ((flags & kFiUseFlags) != 0) {
    behaviour.text = (flags & kFiTextFallback) != 0;
    behaviour.delimited = (flags & kFiDelimitedText) != 0;
    word = (behaviour.text ? kOptionText : 0) | (behaviour.delimited ? kOptionDelimited : 0);
    if (set != nullptr) (void)UTSetOption(set, kUtOptionBehaviour, &word, sizeof(word));
    return behaviour;
  }
  uint32_t size = sizeof(word);
  if (set == nullptr || UTGetOption(set, kUtOptionBehaviour, &word, &size) != 0) return behaviour;
  behaviour.text = (word & kOptionText) != 0;
  behaviour.delimited = (word & kOptionDelimited) != 0;
  return behaviour;
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

Answer IdentifyByClass(const SignatureRun& run) {
  const std::optional<FormatId> known = KnownClass(run.classId);
  if (!known.has_value()) return {kFiUnknownClass, kNoMatch, {}};
  return {kFiOk, MapMessageClass(run.stream, *known), {kFiBasisClass, 0}};
}

// Lets the sniffer look whether text is delimited.
FormatId RefineDelimitedText(IdentificationStream* stream, FormatId id) {
  CsvSniffer sniffer{};
  if (InitCSV(&sniffer, stream, id) != 0) return id;
  const bool delimited = IsCSV(&sniffer) == 1;
  DeinitCSV(&sniffer);
  return delimited ? sniffer.id : id;
}

FormatId FallBackToText(IdentificationStream* stream, const Behaviour& behaviour) {
  if (!behaviour.text) return kFormatUnknown;
  const FormatId id = ClassifyPlainText(stream);
  if (id == kFormatUnknown || !behaviour.delimited) return id;
  return RefineDelimitedText(stream, id);
}

Answer AnswerOf(const SupplementAnswer& found) { return {kFiOk, found.id, {found.basis, 0}}; }

// Puts what the supplement knows in the place of a general answer. The status stays.
Answer Refine(SignatureRun& run, Answer answer) {
  const SupplementAnswer found = RefineGeneralAnswer(run, answer.id);
  if (!found) return answer;
  return {answer.status, found.id, {found.basis, 0}, answer.decryption};
}

FormatId IdentifyWithoutName(const SignatureRun& run, const Behaviour& behaviour);

// Looks further: into what a general answer stands for, or whether a specific one is false. The
// evidence of a correction says what it corrects.
Answer RefineOrCorrect(SignatureRun& run, const Answer& answer, const Behaviour& behaviour) {
  if (IsGeneralAnswer(answer.id)) return Refine(run, answer);
  const FixedAnswer fixed = {answer.id, answer.evidence.signature, behaviour, IdentifyWithoutName};
  const FormatId id = CorrectionOf(run, fixed);
  if (id == kNoMatch) return answer;
  constexpr uint16_t kBasis = kFiBasisContent | kFiBasisCorrection;
  return {answer.status, id, {kBasis, static_cast<uint16_t>(answer.id)}, answer.decryption};
}

// A file that is no storage and that no signature claimed: the text fallback and, where it is asked
// for, the supplement. Delimited text is a specific answer, which the supplement must leave alone.
// A file with a beginning that no text has is not read further for the text fallback.
template <const Walks& kWalks>
Answer IdentifyRest(SignatureRun& run, const Behaviour& behaviour) {
  SupplementAnswer further;
  if (behaviour.supplement) {
    further = SupplementAnswerOf(kWalks.supplement(run));
    // It also leaves the head of the file in the stream's buffer, where the fallback looks first.
    const bool isBinary = BeginsBinary(run.stream);
    if (further && isBinary) return AnswerOf(further);
  }
  Answer answer{kFiOk, FallBackToText(run.stream, behaviour), {}};
  if (answer.id != kFormatUnknown) answer.evidence.basis = kFiBasisText;
  if (!behaviour.supplement) return answer;
  if (!IsGeneralAnswer(answer.id)) {
    kWalks.drop(run, further.id, "the text is delimited");
    return RefineOrCorrect(run, answer, behaviour);
  }
  return further ? AnswerOf(further) : Refine(run, answer);
}

// No signature claimed the file: the classifier, then the fallbacks, then unknown.
template <const Walks& kWalks>
Answer IdentifyUnmatched(SignatureRun& run, const Behaviour& behaviour) {
  if (run.isStorage && run.classifierRan == 0) {
    FormatId id = kNoMatch;
    const uint32_t status = ClassifyCompoundDocument(run.stream, run.extension.data(), &id);
    if (id != kFormatUnknown && id != kNoMatch) {
      const Answer answer{status, id, {kFiBasisContent, 0}, status};
      return behaviour.supplement ? RefineOrCorrect(run, answer, behaviour) : answer;
    }
  }
  Answer answer;
  if (!run.isStorage) {
    answer = IdentifyRest<kWalks>(run, behaviour);
  } else if (behaviour.supplement) {
    answer = Refine(run, answer);
  }
  Rewind(run.stream->handle);
  return answer;
}

// Formats whose probe decrypts, and reports beside the identifier how that went.
bool ReportsDecryption(FormatId id) {
  return id == kFormatEncryptedOfficeXml || id == kFormatEncryptedIWork;
}

// Passes the answer of a signature through the rules that apply to all of them.
Answer FinishMatch(SignatureRun& run, const WalkResult& match, bool isProtected,
                   const Behaviour& behaviour) {
  Answer answer{kFiOk, match.id, {}};
  if (match.id != kFormatUnknown) answer.evidence = {BasisOfRow(match.row), match.row};
  IOHandle* handle = run.stream->handle;
  Rewind(handle);
  if (isProtected) {
    answer.id = ProtectedFormat(answer.id);
    // A class may say no more than that nothing is known: the answer rests on it all the same.
    answer.evidence = {BasisOfRow(match.row), match.row};
  } else if (ReportsDecryption(answer.id)) {
    answer.decryption = run.status;
    if (run.status != kFiPasswordNeeded) {
      answer.status = run.status;
      return answer;
    }
  }
  if (answer.id == kFormatPlainUtf8Text && behaviour.delimited) {
    if (const ScopedStream fresh(handle, *run.stream->job); fresh) {
      answer.id = RefineDelimitedText(fresh.get(), answer.id);
    }
    Rewind(handle);
  }
  if (behaviour.supplement) {
    answer = RefineOrCorrect(run, answer, behaviour);
    Rewind(handle);
  }
  return answer;
}

// What the content alone makes of the file. The answer may be corrected in its turn, but for those
// by name.
FormatId IdentifyWithoutName(const SignatureRun& run, const Behaviour& behaviour) {
  SignatureRun unnamed;
  unnamed.stream = run.stream;
  unnamed.isStorage = run.isStorage;
  unnamed.classId = run.classId;
  const WalkResult match = WalkSignatures(unnamed);
  const Answer answer = match.id == kNoMatch ? IdentifyUnmatched<kPlainWalks>(unnamed, behaviour)
                                             : FinishMatch(unnamed, match, false, behaviour);
  return answer.status == kFiOk ? answer.id : kNoMatch;
}

template <const Walks& kWalks>
Answer IdentifyBy(IdentificationStream* stream, const Behaviour& behaviour, bool classOnly) {
  SignatureRun run;
  run.stream = stream;
  run.isStorage = ReadClassId(stream->handle, run.classId);
  run.extension = ReadExtension(stream->handle);
  const bool isProtected = run.isStorage && CheckDrmContentStream(stream);
  if (classOnly) return IdentifyByClass(run);
  const WalkResult match = kWalks.signatures(run);
  return match.id == kNoMatch ? IdentifyUnmatched<kWalks>(run, behaviour)
                              : FinishMatch(run, match, isProtected, behaviour);
}

Answer IdentifyDecrypted(const IdentificationJob& job, IOHandle* handle) {
  return IdentifyForJob(job, handle, 0);
}

}  // namespace

constinit const IdentificationJob kHostJob = {IdentifyDecrypted, RelayPasswordRequest};

Answer IdentifyStream(IdentificationStream* stream, const Behaviour& behaviour, bool classOnly) {
  return IdentifyBy<kPlainWalks>(stream, behaviour, classOnly);
}

Answer IdentifyTraced(IdentificationStream* stream, const Behaviour& behaviour) {
  const Answer answer = IdentifyBy<kTracedWalks>(stream, behaviour, false);
  Tell(stream->job->work, {.kind = kFiTraceAnswer,
                           .id = answer.id != kNoMatch ? answer.id : FormatId{kFormatUnknown}});
  return answer;
}

Answer IdentifyHandle(IOHandle* handle, uint32_t flags) {
  return IdentifyForJob(kHostJob, handle, flags);
}

Answer IdentifyWithWork(IOHandle* handle, uint32_t flags, Work* work) {
  IdentificationJob job = kHostJob;
  job.work = work;
  const auto body = [&] { return IdentifyForJob(job, handle, flags); };
  const Answer answer = NoThrow<Answer>({.status = FI_NO_STREAM}, body);
  // A handle there is, so that only memory was missing.
  if (answer.status == FI_NO_STREAM) work->noMemory = true;
  return answer;
}

Answer IdentifyForJob(const IdentificationJob& job, IOHandle* handle, uint32_t flags) {
  const ScopedStream stream(handle, job);
  if (!stream) return {.status = FI_NO_STREAM};
  return IdentifyStream(stream.get(), BehaviourOfHost(flags), (flags & kFiClassOnly) != 0);
}

}  // namespace fi
