#pragma once

// The names the dialogs use with the tree-list grid: item handles, insert positions,
// state bits, expand codes, style words, edit modes, and the notifications the grid
// sends to its dialog.
#include "WinTypes.h"

#include <QMetaType>
#include <QString>

#include <cstdint>

class CTreeListItem;
class QObject;

// An item of the grid. A handle stays valid until its item is deleted.
using HTREEITEM = CTreeListItem*;

// Insert positions and the root, accepted wherever an item or a position is expected.
inline HTREEITEM const TVI_ROOT = reinterpret_cast<HTREEITEM>(std::intptr_t(-0x10000));
inline HTREEITEM const TVI_FIRST = reinterpret_cast<HTREEITEM>(std::intptr_t(-0x0FFFF));
inline HTREEITEM const TVI_LAST = reinterpret_cast<HTREEITEM>(std::intptr_t(-0x0FFFE));
inline HTREEITEM const TVI_SORT = reinterpret_cast<HTREEITEM>(std::intptr_t(-0x0FFFD));

// Item state bits.
constexpr UINT LVIS_FOCUSED = 0x0001;
constexpr UINT LVIS_SELECTED = 0x0002;

// Expand codes.
constexpr UINT TVE_COLLAPSE = 0x0001;
constexpr UINT TVE_EXPAND = 0x0002;
constexpr UINT TVE_TOGGLE = 0x0003;

// Column formats.
constexpr int LVCFMT_LEFT = 0x0000;
constexpr int LVCFMT_RIGHT = 0x0001;
constexpr int LVCFMT_CENTER = 0x0002;

// The grid's tree-style word: what column 0 draws.
constexpr DWORD TVS_HASBUTTONS = 0x0001;
constexpr DWORD TVS_HASLINES = 0x0002;
constexpr DWORD TVS_LINESATROOT = 0x0004;
constexpr DWORD TVS_SHOWSELALWAYS = 0x0020;
// The extended-style word.
constexpr DWORD LVS_EX_GRIDLINES = 0x0001;
constexpr DWORD LVS_EX_FULLROWSELECT = 0x0020;
constexpr DWORD LVS_EX_INFOTIP = 0x0400;

// Hit-test flags.
constexpr UINT TVHT_NOWHERE = 0x0001;
constexpr UINT TVHT_ONITEMICON = 0x0002;
constexpr UINT TVHT_ONITEMLABEL = 0x0004;
constexpr UINT TVHT_ONITEMINDENT = 0x0008;
constexpr UINT TVHT_ONITEMBUTTON = 0x0010;
constexpr UINT TVHT_ONITEMRIGHT = 0x0020;
constexpr UINT TVHT_ONITEM = TVHT_ONITEMICON | TVHT_ONITEMLABEL;
constexpr UINT TVHT_BELOW = 0x0200;

// Which in-place editor a cell opens.
enum TreeListEditMode : int {
    TLEM_NONE = 0, // not editable
    TLEM_EDIT = 1, // the text editor (names, remarks)
    TLEM_CODE = 2, // the second text editor: short codes, checked on commit
    TLEM_LIST = 3, // drop-down list of the cell's options, no typing
    TLEM_COMBO = 4, // editable drop-down with the line-width samples
    TLEM_EDITBUTTON = 5, // text editor with a browse button
    TLEM_BUTTON = 6, // read-only text with a browse button (colour, pipeline cells)
};

// Modes of ending an edit.
constexpr int TLEND_COMMIT = 1;
constexpr int TLEND_CANCEL = -1;
constexpr int TLEND_PLAIN = 0;

// Notification codes.
constexpr UINT NM_RCLICK = UINT(-5);
constexpr UINT LVN_BEGINDRAG = UINT(-109);
constexpr UINT LVN_DELETEITEM = UINT(-103);
constexpr UINT LVN_ENDLABELEDITW = UINT(-176);
constexpr UINT LVIF_TEXT = 0x0001;
// The state a combo editor reports when its final text differs from the start text.
constexpr UINT TLCOMBO_CHANGED = 1000;

struct NMHDR
{
    QObject* hwndFrom = nullptr; // the grid
    int idFrom = 0; // the sender's control id
    UINT code = 0;
};

// The end of an in-place edit (LVN_ENDLABELEDITW). `result` is what the dialog
// answers: true keeps the text in the cell. It starts true for an edit made on a row.
struct NMLVDISPINFO
{
    NMHDR hdr;
    int gridId = 0; // the message's first parameter: the grid's control id
    UINT mask = LVIF_TEXT;
    int iItem = -1; // the edited row, or -1
    int iSubItem = 0;
    UINT state = 0;
    QString pszText;
    int cchTextMax = 0;
    HTREEITEM hItem = nullptr; // the edited item, also when the row is reported as -1
    bool result = false;
};

// A right click (NM_RCLICK) or the start of a row drag (LVN_BEGINDRAG): the row under
// the pointer (or -1) and the pointer in the grid's client and screen coordinates.
struct NMITEMACTIVATE
{
    NMHDR hdr;
    int iItem = -1;
    int iSubItem = 0;
    HTREEITEM hItem = nullptr;
    int ptActionX = 0;
    int ptActionY = 0;
    int ptScreenX = 0;
    int ptScreenY = 0;
};

// An item leaving the grid (LVN_DELETEITEM), sent before it goes.
struct NMLISTVIEW
{
    NMHDR hdr;
    HTREEITEM hItem = nullptr;
    quintptr lParam = 0; // the item data
};

Q_DECLARE_METATYPE(NMLVDISPINFO*)
Q_DECLARE_METATYPE(NMITEMACTIVATE)
Q_DECLARE_METATYPE(NMLISTVIEW)
