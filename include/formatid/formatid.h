/*
 * formatid: names the format of a file from its bytes.
 *
 * New programs call FIIdentify (formatid/identify.h), which takes any source, has limits, tells
 * failures apart and shares nothing between jobs. The functions of this header are what came before
 * it; their answers never change.
 *
 *   FormatId id;
 *   char name[256];
 *   uint16_t status = FIIdFileEx(kIoSourcePath, "report.doc", kFiEverything, &id, name, 256);
 *
 * All functions are thread-safe as long as each thread uses handles of its own. Identifications
 * with different behaviour flags and kFiUseFlags publish them in one process-wide option (338486),
 * where the last writer wins; what a call itself does is decided by its own flags. A call without
 * kFiUseFlags does what that option says when it is made.
 *
 * No limit but those that keep memory safe holds here: a hostile file may take seconds. A read that
 * fails counts as the end of the data. No file is ever changed.
 *
 * Pointers may be NULL only where that is said; any other NULL crashes.
 */
#ifndef FI_FORMATID_FORMATID_H_
#define FI_FORMATID_FORMATID_H_

#include <stdint.h>

#include "formatid/io.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Identifies a format. Named identifiers lie in 1000..9998; see docs/formats.md. */
typedef uint16_t FormatId;

enum {
  /* Nothing was recognised. */
  kFormatUnknown = 1999,
};

/* Flags of FIIdHandle, FIIdFile and FIIdFileEx. */
enum {
  /* What no signature names may be called text. Effective only with kFiUseFlags. */
  kFiTextFallback = 1,
  /* Take kFiTextFallback and kFiDelimitedText from the flags, not from option 338486, and publish
   * them there. FIIdFile and FIIdFileEx always set it. */
  kFiUseFlags = 2,
  /* Identify a storage by its class identifier alone. The answer is of a mail item: 1143, 1311 or
   * one of their kinds. Where the handle is no storage, or its class is all zero, it is 1311 as
   * well, with status 0; ask whether it is a storage (kIoInfoIsStorage) before. */
  kFiClassOnly = 4,
  /* Tell delimited text (CSV and the like) apart from other text. Effective only with kFiUseFlags.
   */
  kFiDelimitedText = 8,
  /* Look further where the answer would be general (unknown, ZIP archive, Ogg or ISO media of some
   * kind, message item whose class is in UTF-16) or, with kFiTextFallback and kFiUseFlags, plain
   * text: more formats, whose identifiers are 3000 to 3999, and files of a known format that its
   * signatures do not see, damaged ones among them. Corrects what is proven false. */
  kFiSupplement = 16,

  /* All that finds more: kFiTextFallback alone leaves three times as many files unknown. */
  kFiEverything = kFiTextFallback | kFiDelimitedText | kFiSupplement,
};

/* Statuses of FIIdHandle. */
enum {
  kFiOk = 0,
  /* Encrypted content, and no password was given. */
  kFiPasswordNeeded = 11,
  /* Encrypted content that is damaged, or in a scheme that is not known. */
  kFiDecryptionFailed = 14,
  /* Class-only mode: the class identifier is not a known one. */
  kFiUnknownClass = 15,
  /* Encrypted content, and no password that was given fits. */
  kFiWrongPassword = 3328,
};

/* No stream could be made over the handle. */
#define FI_NO_STREAM 0xFFFFFFFFu

/* Statuses of FIIdFile when the file does not open. */
enum {
  kFiAccessDenied = 7,
  kFiNotFound = 58,
  /* The file did not open for another reason, with identifier 0; or no stream could be made over
   * it (the low half of FI_NO_STREAM), with identifier kFormatUnknown. */
  kFiOpenFailed = 65535,
};

/*
 * Prepares the library for the calling process. `ignored` is not used; `a`, `b` and `c` go to the
 * toolkit as they are (pass NULL). Returns 0, also when it was called before.
 */
FI_API uint32_t FIInit(void* ignored, void* a, void* b, void* c) FI_NOEXCEPT;

