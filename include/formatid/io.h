/*
 * The IO handle: what formatid reads a file through.
 *
 * A host either opens a file with IOOpen or implements the record below over storage of its own (a
 * message store, a cloud object, a decrypted view). A handle is used by one thread at a time; two
 * handles on the same file are independent of each other.
 *
 * Every operation returns 0 on success and another value on failure. In C++ one may throw: it
 * counts as failed. (std::uncaught_exceptions of that thread is one more from then on where the
 * host has a C++ runtime of its own: better catch in the operation.)
 */
#ifndef FI_FORMATID_IO_H_
#define FI_FORMATID_IO_H_

#include <stdint.h>

#ifndef FI_API
#define FI_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
#define FI_NOEXCEPT noexcept
extern "C" {
#else
#define FI_NOEXCEPT
#endif

typedef struct IOHandle IOHandle;

/* Origins of seek and seek64. */
enum {
  kIoFromStart = 0,
  kIoFromCurrent = 1,
  kIoFromEnd = 2,
};

/* Codes of getInfo, with what `out` points to. */
enum {
  /* File name without directories, NUL-terminated: 260 characters of the width that code 14 tells.
   * A longer name keeps its last 259 characters, so that the extension survives. */
  kIoInfoFileName = 3,
  /* `out` is NULL. 0: the handle is a structured storage (a compound file). Other: not a storage.
   */
  kIoInfoIsStorage = 4,
  /* 16 bytes: class identifier of the storage in GUID memory layout. */
  kIoInfoClassId = 5,
  /* uint32_t, preset to kIoNameNarrow: kIoNameWide where code 3 delivers 16-bit characters. */
  kIoInfoNameWidth = 14,
  /* `out` is NULL. 0: the handle supports 64-bit positions (and fills seek64 and tell64). */
  kIoInfoHas64Bit = 24,
  /* int32_t: errno of the first read that failed on this handle, 0 when none did. Handles made by
   * IOOpen answer it; a host's own handle need not. */
  kIoInfoReadError = 1001,
  /* uint32_t: how many decrypted views lie between the handle and what the host opened. Only
   * handles of decrypted views answer it; for every other the number is 0. */
  kIoInfoViewDepth = 1002,
  /* IOMemberName: the member of a package view at `index`. Package views of formatid answer it;
   * failure ends the list. */
  kIoInfoMemberName = 1003,
};

enum { kIoNameNarrow = 2, kIoNameWide = 4, kIoNameCapacity = 260 };

/*
 * The operation table, in this order. A table may be shared by all handles of a kind and must
 * outlive them.
 */
typedef struct IOHandleOperations {
  /* Releases the handle; it is not used afterwards. */
  int32_t (*close)(IOHandle* handle);
  /* Reads up to `size` bytes at the current position and moves past them. `*count` is the number of
   * bytes stored; less than `size` is normal, 0 means end of data. */
  int32_t (*read)(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count);
  /* Not called by formatid; may be NULL. */
  int32_t (*reserved)(IOHandle* handle);
  /* Moves the position. Before the start: failure. Past the end: success, and reads give 0 bytes.
   * From the start the offset counts as unsigned, so that it reaches 4 GB. */
  int32_t (*seek)(IOHandle* handle, uint32_t origin, int32_t offset);
  /* Low 32 bits of the position in bytes. */
  int32_t (*tell)(IOHandle* handle, uint32_t* position);
  int32_t (*getInfo)(IOHandle* handle, uint32_t code, void* out);
  /* Opens a related handle (source types 11, 12 and 39 to 41); the caller closes it, before it
   * closes the one that it came from, and uses both in one thread. `flags`: 1, or 513, which means
   * the same: for reading. kIoNotFound: there is no such child of that kind. */
  int32_t (*open)(IOHandle* handle, IOHandle** target, uint32_t sourceType, const void* source,
                  uint32_t flags);
  /* The same with 64-bit positions. Both may be NULL. */
  int32_t (*seek64)(IOHandle* handle, uint32_t origin, int64_t offset);
  int32_t (*tell64)(IOHandle* handle, int64_t* position);
} IOHandleOperations;

/* A host's own handle begins with this record. */
struct IOHandle {
  const IOHandleOperations* operations;
};

/* Source types, with what `source` points to. */
enum {
  /* char[]: path in the file system's own bytes (UTF-8 by convention), NUL-terminated. */
  kIoSourcePath = 1,
  /* uint16_t[]: path in UTF-16, NUL-terminated; opened by its UTF-8 form. */
  kIoSourceWidePath = 2,
  /* IOMemorySource. */
  kIoSourceMemory = 3,
  /* IODescriptorSource. */
  kIoSourceDescriptor = 4,
  /* Of a handle's own open operation: a stream and a sub-storage of a storage by name
   * (IOChildSource). */
  kIoSourceStorageStream = 11,
  kIoSourceSubStorage = 12,
  /* The file as a ZIP package view: `source` is NULL, `*target` holds the handle itself on entry
   * and the view on success. */
  kIoSourcePackage = 39,
  /* A member of a package view by path (IOMemberSource). */
  kIoSourcePackageMember = 40,
  /* As kIoSourcePackage, from the headers in front of the members: for a package whose central
   * directory is cut off or damaged, or whose names are divided by backslashes. It holds the
   * members up to the first damage, its names divided by "/". A host's handle need not know it. */
  kIoSourceRepairedPackage = 41,
};

/* A block of memory under a file name. Both are borrowed: `data` for the life of the handle, `name`
 * for the call. `name` may be NULL (no extension). */
typedef struct IOMemorySource {
  const void* data;
  uint64_t size; /* bytes */
  const char* name;
} IOMemorySource;

/* An open descriptor of a regular file. It is borrowed: its own position is neither used nor moved,
 * and the caller closes it after the handle. `name` as in IOMemorySource. */
typedef struct IODescriptorSource {
  int descriptor;
  const char* name;
} IODescriptorSource;

/* A child of a storage by its name: `parent` is the handle whose open operation is called, `name`
 * is borrowed for the call and NUL-terminated. Each byte stands for one 16-bit character of the
 * name, control bytes at its beginning included ("\005SummaryInformation"). Letters are compared
 * without regard to case. */
typedef struct IOChildSource {
  IOHandle* parent;
  const char* name;
} IOChildSource;

enum { kIoMemberPathCapacity = 512 };

/* A member of a package view: `parent` is the view whose open operation is called, `path` its name
 * in the package, NUL-terminated, folders divided by "/"; ASCII letters are compared without regard
 * to case. A folder's entry, which ends in "/", opens as an empty member. The rest is working space
 * of the view: -1, 0 and 0. */
typedef struct IOMemberSource {
  IOHandle* parent;
  char path[kIoMemberPathCapacity];
  int32_t position;
  uint8_t working[2];
} IOMemberSource;

/* A name in the list of a package view's members, which is in the order of its central directory.
 * `name` belongs to the view, which keeps it until it is asked for the next, and is NUL-terminated;
 * it is empty for a member whose name is longer than IOMemberSource has room for or holds a NUL. */
typedef struct IOMemberName {
  uint32_t index; /* set by the caller, from 0 */
  const char* name;
} IOMemberName;

/* Results of IOOpen and of a handle's open operation. */
enum {
  kIoOk = 0,
  kIoNotFound = -5,
  kIoAccessDenied = -20,
  kIoError = -1, /* anything else: a directory, a fifo, a device, a bad source ... */
};

/*
 * Opens `source` for reading and stores the handle in `*handle` (NULL on failure). Only regular
 * files are opened: a path that names a fifo, a device, a socket or a directory gives kIoError
 * without being opened, so that nothing is disturbed and nothing waits. `mode` is reserved: pass 1.
 *
 * The handle has 64-bit positions and keeps its own, so that tell, seek and getInfo cost no system
 * call. The caller closes it through its close operation. errno tells the cause of a failure.
 */
FI_API int32_t IOOpen(IOHandle** handle, uint32_t sourceType, const void* source,
                      uint32_t mode) FI_NOEXCEPT;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* FI_FORMATID_IO_H_ */
