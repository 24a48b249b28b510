/*
 * What stands beside an identifier: version, encryption, character set and others, each with the
 * place that it was read at, and the one identifier of the PRONOM registry. docs/properties.md
 * lists them by family.
 *
 *   FIProperties properties = FI_PROPERTIES_INIT;
 *   request.properties = &properties;
 *   FIIdentify(&request, &result);
 *   for (uint32_t i = 0; i < properties.count; ++i) puts(properties.items[i].name);
 *
 * Properties are read after the answer, from the same source and within the same limits. They never
 * change the answer or its status: those of damaged or hostile files are absent, or say what is
 * damaged.
 */
#ifndef FI_FORMATID_PROPERTIES_H_
#define FI_FORMATID_PROPERTIES_H_

#include <stdint.h>

#include "formatid/formatid.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { kFiMaxProperties = 24 };

/* One property. All texts are NUL-terminated; `value` and `place` are printable ASCII, for what
 * stands in a file is made so, and are cut where they are longer. */
typedef struct FIProperty {
  const char* name; /* static: "version", "encryption_scheme" */
  char value[64];
  char place[48]; /* the structure, stream or member that told it: "docProps/app.xml" */
  int64_t offset; /* in bytes from the start of the file or of the place; -1: of no single place */
} FIProperty;

typedef struct FIProperties {
  uint32_t size;  /* of this record in bytes */
  uint32_t count; /* of items */
  char puid[16];  /* "fmt/1129"; empty where the file has none, or more than one might be meant */
  FIProperty items[kFiMaxProperties];
} FIProperties;

#ifdef __cplusplus
#define FI_PROPERTIES_INIT          \
  {                                 \
    sizeof(FIProperties), 0, {}, {} \
  }
#else
#define FI_PROPERTIES_INIT \
  { .size = sizeof(FIProperties) }
#endif

/* The name of a property by its number, in the order in which they are given, for tables with a
 * column each; NULL behind the last. Static texts. */
FI_API const char* FIPropertyName(uint32_t number) FI_NOEXCEPT;

/* Tells releases apart whose answers may differ: the version of the library and a fingerprint of
 * its registry and signatures, "0.1.0-5f3a92c41d07be68". Static. */
FI_API const char* FIRegistryVersion(void) FI_NOEXCEPT;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* FI_FORMATID_PROPERTIES_H_ */
