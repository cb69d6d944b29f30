#include "HostDrawingCommands.h"

#include "CISysCode.h"
#include "CProj.h"
#include "CSysCodeData.h"
#include "FloorSaver.h"
#include "HostSession.h"
#include "HostWindow.h"
#include "IFaceBarCtrl.h"
#include "LineTypeMgr.h"
#include "QvKsCodeStyles.h"
#include "QvKsDataMng.h"
#include "QvKsEntity.h"
#include "ZcDbArc.h"
#include "ZcDbDatabase.h"
#include "ZcDbLine.h"
#include "ZcDbPolyline.h"
#include "ZcEdSelection.h"
#include "ZcUtPrintf.h"

#include <QFileInfo>

#include <memory>

namespace {
constexpr double kDrawingUnitsPerPatternUnit = 100.0;

bool IsCodeShape(const ZcDbEntity& entity)
{
    return ZcDbLine::cast(&entity) || ZcDbArc::cast(&entity) || ZcDbPolyline::cast(&entity);
}

// Replaces the entity open for write by `replacement`, keeping its id; the entity
// is deleted.
bool Replace(ZcDbEntity* entity, std::unique_ptr<ZcDbEntity> replacement)
{
    if (entity->handOverTo(replacement.get()) != Zcad::eOk)
        return false;
    replacement.release()->close();
    delete entity;
    return true;
}
} // namespace

HostDrawingCommands::HostDrawingCommands(HostWindow& window, HostSession& session)
    : m_window(window)
    , m_session(session)
{ }

const QList<HostCommandName>& HostDrawingCommands::Names()
{
    static const QList<HostCommandName> names {
        { QStringLiteral("ASSIGNCODE"), QStringLiteral("FPBH"),
            QStringLiteral(
                "puts the attribute bar's current code on the selected lines, arcs and polylines") },
        { QStringLiteral("REMOVECODE"), QStringLiteral("QCBH"),
            QStringLiteral("takes the system code off the selected entities") },
        { QStringLiteral("SAVE"), QStringLiteral("SAVE"),
            QStringLiteral("writes the floor back to its drawing file") },
        { QStringLiteral("QSAVE"), QStringLiteral("QSAVE"), QStringLiteral("the same as SAVE") },
    };
    return names;
}

bool HostDrawingCommands::Run(const QString& name)
{
    const auto named = [&name](int i) { return name == Names()[i].global || name == Names()[i].local; };
    if (named(0))
        Assign();
    else if (named(1))
        Remove();
    else if (named(2) || named(3))
        Save();
    else
        return false;
    return true;
}

QString HostDrawingCommands::CurrentBarIndexPath(QString& why)
{
    const QString code = IFaceBarCtrl::CurSysCode();
    if (code.isEmpty()) {
        why = QStringLiteral("属性栏中没有当前系统编号, 请先在属性栏中选择一个系统编号。");
        return QString();
    }
    QString fullName = code;
    fullName.replace(u'&', u'\\');
    const CSysCodeData* node = IFaceBarCtrl::SysCodes().FindByFullName(fullName);
    const int spec = QvKsCodeStyles::SpecNumberOf(IFaceBarCtrl::CurSpec());
    if (!node || spec <= 0) {
        why = QStringLiteral("系统编号 %1 不在当前专业中。").arg(code);
        return QString();
    }
    return QvKsCodeStyles::IndexPathOf(spec, node->GetNodeIndex());
}

CodeAssignment HostDrawingCommands::AssignCode(const std::vector<ZcDbObjectId>& ids, const QString& indexPath)
{
    CodeAssignment result;
    for (const ZcDbObjectId& id : ids) {
        ZcDbEntity* entity = nullptr;
        if (zcdbOpenObject(entity, id, ZcDb::kForWrite) != Zcad::eOk)
            continue;
        if (auto* product = QvKsEntity::cast(entity)) {
            product->SetSysCodeIndex(indexPath);
            product->close();
            ++result.changed;
            continue;
        }
        if (!IsCodeShape(*entity)) {
            entity->close();
            ++result.skipped;
            continue;
        }
        // The shape keeps its layer, colour and extended data; the product entity
        // takes them over, as a drawing read from a file has it.
        auto shape = std::unique_ptr<ZcDbEntity>(entity->clone());
        auto product = std::make_unique<QvKsEntity>(std::move(shape));
        product->SetSysCodeIndex(indexPath);
        if (ZcDbDatabase* database = entity->database())
            database->addRegisteredApp(QvKsEntity::kAppName);
        if (Replace(entity, std::move(product)))
            ++result.changed;
        else
            entity->close();
    }
    return result;
}