/* Ends what FIInit began. The arguments go to the toolkit as they are (pass NULL). */
FI_API uint32_t FIDeInit(void* a, void* b, void* c) FI_NOEXCEPT;

/*
 * Walks the identifiers that have a name, in rising order:
 *
 *   for (more = FIGetFirstId(&cursor, &id, name, size); more;
 *        more = FIGetNextId(&cursor, &id, name, size)) ...
 *
 * Each returns 1 while it found an identifier, with its name in `nameBuffer` (cut to fit, always
 * NUL-terminated), and 0 at the end, where `*cursor` and `*idOut` are 9999. A call of FIGetNextId
 * behind the end wraps: it starts again at the first identifier. `cursor` belongs to the caller;
 * walks with their own cursors are independent. `nameBuffer` may be NULL, the other pointers not.
 */
FI_API uint16_t FIGetFirstId(uint16_t* cursor, uint16_t* idOut, char* nameBuffer,
                             uint16_t nameBufferSize) FI_NOEXCEPT;
FI_API uint16_t FIGetNextId(uint16_t* cursor, uint16_t* idOut, char* nameBuffer,
                            uint16_t nameBufferSize) FI_NOEXCEPT;

/*
 * Stores the name of an identifier from 1000 to 5102 (ASCII, cut to fit, NUL-terminated) and
 * returns its length in bytes. Any other identifier, or one without a name, gives an empty text and
 * 0. `nameBuffer` may be NULL: then nothing is stored, and the answer is 0.
 */
FI_API uint16_t FIGetIDString(FormatId id, char* nameBuffer, uint16_t nameBufferSize) FI_NOEXCEPT;

/*
 * Opens what `sourceType` and `source` name (io.h), identifies it and closes it again. Returns the
 * low 16 bits of FIIdHandle's status, or kFiNotFound, kFiAccessDenied or kFiOpenFailed with
 * `*idOut` 0 when it does not open. `source` and `idOut` may be NULL; without a source nothing
 * opens.
 */
FI_API uint16_t FIIdFile(uint32_t sourceType, const void* source, uint32_t flags,
                         FormatId* idOut) FI_NOEXCEPT;

/* FIIdFile, and the name of the identifier when the status is 0 and `nameBuffer` is not NULL. */
FI_API uint16_t FIIdFileEx(uint32_t sourceType, const void* source, uint32_t flags, FormatId* idOut,
                           char* nameBuffer, uint16_t nameBufferSize) FI_NOEXCEPT;

/*
 * Identifies an open handle, which stays the caller's and is left at its start (in class-only mode,
 * and where the compound-document classifier decides after the signatures, it stays where it was).
 *
 * Returns 0 for a completed identification, with `*idOut` kFormatUnknown when nothing was
 * recognised; FI_NO_STREAM when no stream could be made over the handle; kFiUnknownClass in
 * class-only mode; for encrypted packages the status of the decryption beside the identifier of the
 * encrypted format.
 *
 * Encrypted documents: for 1819 and 1834 a missing password counts as success, unless the
 * classifier decided after the signatures. So status 0 with one of these identifiers means an
 * encrypted document of which no more is known, and a status of 11, 14 or 3328 one that was not
 * opened. FIIdentify gives kFiPasswordNeeded in each of these cases.
 *
 * `handle` may be NULL, which gives FI_NO_STREAM, and so may `idOut`.
 */
FI_API uint32_t FIIdHandle(IOHandle* handle, uint32_t flags, FormatId* idOut) FI_NOEXCEPT;

/*
 * Second look at one identifier: for 4050 (encoded text), which encoding it is. Reads from the
 * start of the file and leaves the handle where the reading ended. Returns 0 for any other
 * identifier and when nothing is found, with a NULL handle as well.
 */
FI_API FormatId FIIdSpecial(IOHandle* handle, FormatId id) FI_NOEXCEPT;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* FI_FORMATID_FORMATID_H_ */
