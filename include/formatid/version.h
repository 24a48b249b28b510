/*
 * The version of these headers. FIVersion (identify.h) tells that of the library.
 */
#ifndef FI_FORMATID_VERSION_H_
#define FI_FORMATID_VERSION_H_

#define FI_VERSION_MAJOR 0
#define FI_VERSION_MINOR 1
#define FI_VERSION_PATCH 0

/* One number that rises with each release. */
#define FI_VERSION_NUMBER (FI_VERSION_MAJOR * 1000000 + FI_VERSION_MINOR * 1000 + FI_VERSION_PATCH)

#endif /* FI_FORMATID_VERSION_H_ */
