#include "DialogTemplate.h"

#include "Resource.h"

namespace {
constexpr int kTop = 1;
constexpr int kBottom = 2;
constexpr int kLeft = 4;
constexpr int kRight = 8;
constexpr int kTopLeft = kTop | kLeft;

DialogTemplate makeSysCodeDlg()
{
    using K = ControlKind;
    DialogTemplate t { IDD_SYSCODE_DLG, QStringLiteral("系统编号管理"), QSize(724, 241), {} };
    t.controls = {
        { IDC_BTN_OK, K::DefPushButton, QStringLiteral("确认"), QRect(612, 221, 50, 14), kBottom | kRight },
        { IDC_BTN_CANCEL, K::PushButton, QStringLiteral("取消"), QRect(668, 221, 50, 14), kBottom | kRight },
        { IDC_STATIC_SPEC, K::Static, QStringLiteral("专业分类:"), QRect(6, 7, 42, 8), kTopLeft },
        { IDC_STATIC_SYSCODE, K::Static, QStringLiteral("系统编号:"), QRect(81, 7, 60, 8), kTopLeft },
        { IDC_LIST_SPEC, K::ListBox, QString(), QRect(6, 18, 63, 198), kTop | kBottom | kLeft },
        { IDC_TREE_SYSCODE, K::ListView, QString(), QRect(78, 18, 640, 198),
            kTop | kBottom | kLeft | kRight },
        { IDC_BTN_BATCH_MODIFY, K::PushButton, QStringLiteral("批量修改"), QRect(159, 221, 62, 14),
            kBottom | kRight },
        { IDC_BTN_DELETE_PIPEINFO, K::PushButton, QStringLiteral("删除管线信息"), QRect(238, 221, 62, 14),
            kBottom | kRight },
        { IDC_BTN_IMPORT, K::PushButton, QStringLiteral("导入"), QRect(40, 221, 29, 14), kBottom | kLeft },
        { IDC_BTN_EXPORT, K::PushButton, QStringLiteral("导出"), QRect(7, 221, 29, 14), kBottom | kLeft },
        { IDC_CHECK_DISP_ADDEDMSG, K::CheckBox, QStringLiteral("工具栏处显示管线信息及备注"),
            QRect(303, 6, 117, 10), kTopLeft },
        { IDC_BTN_EXPAND_LEVEL, K::PushButton, QStringLiteral("+"), QRect(253, 5, 18, 11), kTopLeft },
        { IDC_BTN_COLLAPSE_LEVEL, K::PushButton, QStringLiteral("-"), QRect(276, 5, 18, 11), kTopLeft },
        { IDC_BTN_CLOUD_IMPORT, K::PushButton, QStringLiteral("从云盘导入"), QRect(80, 221, 62, 14), kTopLeft,
            false },
        { IDC_STATIC_LINETYPE_SCALE, K::Static, QStringLiteral("线型比例"), QRect(180, 6, 33, 8),
            kTop | kRight },
        { IDC_EDIT_LINETYPE_SCALE, K::NumEdit, QString(), QRect(216, 4, 29, 12), kTop | kRight },
    };
    return t;
}
} // namespace

const ControlTemplate* DialogTemplate::control(int controlId) const
{
    for (const ControlTemplate& c : controls) {
        if (c.id == controlId)
            return &c;
    }
    return nullptr;
}

const DialogTemplate& SysCodeDlgTemplate()
{
    static const DialogTemplate t = makeSysCodeDlg();
    return t;
}
