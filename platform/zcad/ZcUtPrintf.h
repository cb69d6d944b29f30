#pragma once

// Text for the command line. It goes to an output sink that the host replaces with
// its command-line window; by default it is written to standard output.
#include "ZcadTypes.h"

#include <QString>

#include <functional>

using ZcUtOutputSink = std::function<void(const QString& text)>;

// printf-style: the format is UTF-16; "%ls" takes a const char16_t* argument,
// "%s" a UTF-8 char*, numbers as in printf. The number of UTF-16 units written.
int zcutPrintf(const ZTCHAR* format, ...);
// Prints `text` as it is (no format directives).
int zcutPrintf(const QString& text);

// Installs `sink` (an empty one restores standard output); the previous sink.
ZcUtOutputSink zcutSetOutputSink(ZcUtOutputSink sink);
