/*
 * One call that identifies any source:
 *
 *   FIRequest request = FI_REQUEST_INIT;
 *   FIResult result = FI_RESULT_INIT;
 *   request.source.kind = kFiSourcePath;
 *   request.source.path = "report.doc";
 *   if (FIIdentify(&request, &result) == kFiOk) puts(result.name);
 *
 * FI_REQUEST_INIT turns everything on (kFiEverything) and leaves the limits at their defaults.
 *
 * Everything that a job needs stands in its request: FIIdentify reads and sets no option and no
 * data of the process, so that jobs with different settings never meet. Any number of threads may
 * identify at once. One identification runs in the calling thread from start to end, and so do the
 * callbacks of its request. FIInit need not be called. Callbacks may identify other sources.
 *
 * Records grow at their end. A caller sets `size` to the size that it was compiled with, which the
 * INIT macros do, and the library leaves alone what lies behind it.
 */
#ifndef FI_FORMATID_IDENTIFY_H_
#define FI_FORMATID_IDENTIFY_H_

#include <stddef.h>
#include <stdint.h>

#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "formatid/properties.h"
#include "formatid/version.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Stands for a size that is not known, and in FILimits for no limit. */
#define FI_UNKNOWN_SIZE UINT64_MAX
#define FI_NO_LIMIT UINT64_MAX

/* Kinds of source, with the fields of FISource that each takes. `name` belongs to all of them. */
enum {
  /* path: in the file system's own bytes, NUL-terminated. Regular files only (io.h). */
  kFiSourcePath = 1,
  /* widePath: the same in UTF-16. */
  kFiSourceWidePath = 2,
  /* data, size: a whole file in memory. */
  kFiSourceMemory = 3,
  /* descriptor: an open regular file. Its position is neither used nor moved. */
  kFiSourceDescriptor = 4,
  /* readAt, context, size or FI_UNKNOWN_SIZE: whatever the host reads from. */
  kFiSourceCallbacks = 5,
  /* parts, partCount, size or FI_UNKNOWN_SIZE: what is known of a file so far. */
  kFiSourceParts = 6,
};

/* Results of a readAt callback beside 0. Any other value is taken as an errno. */
enum {
  /* These bytes exist, but they are not to be had now: FIResult tells which they are. */
  kFiReadMissing = -1,
};

/*
 * Stores up to `size` bytes of the source from `offset` on, and their number in `*count`. Fewer
 * than asked for is normal; none means that the source ends at or before `offset`. `*count` is 0
 * on entry. Returns 0, kFiReadMissing or an errno. A C++ callback that throws counts as EIO.
 */
typedef int32_t (*FIReadAt)(void* context, uint64_t offset, void* buffer, uint32_t size,
                            uint32_t* count);

/* Bytes of a file that are known. */
typedef struct FIPart {
  uint64_t offset;
  uint64_t size; /* bytes */
  const void* data;
} FIPart;

/* Where the bytes come from. Everything is borrowed for the call. */
typedef struct FISource {
  uint32_t kind;
  int32_t descriptor;
  /* The file's name, of which the extension counts: UTF-8, with or without directories. NULL takes
   * the name of the path, or none. */
  const char* name;
  const char* path;
  const uint16_t* widePath;
  const void* data;
  uint64_t size; /* bytes */
  FIReadAt readAt;
  void* context; /* of readAt */
  /* In any order; where two overlap, either is taken. The beginning of a file is one part at
   * offset 0. */
  const FIPart* parts;
  uint32_t partCount;
  uint32_t reserved; /* 0 */
} FISource;

/* Flags of FIRequest are kFiTextFallback, kFiDelimitedText and kFiSupplement (formatid.h), in
 * effect without kFiUseFlags, and kFiEverything for all. Without a flag there are the signatures of
 * the fixed catalogue alone. */

/* What one identification may cost. 0 stands for the default, FI_NO_LIMIT for none. The defaults
 * are counts, so that an answer does not depend on the machine. */
