#pragma once

// Control, command and resource ids of the module's dialogs and menus. Code and
// tests find controls by these numbers.

// System-code management dialog.
constexpr int IDD_SYSCODE_DLG = 200;
constexpr int IDI_SYSCODE_ICON = 201;
constexpr int IDC_BTN_OK = 1;
constexpr int IDC_BTN_CANCEL = 2;
constexpr int IDC_LIST_SPEC = 200;
constexpr int IDC_TREE_SYSCODE = 201;
constexpr int IDC_BTN_BATCH_MODIFY = 202;
constexpr int IDC_BTN_DELETE_PIPEINFO = 203;
constexpr int IDC_BTN_IMPORT = 204;
constexpr int IDC_BTN_EXPORT = 205;
constexpr int IDC_CHECK_DISP_ADDEDMSG = 206;
constexpr int IDC_BTN_EXPAND_LEVEL = 207;
constexpr int IDC_BTN_COLLAPSE_LEVEL = 208;
constexpr int IDC_STATIC_SPEC = 209;
constexpr int IDC_STATIC_SYSCODE = 210;
constexpr int IDC_BTN_CLOUD_IMPORT = 211;
constexpr int IDC_STATIC_LINETYPE_SCALE = 3000;
constexpr int IDC_EDIT_LINETYPE_SCALE = 3001;

// In-place editors and in-cell controls of the grid.
constexpr int IDC_EDIT_NAME = 10000;
constexpr int IDC_EDIT_REMARK = 10001;
constexpr int IDC_EDIT_NAME_INNER = 10002;
constexpr int IDC_EDIT_REMARK_INNER = 10003;
constexpr int IDC_COMBO_LIST = 10004;
constexpr int IDC_COMBO_LINEWIDTH = 1005;
constexpr int IDC_BTN_COLOR_CELL = 10008;
constexpr int IDC_BTN_PIPEINFO_CELL = 10009;

// Context-menu commands of the grid.
constexpr int ID_MENU_ADD_SIBLING = 1000;
constexpr int ID_MENU_ADD_CHILD = 1001;
constexpr int ID_MENU_DELETE = 1002;
constexpr int ID_MENU_INSERT = 1003;
constexpr int ID_MENU_COPY = 1004;
constexpr int ID_MENU_PASTE = 1005;

// Message the display-control window reloads its codes on.
constexpr unsigned WM_SYSCODE_RELOAD = 7034;

// Pipeline-information picker "选构件".
constexpr int IDD_CHANGE_NAME_DLG = 206;
constexpr int IDC_TREE_NAMES = 204;
constexpr int IDC_BTN_ATT_DEFINE = 205;

// Batch modification dialog "批量修改".
constexpr int IDD_BATCH_MODIFY_DLG = 212;
constexpr int IDC_BATCH_CHK_COLOR = 3012;
constexpr int IDC_BATCH_BTN_COLOR = 3013;
constexpr int IDC_BATCH_CHK_PIPEINFO = 3008;
constexpr int IDC_BATCH_BTN_PIPEINFO = 3006;
constexpr int IDC_BATCH_CHK_HORMODE = 207;
constexpr int IDC_BATCH_CMB_HORMODE = 3004;
constexpr int IDC_BATCH_CHK_VERMODE = 208;
constexpr int IDC_BATCH_CMB_VERMODE = 3002;
constexpr int IDC_BATCH_CHK_REMARK = 209;
constexpr int IDC_BATCH_EDIT_REMARK = 3007;

// Import preview "导入预览": what an import will add and change, confirmed or cancelled.
constexpr int IDC_PREVIEW_SUMMARY = 3101;
constexpr int IDC_PREVIEW_LIST = 3102;

// "合并": the codes changed both here and by someone else since the dialog read them.
constexpr int IDC_MERGE_SUMMARY = 3151;
constexpr int IDC_MERGE_LIST = 3152;
constexpr int IDC_MERGE_THEIRS = 3153;
constexpr int IDC_MERGE_MINE = 3154;
constexpr int IDC_MERGE_ALL_THEIRS = 3155;
constexpr int IDC_MERGE_ALL_MINE = 3156;

// Code usage "使用情况": how many product entities of each floor use each code.
constexpr int IDC_USAGE_LIST = 3201;
constexpr int IDC_USAGE_SCAN_ALL = 3202;
constexpr int IDC_USAGE_SUMMARY = 3203;
// The floors whose drawings could not be read, one a line with the reason.
constexpr int IDC_USAGE_FLOORS = 3204;

// The find field over the grid (Ctrl+F).
constexpr int IDC_FIND_TEXT = 3301;
