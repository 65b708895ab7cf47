// The shared-memory loader's path normalisation, which turns any descriptor
// path (from a panel or a device) into a segment key.
#include "data/ShareFileLoader.h"

#include <QString>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size > 65536)
        return 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    const QString once = shareFileLoader::normalisePath(text);
    shareFileLoader::normalisePath(once);
    shareFileLoader::normalisePath(QString(text).replace(QLatin1Char('\\'), QLatin1Char('/')));
    return 0;
}