typedef struct FILimits {
  uint64_t bytesRead;     /* of the source */
  uint64_t reads;         /* of the source */
  uint64_t bytesInflated; /* that unpacking yields */
  uint64_t steps;         /* inside the file: sectors followed, entries looked at, members read */
  uint64_t memory;        /* bytes held at once, beyond what every file takes */
  uint64_t keyRounds;     /* of key derivation, all passwords together */
  uint64_t depth;         /* containers in containers */
  uint64_t milliseconds;  /* of time; 0: none, since a clock makes answers depend on the machine */
} FILimits;

/* The limits of FILimits, as FIResult names the one that was reached. */
enum {
  kFiLimitNone = 0,
  kFiLimitBytesRead = 1,
  kFiLimitReads = 2,
  kFiLimitBytesInflated = 3,
  kFiLimitSteps = 4,
  kFiLimitMemory = 5,
  kFiLimitKeyRounds = 6,
  kFiLimitDepth = 7,
  kFiLimitTime = 8,
};

typedef struct FIRequest FIRequest;

/*
 * Stores a password in `ask` and returns 0; any other value declines. `request` is the one that was
 * given to FIIdentify. A document is asked for up to three times.
 */
typedef uint32_t (*FIPasswordOf)(void* context, const FIRequest* request, FIPasswordRequest* ask);

/* Asked again and again, at the latest after 64 reads or steps: other than 0 ends the
 * identification with kFiCancelled. */
typedef int32_t (*FICancel)(void* context);

/* What a trace record tells. The fields that it uses stand behind each. */
enum {
  kFiTraceRow = 1,       /* text, row, id, number: a row of that table of signatures matched */
  kFiTraceProbe = 2,     /* number, id: a probe was asked and found id; 0: nothing */
  kFiTraceRead = 3,      /* offset, count: bytes of the source were read */
  kFiTraceMember = 4,    /* text: a member of a package was opened */
  kFiTraceStream = 5,    /* text: a stream or storage of a compound file was opened */
  kFiTraceCandidate = 6, /* text, id: what spoke for id did not hold; text is the reason */
  kFiTraceAnswer = 7,    /* id: the answer */
};

/* The tables of signatures. */
enum { kFiCatalogue = 0, kFiSupplementTable = 1 };

/* A step of an identification. It is valid during the call of the callback. */
typedef struct FITraceRecord {
  uint32_t size; /* of this record in bytes */
  uint32_t kind;
  const char* text; /* never NULL */
  uint16_t id;
  uint16_t row; /* from 1 */
  uint32_t number;
  uint64_t offset;
  uint64_t count; /* bytes */
} FITraceRecord;

typedef void (*FITrace)(void* context, const FITraceRecord* record);

/* What FIIdentify is to do. */
struct FIRequest {
  uint32_t size; /* of this record in bytes */
  uint32_t flags;
  FISource source;
  FILimits limits;
  FIPasswordOf password; /* NULL: there is none */
  void* passwordContext;
  FICancel cancel; /* NULL: never */
  void* cancelContext;
  FITrace trace; /* NULL: nothing is told, at no cost */
  void* traceContext;
  FIProperties* properties; /* filled; NULL: none are read, at no cost */
};

#ifdef __cplusplus
#define FI_REQUEST_INIT                                                                    \
  {                                                                                        \
    sizeof(FIRequest), kFiEverything, {}, {}, nullptr, nullptr, nullptr, nullptr, nullptr, \
        nullptr, nullptr                                                                   \
  }
#else
#define FI_REQUEST_INIT \
  { .size = sizeof(FIRequest), .flags = kFiEverything }
#endif

/* Statuses of FIIdentify beside those of formatid.h: kFiOk, kFiAccessDenied, kFiNotFound,
 * kFiPasswordNeeded, kFiDecryptionFailed and kFiWrongPassword. FIStatusText says each in words. */
