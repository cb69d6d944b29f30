#pragma once

// The product's colour tool: the CAD colour dialog as one call.
#include "WinTypes.h"

#include <functional>

class QvKsCADColorTool
{
public:
    // Shows the colour dialog modally over the active window with `current` chosen.
    // On OK `chosen` receives the picked colour (0x00BBGGRR) and the result is true;
    // on cancel `chosen` is left as it was and the result is false.
    static bool InvokeCADColorDlg(COLORREF current, COLORREF& chosen);

    // Takes the place of the dialog (a host script or a test answers it): given the
    // current colour, true with the chosen one, or false for a cancel. An empty
    // handler brings the real dialog back. Returns the previous handler.
    using Handler = std::function<bool(COLORREF current, COLORREF& chosen)>;
    static Handler SetColorDialogHandler(Handler handler);
};
