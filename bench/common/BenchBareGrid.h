#pragma once

// The honest anchor of every fill: the grid filled with the texts and colours of a
// code tree, one call per cell, with nothing the dialog adds (editors, lists,
// item data, pipeline information).
#include "TreeListTypes.h"

class CSysCodeData;
class CTreeListCtrl;

// The ten columns of a specialty that shows the pipeline columns.
void InsertBareColumns(CTreeListCtrl& grid);
// The rows of `node`'s children and their subtrees under `parent`.
void FillBareGrid(CTreeListCtrl& grid, const CSysCodeData& node, HTREEITEM parent);
