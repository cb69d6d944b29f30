#include "DxfReader.h"

#include "DxfEntityParser.h"
#include "DxfFileStream.h"
#include "DxfGroupReader.h"
#include "DxfTextCodec.h"
#include "ZcDbBlockReference.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbDatabase.h"
#include "ZcDbObjectArena.h"

#include <cmath>
#include <vector>

struct DxfReader::State
{
    template <typename Source>
    State(Source& source, ZcDbDatabase& db)
        : reader(source)
        , strings(codec)
        , entity(strings)
        , child(strings)
        , database(db)
    { }

    bool readHeader();
    bool readTables();
    bool readTable(const DxfGroup& nameGroup);
    bool readBlocks();
    bool readEntities(ZcDbBlockTableRecord* target, std::string_view end);
    bool readEntity(ZcDbBlockTableRecord* target);
    bool readSubentities(ZcDbBlockReference* reference);
    bool skipToGroupZero();
    bool skipSection();
    // Passes over groups up to the next section or the end of the drawing, the
    // first being `first`; notes how many. False when the data ends first.
    bool skipStrayGroups(const DxfGroup& first);
    void resolveBlockReferences();
    bool expectedGroupZero(const DxfGroup& group);

    DxfGroupReader reader;
    DxfTextCodec codec;
    DxfStringPool strings;
    DxfEntityParser entity;
    DxfEntityParser child;
    ZcDbDatabase& database;
    QString version;
    QString codePage;
    QString problem;
    std::vector<std::pair<ZcDbObjectId, QString>> pendingReferences;
};

namespace {
QString latin(std::string_view text)
{
    return QString::fromLatin1(text.data(), qsizetype(text.size())).trimmed();
}
} // namespace

bool DxfReader::State::skipToGroupZero()
{
    DxfGroup group;
    while (reader.next(group))
        if (group.code == 0) {
            reader.pushBack();
            return true;
        }
    return false;
}

bool DxfReader::State::expectedGroupZero(const DxfGroup& group)
{
    if (group.code == 0 || group.code == 999)
        return true;
    problem = QStringLiteral("unexpected group %1").arg(group.code);
    return false;
}

bool DxfReader::State::skipSection()
{
    DxfGroup group;
    while (reader.next(group))
        if (group.code == 0 && group.is("ENDSEC"))
            return true;
    return false;
}

bool DxfReader::State::skipStrayGroups(const DxfGroup& first)
{
    const qint64 at = reader.position();
    const int firstCode = first.code;
    int skipped = 1;
    DxfGroup group;
    bool more = false;
    while ((more = reader.next(group)) && !(group.code == 0 && (group.is("SECTION") || group.is("EOF"))))
        ++skipped;
    if (more)
        reader.pushBack();
    database.addReadNote(QStringLiteral("skipped %1 group(s) between sections at %2, the first a group %3")
                             .arg(skipped)
                             .arg(at)
                             .arg(firstCode));
    return more;
}

bool DxfReader::State::readHeader()
{
    DxfGroup group;
    QString variable;
    while (reader.next(group)) {
        if (group.code == 0)
            return group.is("ENDSEC") ? true
                                      : (problem = QStringLiteral("unexpected entity in HEADER"), false);
        if (group.code == 9)
            variable = latin(group.text).toUpper();
        else if (variable == u"$ACADVER" && group.code == 1)
            version = latin(group.text);
        else if (variable == u"$DWGCODEPAGE" && group.code == 3)
            codePage = latin(group.text);
        else if (variable == u"$LTSCALE" && group.code == 40) {
            const double scale = group.toDouble();
            if (std::isfinite(scale) && scale > 0)
                database.setLineTypeScale(scale);
        }
    }
    return false;
}

bool DxfReader::State::readTables()
{
    DxfGroup group;
    while (reader.next(group)) {
        if (!expectedGroupZero(group))
            return false;
        if (group.code == 999)
            continue;
        if (group.is("ENDSEC"))
            return true;
        if (!group.is("TABLE")) {
            problem = QStringLiteral("unexpected %1 in TABLES").arg(latin(group.text));
            return false;
        }
        DxfGroup nameGroup;
        if (!reader.next(nameGroup) || nameGroup.code != 2) {
            problem = QStringLiteral("table without a name");
            return false;
        }
        if (!readTable(nameGroup))
            return false;
    }
    return false;
}

