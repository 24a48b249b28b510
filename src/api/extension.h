// The extension of the file name behind a handle.
#ifndef FI_API_EXTENSION_H_
#define FI_API_EXTENSION_H_

#include "formatid/io.h"
#include "signature/interpreter.h"

namespace fi {

// Up to four upper-cased characters behind the last dot of the handle's file name; empty when it
// has no dot, or no name. A name that begins with its only dot is all extension.
Extension ReadExtension(IOHandle* handle);

}  // namespace fi

#endif  // FI_API_EXTENSION_H_
