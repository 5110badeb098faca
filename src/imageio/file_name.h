// File names arrive as UTF-16 (char16_t) on every platform, because a managed host passes its
// strings that way. Linux file names are bytes that everyone reads as UTF-8 (the .NET runtime
// among them, whatever the locale), so that is the encoding we convert to.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace framekit::imageio {

// UTF-16 to UTF-8, surrogate pairs joined. Empty when the text holds a lone surrogate: such a
// name has no UTF-8 spelling, and replacing the unit with U+FFFD would quietly write to a file
// of another name.
std::optional<std::string> Utf16ToUtf8(std::u16string_view text);

}  // namespace framekit::imageio
