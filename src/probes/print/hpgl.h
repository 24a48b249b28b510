// HP-GL and HP-GL/2 plotter files (HP-GL/2 and HP RTL Reference Guide): commands of two letters
// with decimal parameters, ended by a semicolon or the next command, and escape sequences of the
// device.
#ifndef FI_PROBES_PRINT_HPGL_H_
#define FI_PROBES_PRINT_HPGL_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatHpGl or kNoMatch. Looks at the first 1 KB of a file whose extension is PLT or PRN, or that
// has none: what is named PGL, HPG or HGL has an identifier of its own, whatever it holds.
FormatId HpGlProbe(IdentificationStream* stream, const char* extension);

// Whether the file begins with a command of the language, as far as one command can tell.
bool BeginsPlot(IdentificationStream* stream);

// Whether it is a plot behind the character that ends a label (03), which some drivers send first.
bool IsPlotBehindEndOfText(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_PRINT_HPGL_H_
