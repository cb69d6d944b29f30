// Any bytes as a project folder's server entry, and as a server address: the reader
// must answer; a server it takes names a database and a port in range; and what it
// takes, written out as an entry again, reads back to the same server. An address
// it takes must do the same, since a project made from an address keeps it as an
// entry.
#include "StoreLocation.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

const QTemporaryDir& folder()
{
    static const QTemporaryDir dir;
    return dir;
}

bool readEntry(const QByteArray& text, StoreLocation& location)
{
    QFile entry(folder().filePath(StoreLocation::EntryFileName()));
    if (!entry.open(QIODevice::WriteOnly | QIODevice::Truncate) || entry.write(text) != text.size())
        std::abort();
    entry.close();
    QString error;
    const bool ok = StoreLocation::ForFolder(folder().path(), location, &error);
    if (ok != error.isEmpty())
        std::abort(); // a refusal says why, and only a refusal
    return ok;
}

bool sameServer(const PgDb::Params& a, const PgDb::Params& b)
{
    return a.host == b.host && a.port == b.port && a.database == b.database && a.user == b.user;
}

// A server taken from anywhere must come back whole through its entry.
void checkServer(const StoreLocation& location)
{
    if (location.engine != SqlEngine::Server || location.server.database.isEmpty()
        || location.server.port <= 0 || location.server.port > 65535)
        std::abort();
    StoreLocation again;
    if (!readEntry(location.EntryText(), again) || !sameServer(again.server, location.server))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    StoreLocation location;
    if (readEntry(bytes, location))
        checkServer(location);
    StoreLocation fromUrl;
    QString error;
    if (StoreLocation::FromUrl(QString::fromUtf8(bytes), fromUrl, &error))
        checkServer(fromUrl);
    return 0;
}
