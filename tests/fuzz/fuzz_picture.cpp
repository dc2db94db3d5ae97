// Bitmap files of any bytes: the check for a picture cut short answers without overflowing,
// whatever sizes the header gives.

#include "platform/picture.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    (void)platform::truncatedBitmap(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
