// The line-type file reader on arbitrary bytes: never crashes, and what it reads
// writes back and reads again the same.
#include "LinFormat.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const QVector<LineTypeDef> defs = LinFormat::Parse(text);
    const QVector<LineTypeDef> again = LinFormat::Parse(LinFormat::Format(defs));
    if (again.size() > defs.size())
        std::abort();
    return 0;
}
