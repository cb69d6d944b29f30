// The name rule travels in the module for the product's other modules, which call
// CQVCheckSysNameLegal::CheckSysNameLegal through it; the reference keeps the
// rule's code in the library even where the module itself does not call it.
#include "CQVCheckSysNameLegal.h"

#include <QString>

namespace {
__attribute__((used)) bool (*const g_exportedNameRule)(QString) = &CQVCheckSysNameLegal::CheckSysNameLegal;
}
