// Base64 (RFC 4648, section 4) as the import arguments use it.
#pragma once

#include <string>
#include <string_view>

/// Four characters for each three bytes, the last group padded with "=".
std::string base64_encode(std::string_view bytes);

/// Decodes up to the first character that is none of the alphabet, padding included; what follows
/// is ignored, and nothing ever fails. A last group of one character gives no byte, of two one
/// byte, of three two.
std::string base64_decode(std::string_view text);