CodeAssignment HostDrawingCommands::RemoveCode(const std::vector<ZcDbObjectId>& ids)
{
    CodeAssignment result;
    for (const ZcDbObjectId& id : ids) {
        QvKsEntity* product = nullptr;
        if (zcdbOpenObject(product, id, ZcDb::kForWrite) != Zcad::eOk || !product->shape()) {
            if (product)
                product->close();
            ++result.skipped;
            continue;
        }
        auto shape = std::unique_ptr<ZcDbEntity>(product->shape()->clone());
        shape->setLayerOf(*product);
        shape->setColorIndex(product->colorIndex());
        if (product->hasTrueColor())
            shape->setTrueColor(product->trueColor());
        if (product->xDataAll())
            for (const ZcDbXDataApp& app : *product->xDataAll())
                if (app.appName.compare(QvKsEntity::kAppName, Qt::CaseInsensitive) != 0)
                    shape->setXData(app.appName, app.values);
        if (Replace(product, std::move(shape)))
            ++result.changed;
        else
            product->close();
    }
    return result;
}

bool HostDrawingCommands::Select(std::vector<ZcDbObjectId>& ids)
{
    zds_name selection = { 0, 0 };
    if (zcedSSGet(nullptr, nullptr, nullptr, nullptr, selection) != RTNORM)
        return false;
    qint32 length = 0;
    zcedSSLength(selection, &length);
    for (qint32 i = 0; i < length; ++i) {
        zds_name entity = { 0, 0 };
        ZcDbObjectId id;
        if (zcedSSName(selection, i, entity) == RTNORM && zcdbGetObjectId(id, entity) == Zcad::eOk)
            ids.push_back(id);
    }
    zcedSSFree(selection);
    return true;
}

void HostDrawingCommands::Assign()
{
    QString why;
    const QString indexPath = CurrentBarIndexPath(why);
    if (indexPath.isEmpty()) {
        zcutPrintf(u'\n' + why);
        return;
    }
    const QString code = IFaceBarCtrl::CurSysCode();
    zcutPrintf(QStringLiteral("\n选择要赋系统编号 %1 的直线、圆弧或多段线:").arg(code));
    std::vector<ZcDbObjectId> ids;
    if (!Select(ids)) {
        zcutPrintf(QStringLiteral("\n*取消*"));
        return;
    }
    const CodeAssignment done = AssignCode(ids, indexPath);
    QString text = QStringLiteral("\n%1 个对象赋上了系统编号 %2").arg(done.changed).arg(code);
    if (done.skipped > 0)
        text += QStringLiteral(", %1 个对象不是直线、圆弧或多段线, 未改变").arg(done.skipped);
    zcutPrintf(text + QStringLiteral("。"));
    m_window.Regen();
    IFaceBarCtrl::ReFreshSysCodeBar();
}

void HostDrawingCommands::Remove()
{
    zcutPrintf(QStringLiteral("\n选择要清除系统编号的对象:"));
    std::vector<ZcDbObjectId> ids;
    if (!Select(ids)) {
        zcutPrintf(QStringLiteral("\n*取消*"));
        return;
    }
    const CodeAssignment done = RemoveCode(ids);
    QString text = QStringLiteral("\n%1 个对象清除了系统编号").arg(done.changed);
    if (done.skipped > 0)
        text += QStringLiteral(", %1 个对象没有系统编号").arg(done.skipped);
    zcutPrintf(text + QStringLiteral("。"));
    m_window.Regen();
    IFaceBarCtrl::ReFreshSysCodeBar();
}

void HostDrawingCommands::Save()
{
    const ZcDbDatabase* database = m_session.Database();
    const QString path = m_session.DrawingFile();
    if (!database || path.isEmpty()) {
        zcutPrintf(QStringLiteral("\n没有打开的图形。"));
        return;
    }
    // The look the view shows is the one the file gets.
    QvKsCodeStyles::Instance().Reload();
    LineTypeMgr::Instance()->LoadOrBuild(QvKsCodeStyles::Instance());
    FloorSaver::Settings settings;
    settings.colorBySystem = CProj().GetColorShowType() == 1;
    QString scaleText;
    bool ok = false;
    const double scale = CISysCode::GetLineTypeScale(scaleText) ? scaleText.toDouble(&ok) : 1.0;
    settings.lineTypeScale = (ok && scale > 0 ? scale : 1.0) * kDrawingUnitsPerPatternUnit;
    const FloorSaver saver(QvKsCodeStyles::Instance(), *LineTypeMgr::Instance(), settings);
    const FloorSaveResult result = saver.Save(*database, path, QvKsDataMng::ProjectFolder());
    const QString file = QFileInfo(path).fileName();
    if (!result.status) {
        zcutPrintf(QStringLiteral("\n无法保存 %1: %2").arg(file, result.status.Describe()));
        return;
    }
    zcutPrintf(QStringLiteral("\n已保存 %1: %2 个对象, 其中 %3 个带系统编号%4。")
                   .arg(file)
                   .arg(result.entities)
                   .arg(result.productEntities)
                   .arg(settings.colorBySystem ? QStringLiteral(", 按系统显示颜色") : QString()));
    if (!result.droppedEntities.isEmpty())
        zcutPrintf(QStringLiteral("\n未能写入的对象: %1").arg(result.droppedEntities));
    if (!result.partsNotKept.isEmpty())
        zcutPrintf(QStringLiteral("\n未保留: %1").arg(result.partsNotKept.join(QStringLiteral(", "))));
}
