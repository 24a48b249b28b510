// References of literature as text: BibTeX, RIS and EndNote.
#ifndef FI_PROBES_DOCUMENT_BIBLIOGRAPHY_H_
#define FI_PROBES_DOCUMENT_BIBLIOGRAPHY_H_

#include <string_view>

namespace fi {

// BibTeX: an entry of a known kind behind comments.
bool IsBibTex(std::string_view text);

// RIS begins with the type of a reference, EndNote with fields of a percent sign each.
bool IsReferences(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_BIBLIOGRAPHY_H_
