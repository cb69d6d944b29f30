#pragma once

// The scalar types, status codes and constants of the host SDK subset.
#include <cstdint>

// Wide text of the SDK calls: UTF-16 code units, so that u"…" literals and
// QString::utf16() pass straight through.
using ZTCHAR = char16_t;

namespace Zcad {
enum ErrorStatus {
    eOk = 0,
    eNotImplementedYet = 1,
    eNotApplicable = 2,
    eInvalidInput = 3,
    eAmbiguousInput = 4,
    eOutOfMemory = 7,
    eKeyNotFound = 9,
    eDuplicateKey = 10,
    eInvalidIndex = 12,
    eNullObjectId = 14,
    eNullObjectPointer = 16,
    eNotThatKindOfClass = 19,
    eWrongDatabase = 21,
    eWasErased = 23,
    eWasOpenForWrite = 25,
    eWasOpenForRead = 26,
    eNotOpenForWrite = 30,
    eAtMaxReaders = 37,
    eInvalidOpenState = 38,
    eNotInDatabase = 40,
    eFileNotFound = 56,
    eFileAccessErr = 58,
    eEndOfFile = 64,
    eBadDwgHeader = 71,
    eDwgNeedsRecovery = 72,
    eInvalidDxfCode = 78,
    eFileSharingViolation = 91,
    eIncompatibleVersion = 133,
    eLoadFailed = 134,
    eAlreadyInDb = 136,
};
} // namespace Zcad

namespace ZcDb {
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
} // namespace ZcDb

namespace ZcRx {
enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
} // namespace ZcRx
using ZcRx::kInitAppMsg;
using ZcRx::kRetError;
using ZcRx::kRetOK;
using ZcRx::kUnloadAppMsg;

// The API version of this host SDK; a module built for another one is refused.
constexpr int ZCRX_API_VERSION = 0x07E20028;

// Registry keys of the host's services.
#define ZCRX_DYNAMIC_LINKER u"DynamicLinker"
#define ZCRX_COMMAND_DOCK u"ZCAD_REGISTERED_COMMANDS"
#define ZCDB_MODEL_SPACE u"*Model_Space"
#define ZCDB_PAPER_SPACE u"*Paper_Space"

// Sharing modes of readDwgFile.
#ifndef _SH_DENYWR
constexpr int _SH_DENYWR = 0x20;
constexpr int _SH_DENYRW = 0x10;
constexpr int _SH_DENYNO = 0x40;
#endif

// Results of the editor's interactive calls.
constexpr int RTNORM = 5100;
constexpr int RTNONE = 5000;
constexpr int RTERROR = -5001;
constexpr int RTCAN = -5002;
constexpr int RTREJ = -5003;

// An entity or selection-set name of the editor calls.
using zds_name = std::int64_t[2];
using zds_point = double[3];
struct resbuf;

// A command function registered with the command stack.
using ZcRxFunctionPtr = void (*)();
