#include "ZcUtPrintf.h"

#include <cstdarg>
#include <cstdio>

namespace {
ZcUtOutputSink& sink()
{
    static ZcUtOutputSink current;
    return current;
}

void emitText(const QString& text)
{
    if (sink()) {
        sink()(text);
        return;
    }
    const QByteArray utf8 = text.toUtf8();
    std::fwrite(utf8.constData(), 1, size_t(utf8.size()), stdout);
    std::fflush(stdout);
}
} // namespace

int zcutPrintf(const ZTCHAR* format, ...)
{
    if (!format)
        return 0;
    const QByteArray utf8Format = QString::fromUtf16(format).toUtf8();
    va_list args;
    va_start(args, format);
    const QString text = QString::vasprintf(utf8Format.constData(), args);
    va_end(args);
    emitText(text);
    return int(text.size());
}

int zcutPrintf(const QString& text)
{
    emitText(text);
    return int(text.size());
}

ZcUtOutputSink zcutSetOutputSink(ZcUtOutputSink newSink)
{
    ZcUtOutputSink previous = std::move(sink());
    sink() = std::move(newSink);
    return previous;
}
