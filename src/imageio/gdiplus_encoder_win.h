// GDI+ encoder look-up, shared by the savers and reachable from the tests.
#pragma once

#include <windows.h>

#include <cstdint>

namespace framekit::imageio {

// Index of the first installed GDI+ encoder whose MIME type equals mime_type exactly (same
// case, same length), its class identifier copied to *clsid; -1 when there is none or the list
// cannot be read, *clsid untouched. Needs GDI+ started.
int32_t FindImageEncoder(const wchar_t* mime_type, CLSID* clsid);

}  // namespace framekit::imageio