enum {
  kFiNotOpened = 5001,      /* the source does not open; `error` tells why */
  kFiReadFailed = 5002,     /* a read failed; `error` is its errno, the answer the best so far */
  kFiLimitReached = 5003,   /* `limit` tells which; the answer is the best so far */
  kFiCancelled = 5004,      /* by the request's callback */
  kFiNoMemory = 5005,       /* memory ran out; the answer is the best so far */
  kFiInvalidRequest = 5006, /* the request or result is not as this header says */
};

/* Whether the file's extension is one of those that the format has. */
enum {
  kFiFitUnknown = 0, /* no extension, none is known of the format, or the answer is general */
  kFiFits = 1,
  kFiFitsNot = 2,
};

/* What of an incomplete source may change the answer. */
enum {
  kFiMoreNone = 0,  /* nothing: the whole file would give the same answer */
  kFiMoreBytes = 1, /* wantedOffset and wantedSize tell which bytes to get next */
  kFiMoreSize = 2,  /* the size of the file, of which the end matters */
};

/* What FIIdentify found. The texts belong to the library, live as long as it is loaded, and are
 * never NULL. */
typedef struct FIResult {
  uint32_t size; /* of this record in bytes */
  uint32_t status;
  uint16_t id;    /* kFormatUnknown: none */
  uint16_t basis; /* kFiBasisNone (platform.h) only for kFormatUnknown */
  uint16_t row;   /* of the table of signatures that decided, from 1; 0: none; of a correction the
                   * identifier that it corrects (kFiBasisCorrection) */
  uint16_t extensionFit;
  const char* name;       /* "Portable Document Format (PDF)" */
  const char* mimeType;   /* "application/pdf"; empty: none is known */
  const char* extensions; /* without dot, the usual one first, divided by commas */
  const char* puids;      /* identifiers of the PRONOM registry, divided by commas */
  const char* category;   /* "word-processing" */
  int32_t error;          /* errno, 0: none */
  uint32_t limit;         /* the first limit that was reached */
  uint64_t fileSize;      /* bytes; FI_UNKNOWN_SIZE where the request left it open */
  uint32_t more;
  uint32_t reserved;
  uint64_t wantedOffset;
  uint64_t wantedSize; /* bytes, not beyond the end of the file */
  FILimits spent;      /* memory and depth: the most at once; milliseconds: 0 */
} FIResult;

#ifdef __cplusplus
#define FI_RESULT_INIT                                                                           \
  {                                                                                              \
    sizeof(FIResult), 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, \
        0, 0, {}                                                                                 \
  }
#else
#define FI_RESULT_INIT \
  { .size = sizeof(FIResult) }
#endif

/*
 * Identifies the source of the request, fills the result and returns its status. Whatever the
 * status, the result holds an answer; it is kFormatUnknown where nothing could be read.
 *
 * kFiInvalidRequest: a record is NULL or smaller than in the first release that had it, a larger
 * one has bytes set that this library does not know, a flag or a kind is not known, or the source
 * lacks what its kind needs. The result is filled where it is usable.
 *
 * Encrypted documents that a password opens: without one the identifier is that of the format as
 * far as it is told, and the status is kFiPasswordNeeded, kFiWrongPassword or kFiDecryptionFailed.
 * With a password that fits, the status is kFiOk. Other encrypted formats, and those that a name's
 * extension tells, have identifiers of their own and the status kFiOk.
 */
FI_API uint32_t FIIdentify(const FIRequest* request, FIResult* result) FI_NOEXCEPT;

/* The version of the library, "0.1.0", and as FI_VERSION_NUMBER counts it. */
FI_API const char* FIVersion(void) FI_NOEXCEPT;
FI_API uint32_t FIVersionNumber(void) FI_NOEXCEPT;

/* A status of any function of the library, a basis and a limit in words: "password needed". A value
 * that is none of them gives "unknown". Static texts. */
FI_API const char* FIStatusText(uint32_t status) FI_NOEXCEPT;
FI_API const char* FIBasisText(uint16_t basis) FI_NOEXCEPT;
FI_API const char* FILimitText(uint32_t limit) FI_NOEXCEPT;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* FI_FORMATID_IDENTIFY_H_ */
