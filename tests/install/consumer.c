/* A host in C99: identifies a file by its path, and again through an IO handle of its own. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "formatid/platform.h"

/* A handle over a block of memory, with 32-bit positions only. */
typedef struct BlockHandle {
  IOHandle base;
  const unsigned char* bytes;
  uint32_t size;
  uint32_t position;
  int open;
} BlockHandle;

static int32_t BlockClose(IOHandle* handle) {
  ((BlockHandle*)handle)->open = 0;
  return 0;
}

static int32_t BlockRead(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count) {
  BlockHandle* block = (BlockHandle*)handle;
  const uint32_t left = block->position < block->size ? block->size - block->position : 0;
  *count = size < left ? size : left;
  memcpy(buffer, block->bytes + block->size - left, *count);
  block->position += *count;
  return 0;
}

static int32_t BlockSeek(IOHandle* handle, uint32_t origin, int32_t offset) {
  BlockHandle* block = (BlockHandle*)handle;
  int64_t target = offset;
  if (origin == kIoFromCurrent) target += block->position;
  if (origin == kIoFromEnd) target += block->size;
  if (target < 0 || target > INT32_MAX) return -1;
  block->position = (uint32_t)target;
  return 0;
}

static int32_t BlockTell(IOHandle* handle, uint32_t* position) {
  *position = ((BlockHandle*)handle)->position;
  return 0;
}

static int32_t BlockGetInfo(IOHandle* handle, uint32_t code, void* out) {
  (void)handle;
  (void)code;
  (void)out;
  return -1;
}

static int32_t BlockOpen(IOHandle* handle, IOHandle** target, uint32_t sourceType,
                         const void* source, uint32_t flags) {
  (void)handle;
  (void)sourceType;
  (void)source;
  (void)flags;
  *target = NULL;
  return -1;
}

static const IOHandleOperations kBlockOperations = {
    BlockClose, BlockRead, NULL, BlockSeek, BlockTell, BlockGetInfo, BlockOpen, NULL, NULL};

static int IdentifyBlock(const char* path) {
  unsigned char bytes[4096];
  FILE* file = fopen(path, "rb");
  if (file == NULL) return EXIT_FAILURE;
  const size_t size = fread(bytes, 1, sizeof bytes, file);
  fclose(file);

  BlockHandle block = {{&kBlockOperations}, bytes, (uint32_t)size, 0, 1};
  FormatId id = 0;
  char name[256];
  const uint32_t status = FIIdHandle(&block.base, 0, &id);
  if (status != kFiOk || !block.open || block.position != 0) return EXIT_FAILURE;
  if (FIGetIDString(id, name, sizeof name) == 0) return EXIT_FAILURE;
  printf("handle: %u %s\n", (unsigned)id, name);
  return EXIT_SUCCESS;
}

int main(int argc, char** argv) {
  FormatId id = 0;
  char name[256];
  UTOptionSet* options;
  if (argc != 2 || FIInit(NULL, NULL, NULL, NULL) != 0) return EXIT_FAILURE;
  options = UTGetGlobalOptionSet();
  if (options == NULL) return EXIT_FAILURE;

  if (FIIdFileEx(kIoSourcePath, argv[1], kFiTextFallback, &id, name, sizeof name) != kFiOk) {
    return EXIT_FAILURE;
  }
  printf("path: %u %s\n", (unsigned)id, name);
  if (IdentifyBlock(argv[1]) != EXIT_SUCCESS) return EXIT_FAILURE;
  return FIDeInit(NULL, NULL, NULL) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
