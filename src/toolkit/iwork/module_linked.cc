// The module of programs that have its objects linked in: tests, fuzz targets, benchmarks.
#include "platform/iwork_module.h"

namespace fi {

const IworkModule* LoadIworkModule() { return FI_IWORK_MODULE_SYMBOL(); }

}  // namespace fi
