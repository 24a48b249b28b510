/*
 * The toolkit's side of the interface: the option store, global data, and the names and facts of
 * the formats. Everything here is thread-safe.
 */
#ifndef FI_FORMATID_PLATFORM_H_
#define FI_FORMATID_PLATFORM_H_

#include <stdint.h>

#include "formatid/formatid.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct UTOptionSet UTOptionSet;

/* Options of the global set; each holds a 32-bit value. */
enum {
  /* Size of the read buffer in KB, 1..65536; unset, or outside that range: 2. */
  kUtOptionBufferSize = 112,
  /* Bit set; FIInit sets bit value 4. */
  kUtOptionClients = 338482,
  /* Behaviour word. Bit value 1: text fallback allowed; 2: delimited-text refinement allowed. */
  kUtOptionBehaviour = 338486,
};

/* The option set of this process; NULL when there is none. It is never released. */
FI_API UTOptionSet* UTGetGlobalOptionSet(void) FI_NOEXCEPT;

/*
 * Reads an option into `value`. `*size` holds the room in bytes on the way in and the stored size
 * on the way out. Returns 0, or another value when the option is not set or does not fit.
 */
FI_API uint32_t UTGetOption(UTOptionSet* set, uint32_t option, void* value,
                            uint32_t* size) FI_NOEXCEPT;

/* Sets an option to `size` bytes of `value`; size is 4. Returns 0 on success. */
FI_API uint32_t UTSetOption(UTOptionSet* set, uint32_t option, const void* value,
                            uint32_t size) FI_NOEXCEPT;

/* UTGetOption on the global set. */
FI_API uint32_t UTGetGlobalOption(uint32_t option, void* value, uint32_t* size) FI_NOEXCEPT;

/* What the password callback is asked for: its `code`. */
enum {
  /* The password of an encrypted package. `first` and `second` are 0. */
  kFiPasswordOfPackage = 1,
};

/*
 * What the password callback is asked with. The callback stores a NUL-terminated UTF-8 password of
 * at most `capacity` bytes, the NUL included, and returns 0; any other result declines. `attempts`
 * is the number of times that it was asked before for this document. The record belongs to the
 * library and lives for the call, and so does the password, which is wiped afterwards.
 */
typedef struct FIPasswordRequest {
  uint32_t size; /* of this record in bytes */
  uint32_t capacity;
  char* password;
  IOHandle* document; /* borrowed; may be NULL */
  uint32_t attempts;
} FIPasswordRequest;

typedef uint32_t (*FIPasswordCallback)(uint32_t code, FIPasswordRequest* request, uintptr_t first,
                                       uintptr_t second);

/* Result that stands for "no callback is registered". */
enum { kFiNoCallback = 25 };

/* Global data items. */
enum {
  /* FIPasswordCallback*: a slot of the host that holds its password callback. */
  kUtDataPasswordCallback = 30,
};

/* Stores the pointer of a global data item in `*out` (NULL when it was never set); 0 on success. */
FI_API uint32_t UTGetGlobalData(uint32_t item, void** out) FI_NOEXCEPT;

/* Sets a global data item. What `data` points to must outlive its use. 0 on success. */
FI_API uint32_t UTSetGlobalData(uint32_t item, void* data) FI_NOEXCEPT;

/*
 * Stores the string resource `id` (a FormatId with 0x10000 added), cut to fit and NUL-terminated.
 * `flags` is reserved: pass 0. Returns 0 when the string exists; otherwise another value, with an
 * empty text in the buffer. `buffer` may be NULL to ask only whether it exists.
 */
FI_API uint32_t UTGetString(uint32_t id, char* buffer, uint16_t size, uint32_t flags) FI_NOEXCEPT;

/* Start and end of a client's use of the toolkit. UTInit returns 0, or 0x900 when the process was
 * initialised before; both are success. */
FI_API uint32_t UTInit(uint32_t client, void* a, void* b, void* c) FI_NOEXCEPT;
FI_API uint32_t UTDeInit(void* a, void* b, void* c) FI_NOEXCEPT;

/* What is known about a format. The texts are static, never NULL, and empty where nothing is known;
 * lists are separated by commas. */
typedef struct FIFormatFacts {
  FormatId id;
  const char* name;
  const char* category;   /* "word-processing", "archive" ... */
  const char* mimeType;   /* "application/pdf" */
  const char* extensions; /* without dot, the usual one first: "jpg,jpeg" */
  const char* puids;      /* identifiers of the PRONOM registry */
} FIFormatFacts;

/* Stores the facts of a format and returns 0; another value when the identifier has no name. */
FI_API uint32_t UTGetFormatFacts(FormatId id, FIFormatFacts* facts) FI_NOEXCEPT;

/* What an answer rests on. */
enum {
  kFiBasisNone = 0,      /* nothing: the answer is kFormatUnknown */
  kFiBasisSignature = 1, /* bytes at fixed places */
  kFiBasisClass = 2,     /* class identifier of a storage */
  kFiBasisNamespace = 3, /* namespace of an XML document's root */
  kFiBasisExtension = 4, /* the file name's extension, with no byte to support it */
  kFiBasisContent = 5,   /* a look inside by a probe made for the format or its container */
  kFiBasisText = 6,      /* the statistics of plain text */

  /* Added to one of these with kFiSupplement: the content proves the answer of the fixed rules
   * false. `signature` is then the identifier that they answer. */
  kFiBasisCorrection = 256,
};

/* How an identification came to its answer. */
typedef struct FIEvidence {
  uint16_t basis;
  uint16_t signature; /* number of the deciding row of the signature table from 1; 0: none */
} FIEvidence;

/* FIIdHandle, which also fills `evidence`. */
FI_API uint32_t FIIdHandleEvidence(IOHandle* handle, uint32_t flags, FormatId* idOut,
                                   FIEvidence* evidence) FI_NOEXCEPT;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* FI_FORMATID_PLATFORM_H_ */
