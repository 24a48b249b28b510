// Protein Data Bank. The first record holds the class of the protein, its date at column 51 and its
// code at column 63.
#ifndef FI_PROBES_MODEL_PROTEIN_DATA_H_
#define FI_PROBES_MODEL_PROTEIN_DATA_H_

#include <string_view>

namespace fi {

bool IsProteinData(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_MODEL_PROTEIN_DATA_H_
