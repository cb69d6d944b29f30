#include "FaultVfs.h"

#include <sqlite3.h>

#include <csignal>
#include <cstring>

namespace {

struct State
{
    sqlite3_vfs* real = nullptr;
    int points = 0;
    int failAt = 0;
    int killAt = 0;
    bool fired = false;
};

State& state()
{
    static State s;
    return s;
}

// True when this call is the one chosen to fail.
bool failHere()
{
    State& s = state();
    ++s.points;
    if (s.killAt > 0 && s.points == s.killAt)
        std::raise(SIGKILL);
    if (s.failAt > 0 && s.points == s.failAt) {
        s.fired = true;
        return true;
    }
    return false;
}

// The wrapped file: our methods first, the real file after them.
struct File
{
    sqlite3_file base;
    sqlite3_file* real;
};

sqlite3_file* real(sqlite3_file* f)
{
    return reinterpret_cast<File*>(f)->real;
}

int xClose(sqlite3_file* f)
{
    const int rc = real(f)->pMethods ? real(f)->pMethods->xClose(real(f)) : SQLITE_OK;
    sqlite3_free(real(f));
    return rc;
}
int xRead(sqlite3_file* f, void* buf, int n, sqlite3_int64 at)
{
    return real(f)->pMethods->xRead(real(f), buf, n, at);
}
int xWrite(sqlite3_file* f, const void* buf, int n, sqlite3_int64 at)
{
    return failHere() ? SQLITE_IOERR_WRITE : real(f)->pMethods->xWrite(real(f), buf, n, at);
}
int xTruncate(sqlite3_file* f, sqlite3_int64 size)
{
    return failHere() ? SQLITE_IOERR_TRUNCATE : real(f)->pMethods->xTruncate(real(f), size);
}
int xSync(sqlite3_file* f, int flags)
{
    return failHere() ? SQLITE_IOERR_FSYNC : real(f)->pMethods->xSync(real(f), flags);
}
int xFileSize(sqlite3_file* f, sqlite3_int64* size)
{
    return real(f)->pMethods->xFileSize(real(f), size);
}
int xLock(sqlite3_file* f, int level)
{
    // A lost lock, not a busy one: a busy lock would be waited for and retried.
    return failHere() ? SQLITE_IOERR_LOCK : real(f)->pMethods->xLock(real(f), level);
}
int xUnlock(sqlite3_file* f, int level)
{
    return real(f)->pMethods->xUnlock(real(f), level);
}
int xCheckReservedLock(sqlite3_file* f, int* out)
{
    return real(f)->pMethods->xCheckReservedLock(real(f), out);
}
int xFileControl(sqlite3_file* f, int op, void* arg)
{
    return real(f)->pMethods->xFileControl(real(f), op, arg);
}
int xSectorSize(sqlite3_file* f)
{
    return real(f)->pMethods->xSectorSize(real(f));
}
int xDeviceCharacteristics(sqlite3_file* f)
{
    return real(f)->pMethods->xDeviceCharacteristics(real(f));
}

// Version 1: no shared memory or memory mapping, which the store's rollback
// journal does not need.
const sqlite3_io_methods kMethods = { 1, xClose, xRead, xWrite, xTruncate, xSync, xFileSize, xLock, xUnlock,
    xCheckReservedLock, xFileControl, xSectorSize, xDeviceCharacteristics, nullptr, nullptr, nullptr, nullptr,
    nullptr, nullptr };

int xOpen(sqlite3_vfs* vfs, const char* name, sqlite3_file* f, int flags, int* outFlags)
{
    sqlite3_vfs* realVfs = static_cast<sqlite3_vfs*>(vfs->pAppData);
    auto* file = reinterpret_cast<File*>(f);
    file->base.pMethods = nullptr;
    file->real = static_cast<sqlite3_file*>(sqlite3_malloc(realVfs->szOsFile));
    if (!file->real)
        return SQLITE_NOMEM;
    std::memset(file->real, 0, size_t(realVfs->szOsFile));
    const int rc = realVfs->xOpen(realVfs, name, file->real, flags, outFlags);
    if (rc != SQLITE_OK) {
        if (file->real->pMethods)
            file->real->pMethods->xClose(file->real);
        sqlite3_free(file->real);
        file->real = nullptr;
        return rc;
    }
    file->base.pMethods = &kMethods;
    return SQLITE_OK;
}

} // namespace

namespace FaultVfs {

void Install()
{
    static sqlite3_vfs vfs;
    State& s = state();
    if (s.real)
        return;
    s.real = sqlite3_vfs_find(nullptr);
    vfs = *s.real;
    vfs.iVersion = 1;
    vfs.szOsFile = int(sizeof(File));
    vfs.pNext = nullptr;
    vfs.zName = "qvfault";
    vfs.pAppData = s.real;
    vfs.xOpen = xOpen;
    // Every other call goes to the real file system, handed itself.
    vfs.xDelete = [](sqlite3_vfs* v, const char* n, int d) {
        auto* r = static_cast<sqlite3_vfs*>(v->pAppData);
        return r->xDelete(r, n, d);
    };
    vfs.xAccess = [](sqlite3_vfs* v, const char* n, int flags, int* out) {
        auto* r = static_cast<sqlite3_vfs*>(v->pAppData);
        return r->xAccess(r, n, flags, out);
    };
    vfs.xFullPathname = [](sqlite3_vfs* v, const char* n, int size, char* out) {
        auto* r = static_cast<sqlite3_vfs*>(v->pAppData);
        return r->xFullPathname(r, n, size, out);
    };
    vfs.xDlOpen = nullptr;
    vfs.xDlError = nullptr;
    vfs.xDlSym = nullptr;
    vfs.xDlClose = nullptr;
    vfs.xRandomness = [](sqlite3_vfs* v, int n, char* out) {
        auto* r = static_cast<sqlite3_vfs*>(v->pAppData);
        return r->xRandomness(r, n, out);
    };
    vfs.xSleep = [](sqlite3_vfs* v, int us) {
        auto* r = static_cast<sqlite3_vfs*>(v->pAppData);
        return r->xSleep(r, us);
    };
    vfs.xCurrentTime = [](sqlite3_vfs* v, double* out) {
        auto* r = static_cast<sqlite3_vfs*>(v->pAppData);
        return r->xCurrentTime(r, out);
    };
    vfs.xGetLastError = [](sqlite3_vfs* v, int n, char* out) {
        auto* r = static_cast<sqlite3_vfs*>(v->pAppData);
        return r->xGetLastError(r, n, out);
    };
    sqlite3_vfs_register(&vfs, 1);
}

void FailNth(int n)
{
    State& s = state();
    s.points = 0;
    s.failAt = n > 0 ? n : 0;
    s.killAt = 0;
    s.fired = false;
}

void KillAtNth(int n)
{
    FailNth(0);
    state().killAt = n > 0 ? n : 0;
}

int Points()
{
    return state().points;
}

bool Fired()
{
    return state().fired;
}

} // namespace FaultVfs
