// Any bytes as an INI file: setting a key must succeed, keep the file's byte-order
// mark, and a second identical write must change nothing.
#include "IniFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray content(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString section = QStringLiteral("SysCodeConfig");
    const QString key = QStringLiteral("DispAddedMsg");
    const QString value = size % 2 ? QStringLiteral("1") : QStringLiteral("开 关");
    QByteArray once;
    QByteArray twice;
    if (!SetIniValue(content, section, key, value, once) || !SetIniValue(once, section, key, value, twice))
        std::abort();
    if (once != twice)
        std::abort();
    for (const char* bom : { "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF" }) {
        if (content.startsWith(bom) && !once.startsWith(bom))
            std::abort();
    }
    return 0;
}
