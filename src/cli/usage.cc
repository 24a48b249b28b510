#include "cli/usage.h"

namespace fi::app {

constinit const std::string_view kHelp = R"(Usage: formatid [OPTION]... [--] PATH|-...
Names the format of each PATH from its bytes; - is standard input.

Input:
  -r, --recursive          walk directories
  -f, --files-from F       take further paths from F, one a line (- is standard input)
      --files0-from F      the same, each path ended by a NUL
      --stdin-name NAME    the file name that goes with -
  -L, --dereference        follow all symbolic links, not only those named
  -h, --no-dereference     follow no symbolic links

Answer (the name, unless one of these asks for another):
  -i, --mime, --mime-type  the MIME type
      --id                 the number of the format
      --extension          the usual file name extensions
      --base               without the supplement: general answers stay as they are

Encrypted documents:
      --password-file F    take passwords from F, one a line (- is standard input)
      --password-fd N      take them from the open descriptor N
                           (the first three lines are tried on each document)

Output:
  -b, --brief              no paths
  -F, --separator S        put S between path and answer in place of ':'
  -0, --print0             end paths with a NUL, and do not escape them
      --json               one JSON array
      --jsonl              one JSON object a line
  -n, --no-buffer          write each answer at once

Run:
      --progress           show on standard error how many files are done
  -q, --quiet              no progress

About:
      --list-formats       list all formats (with --json or --csv: in that form)
      --describe ID        tell what is known about a format (with --json: in that form)
  -V, --version            print the version
      --help               print this text

Exit status: 0 all input was read; 1 some input could not be read, or is encrypted;
2 wrong usage, unusable passwords, or the output could not be written.
)";

}  // namespace fi::app
