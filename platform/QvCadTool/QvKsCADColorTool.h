#pragma once

// The product's colour tool: the CAD colour dialog as one call.
#include "WinTypes.h"

class QvKsCADColorTool
{
public:
    // Shows the colour dialog modally over the active window with `current` chosen.
    // On OK `chosen` receives the picked colour (0x00BBGGRR) and the result is true;
    // on cancel `chosen` is left as it was and the result is false.
    static bool InvokeCADColorDlg(COLORREF current, COLORREF& chosen);
};