bool DxfReader::State::readTable(const DxfGroup& nameGroup)
{
    const QString table = latin(nameGroup.text).toUpper();
    if (!skipToGroupZero())
        return false;
    DxfGroup group;
    while (reader.next(group)) {
        if (group.code != 0)
            continue;
        if (group.is("ENDTAB"))
            return skipToGroupZero() || reader.atEnd();
        const bool isLayer = table == u"LAYER" && group.is("LAYER");
        const bool isApp = table == u"APPID" && group.is("APPID");
        const bool isLineType = table == u"LTYPE" && group.is("LTYPE");
        ZcDbLineType lineType;
        ZcDbLayerTableRecord layer;
        QString appName;
        bool more = false;
        while ((more = reader.next(group)) && group.code != 0) {
            if (isLayer) {
                if (group.code == 2)
                    layer.name = strings.get(group.text);
                else if (group.code == 62) {
                    const qint64 color = group.toInt();
                    layer.isOff = color < 0;
                    layer.colorIndex = quint16(std::min<qint64>(std::llabs(color), 256));
                } else if (group.code == 70) {
                    const qint64 flags = group.toInt();
                    layer.isFrozen = flags & 1;
                    layer.isLocked = flags & 4;
                } else if (group.code == 6) {
                    layer.linetype = strings.get(group.text);
                } else if (group.code == 420) {
                    layer.trueColor = quint32(group.toInt() & 0xFFFFFF);
                    layer.hasTrueColor = true;
                }
            } else if (isLineType && group.code == 2) {
                lineType.name = strings.get(group.text);
            } else if (isLineType && group.code == 49) {
                const double length = group.toDouble();
                if (std::isfinite(length) && lineType.pattern.size() < 64)
                    lineType.pattern.push_back(length);
            } else if (isApp && group.code == 2) {
                appName = strings.get(group.text);
            }
        }
        if (more)
            reader.pushBack();
        if (isLayer && !layer.name.isEmpty())
            database.setLayer(layer);
        if (isLineType && !lineType.name.isEmpty())
            database.setLineType(lineType);
        if (isApp && !appName.isEmpty())
            database.addRegisteredApp(appName);
    }
    return false;
}

bool DxfReader::State::readBlocks()
{
    DxfGroup group;
    while (reader.next(group)) {
        if (!expectedGroupZero(group))
            return false;
        if (group.code == 999)
            continue;
        if (group.is("ENDSEC"))
            return true;
        if (!group.is("BLOCK")) {
            problem = QStringLiteral("unexpected %1 in BLOCKS").arg(latin(group.text));
            return false;
        }
        entity.begin("BLOCK");
        entity.readGroups(reader);
        const QString name = entity.blockName();
        if (name.isEmpty()) {
            problem = QStringLiteral("block without a name");
            return false;
        }
        ZcDbBlockTableRecord* record = database.ensureBlock(name);
        record->setOrigin(entity.point10());
        if (!readEntities(record, "ENDBLK"))
            return false;
    }
    return false;
}

bool DxfReader::State::readEntities(ZcDbBlockTableRecord* target, std::string_view end)
{
    DxfGroup group;
    while (reader.next(group)) {
        if (!expectedGroupZero(group))
            return false;
        if (group.code == 999)
            continue;
        // What the entities before this one were read from is done with.
        reader.releaseBeforeLastGroup();
        if (group.is(end)) {
            // The end marker may carry groups of its own (ENDBLK has a handle).
            return skipToGroupZero();
        }
        if (group.is("ENDSEC") || group.is("EOF") || group.is("BLOCK") || group.is("ENDBLK")) {
            problem = QStringLiteral("%1 where %2 was expected").arg(latin(group.text), latin(end));
            return false;
        }
        entity.begin(group.text);
        entity.readGroups(reader);
        if (reader.failed())
            return false;
        if (!readEntity(target))
            return false;
    }
    return false;
}

bool DxfReader::State::readEntity(ZcDbBlockTableRecord* target)
{
    const bool isInsert = entity.type() == "INSERT";
    const bool isPolyline = entity.type() == "POLYLINE";
    const bool hasSubentities = (isInsert && entity.followedBySubentities()) || isPolyline;
    const QString blockName = isInsert ? entity.blockName() : QString();
    const bool paperSpace = entity.inPaperSpace() && target->objectId() == database.modelSpaceId();
    ZcDbBlockTableRecord* owner
        = paperSpace ? database.ensureBlock(QString::fromUtf16(ZCDB_PAPER_SPACE)) : target;

    if (isPolyline) {
        // The vertices follow as VERTEX entities up to SEQEND.
        DxfGroup group;
        while (reader.next(group)) {
            if (group.code != 0 || !group.is("VERTEX")) {
                reader.pushBack();
                break;
            }
            child.begin("VERTEX");
            if (entity.isMesh())
                child.keepAllGroups();
            child.readGroups(reader);
            if (entity.isMesh())
                entity.appendGroupsFrom(child);
            else
                entity.appendVertexFrom(child);
        }
        // A mesh is kept whole, its end of sequence included.
        if (entity.isMesh() && reader.next(group)) {
            if (group.code == 0 && group.is("SEQEND")) {
                child.begin("SEQEND");
                child.keepAllGroups();
                child.readGroups(reader);
                entity.appendGroupsFrom(child);
            } else {
                reader.pushBack();
            }
        }
    }
    std::unique_ptr<ZcDbEntity> built = entity.build();
    if (built && (!entity.lineTypeName().isEmpty() || entity.lineTypeScale() != 1.0)) {
        const QString lineType = entity.lineTypeName();
        built->setLineStyleIndex(database.lineStyleIndex(
            { lineType.isEmpty() ? QStringLiteral("BYLAYER") : lineType, entity.lineTypeScale() }));
    }
    ZcDbObjectId id;
    if (built)
        id = owner->appendOwned(ZcDbDatabase::promote(std::move(built)));
    if (isInsert && !id.isNull())
        pendingReferences.emplace_back(id, blockName);
    if (!hasSubentities)
        return true;
    return readSubentities(ZcDbBlockReference::cast(id.object()));
}

