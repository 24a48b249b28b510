/* Reads that take their time, as those of a file system far away: to be loaded in front of the C
 * library with LD_PRELOAD. FORMATID_READ_DELAY holds the microseconds that each pread takes, or
 * "random N" for anything up to N. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <time.h>
#include <unistd.h>

static long Delay(void) {
  static __thread unsigned seed;
  const char* setting = getenv("FORMATID_READ_DELAY");
  if (setting == NULL) return 0;
  if (strncmp(setting, "random ", 7) != 0) return atol(setting);
  if (seed == 0) seed = (unsigned)(uintptr_t)&seed | 1;
  return rand_r(&seed) % (atol(setting + 7) + 1);
}

ssize_t pread(int descriptor, void* buffer, size_t size, off_t offset) {
  static ssize_t (*real)(int, void*, size_t, off_t);
  const long delay = Delay();
  const struct timespec pause = {delay / 1000000, delay % 1000000 * 1000};
  if (real == NULL) *(void**)&real = dlsym(RTLD_NEXT, "pread");
  nanosleep(&pause, NULL);
  return real(descriptor, buffer, size, offset);
}
