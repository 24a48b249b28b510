#ifndef FI_CLI_BASE64_H_
#define FI_CLI_BASE64_H_

#include <string>
#include <string_view>

namespace fi::cli {

// Appends `bytes` in base64 (RFC 4648, section 4, with padding).
void AppendBase64(std::string_view bytes, std::string& out);

}  // namespace fi::cli

#endif  // FI_CLI_BASE64_H_