bool DxfReader::State::readSubentities(ZcDbBlockReference* reference)
{
    DxfGroup group;
    while (reader.next(group)) {
        if (group.code != 0) {
            problem = QStringLiteral("unexpected group %1").arg(group.code);
            return false;
        }
        if (group.is("SEQEND"))
            return skipToGroupZero();
        if (!group.is("ATTRIB")) {
            // A sequence without its end: what follows is the next entity.
            reader.pushBack();
            return true;
        }
        child.begin("ATTRIB");
        child.readGroups(reader);
        std::unique_ptr<ZcDbEntity> attribute = child.build();
        if (reference && attribute) {
            const ZcDbObjectId id = database.addObject(std::move(attribute), reference->objectId());
            reference->attachAttributeIndex(id.index());
        }
    }
    return false;
}

void DxfReader::State::resolveBlockReferences()
{
    ZcDbBlockTable* table = nullptr;
    if (database.getBlockTable(table, ZcDb::kForRead) != Zcad::eOk)
        return;
    for (const auto& [referenceId, name] : pendingReferences) {
        ZcDbObjectId blockId;
        table->getAt(name, blockId, true);
        if (auto* reference = ZcDbBlockReference::cast(referenceId.object()))
            reference->setBlockTableRecord(blockId);
    }
    table->close();
}

Zcad::ErrorStatus DxfReader::fail(Zcad::ErrorStatus status, const QString& message)
{
    m_error = message;
    return status;
}

Zcad::ErrorStatus DxfReader::read(std::string_view data, ZcDbDatabase& database)
{
    std::string_view source = data;
    State state(source, database);
    return read(state);
}

Zcad::ErrorStatus DxfReader::read(DxfFileStream& stream, ZcDbDatabase& database)
{
    State state(stream, database);
    const Zcad::ErrorStatus status = read(state);
    if (stream.failed())
        return fail(Zcad::eFileAccessErr, stream.error());
    return status;
}

Zcad::ErrorStatus DxfReader::read(State& state)
{
    m_error.clear();
    ZcDbDatabase& database = state.database;
    // Everything made while reading lives as long as the database's content.
    const ZcDbObjectArena::Scope arena(database.objectArena());
    DxfGroupReader& reader = state.reader;
    ZcDbBlockTableRecord* modelSpace = database.ensureBlock(QString::fromUtf16(ZCDB_MODEL_SPACE));
    database.ensureBlock(QString::fromUtf16(ZCDB_PAPER_SPACE));
    database.setLayer({ QStringLiteral("0"), 7 });

    DxfGroup group;
    bool sawSection = false;
    bool sawEnd = false;
    while (!sawEnd && reader.next(group)) {
        if (group.code == 999)
            continue;
        if (group.code != 0 || !(group.is("SECTION") || group.is("EOF"))) {
            if (!sawSection)
                return fail(Zcad::eBadDwgHeader, QStringLiteral("not a DXF drawing"));
            // Other programs leave stray groups between sections: passed over up to
            // the next section, and said.
            if (!state.skipStrayGroups(group))
                break;
            continue;
        }
        if (group.is("EOF")) {
            sawEnd = true;
            break;
        }
        sawSection = true;
        DxfGroup name;
        if (!reader.next(name) || name.code != 2)
            return fail(Zcad::eDwgNeedsRecovery,
                QStringLiteral("section without a name at %1").arg(reader.position()));
        bool ok = false;
        if (name.is("HEADER")) {
            ok = state.readHeader();
            state.codec.configure(state.version, state.codePage);
        } else if (name.is("TABLES")) {
            ok = state.readTables();
        } else if (name.is("BLOCKS")) {
            ok = state.readBlocks();
        } else if (name.is("ENTITIES")) {
            ok = state.readEntities(modelSpace, "ENDSEC");
        } else {
            ok = state.skipSection();
        }
        if (!ok) {
            if (reader.failed())
                return fail(Zcad::eDwgNeedsRecovery, reader.error());
            if (!state.problem.isEmpty())
                return fail(Zcad::eDwgNeedsRecovery,
                    QStringLiteral("%1 at %2").arg(state.problem).arg(reader.position()));
            return fail(Zcad::eDwgNeedsRecovery, QStringLiteral("the drawing ends inside a section"));
        }
    }
    if (reader.failed())
        return fail(sawSection ? Zcad::eDwgNeedsRecovery : Zcad::eBadDwgHeader, reader.error());
    if (!sawSection && !sawEnd)
        return fail(Zcad::eBadDwgHeader, QStringLiteral("not a DXF drawing"));
    if (!sawEnd)
        return fail(Zcad::eDwgNeedsRecovery, QStringLiteral("the drawing ends without EOF"));
    state.resolveBlockReferences();
    database.setHeaderValues(
        state.version.isEmpty() ? QStringLiteral("AC1009") : state.version, state.codePage);
    return Zcad::eOk;
}
