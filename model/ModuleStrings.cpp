#include "ModuleStrings.h"

const QString g_strExclaim = QStringLiteral("!");
const QString g_strQuestion = QStringLiteral("?");
const QString g_strNotice = QStringLiteral("。");
const QString g_strCaption = QStringLiteral("Quorvatek");
// The backslash before "/&'" is part of the text the user reads.
const QString g_strIllegalNameMsg
    = QStringLiteral("系统编号为空、过长\n或系统编号中包含以下不能使用的字符：\n\\/&'或者SYS");
