// The pipeline-information cell: its button opens the pipeline-information picker.
#include "SysCodeDlg.h"

// The picker is not part of the dialog yet: the button does nothing and the cell
// keeps its text.
void SysCodeDlg::OnPipeInfoCellButton(HTREEITEM /*row*/)
{ }
