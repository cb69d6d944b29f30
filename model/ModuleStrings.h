#pragma once

// Texts and message-box styles shared by every message the module shows. Warnings
// end in g_strExclaim, questions in g_strQuestion, notices in g_strNotice; every box
// is captioned g_strCaption and owned by the active window.
#include "WinTypes.h"

#include <QString>

extern const QString g_strExclaim;
extern const QString g_strQuestion;
extern const QString g_strNotice;
extern const QString g_strCaption;
// Shown by the callers of CQVCheckSysNameLegal::CheckSysNameLegal when it refuses a name.
extern const QString g_strIllegalNameMsg;

// OK, exclamation icon, task-modal, brought to the foreground.
constexpr UINT kMbWarning = MB_OK | MB_ICONEXCLAMATION | MB_TASKMODAL | MB_SETFOREGROUND;
// Yes/No with the exclamation icon; the second with No as the default button.
constexpr UINT kMbQuestion = MB_YESNO | MB_ICONEXCLAMATION | MB_TASKMODAL | MB_SETFOREGROUND;
constexpr UINT kMbQuestionDefaultNo = kMbQuestion | MB_DEFBUTTON2;
// OK, information icon.
constexpr UINT kMbNotice = MB_OK | MB_ICONINFORMATION | MB_TASKMODAL | MB_SETFOREGROUND;

static_assert(kMbWarning == 0x12030 && kMbQuestion == 0x12034 && kMbQuestionDefaultNo == 0x12134
    && kMbNotice == 0x12040);
