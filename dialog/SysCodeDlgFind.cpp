// The find field (Ctrl+F) over the grid: SysCodeFindBar.
#include "SysCodeDlg.h"

#include "SysCodeColumns.h"
#include "SysCodeFindBar.h"

void SysCodeDlg::ConnectFind()
{
    m_findBar = new SysCodeFindBar(
        *this, m_tree, [this] { return SysCodeVisibleColumn(kColRemark, IsElectrical()); },
        [this] { return SysCodeVisibleColumn(kColPipeInfo, IsElectrical()); });
}
