#pragma once

// Gathers the groups of one DXF entity and makes the database entity from them.
#include "DxfGroupReader.h"
#include "DxfXDataPool.h"
#include "ZcDbPolyline.h"
#include "ZcDbProxyEntity.h"
#include "ZcDbXData.h"
#include "ZcGePoint3d.h"

#include <QString>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class DxfTextCodec;
class ZcDbEntity;

// Shares one QString among equal short texts (layers, applications, index paths),
// so a drawing of many alike entities stays small.
class DxfStringPool
{
public:
    explicit DxfStringPool(DxfTextCodec& codec)
        : m_codec(codec)
    { }
    QString get(std::string_view bytes);
    QString decode(std::string_view bytes);
    // The extended data read before from groups whose bytes were `key`; null when
    // new. Entities of a drawing mostly repeat a few lists, which are kept once.
    std::shared_ptr<const std::vector<ZcDbXDataApp>> sharedXData(const std::string& key);
    void keepXData(const std::string& key, std::shared_ptr<const std::vector<ZcDbXDataApp>> xdata);

private:
    struct Hash
    {
        using is_transparent = void;
        size_t operator()(std::string_view s) const { return std::hash<std::string_view> {}(s); }
    };
    // Whether a full pool still earns its look-ups: in a drawing whose texts
    // rarely repeat (every pipe its own code) it stops looking.
    struct Use
    {
        size_t hitsWhenFull = 0;
        size_t missesWhenFull = 0;
        bool off = false;
        void count(bool full, bool hit);
    };

    struct Recent
    {
        std::string bytes;
        QString text;
    };
    // `repeated`: the text was in the pool already.
    QString lookUp(std::string_view bytes, bool& repeated);

    DxfTextCodec& m_codec;
    // Texts met more than once, newest replacing oldest.
    std::array<Recent, 4> m_recent;
    size_t m_nextRecent = 0;
    Use m_poolUse;
    Use m_xdataPoolUse;
    std::unordered_map<std::string, QString, Hash, std::equal_to<>> m_pool;
    DxfXDataPool m_xdataPool;
};

class DxfEntityParser
{
public:
    explicit DxfEntityParser(DxfStringPool& strings);

    // Starts an entity of DXF kind `type` (the value of its group 0).
    void begin(std::string_view type);
    // Reads the entity's groups up to (not including) the next group 0.
    void readGroups(DxfGroupReader& reader);

    std::string_view type() const { return m_type; }
    QString blockName() const;
    bool followedBySubentities() const { return m_flags66 != 0; }
    bool inPaperSpace() const { return m_paperSpace; }
    ZcGePoint3d point10() const { return m_p10; }
    int flags70() const { return m_flags70; }
    // For a POLYLINE, the vertex a following VERTEX entity describes.
    void appendVertexFrom(const DxfEntityParser& vertex);
    // A polyline whose vertices are a mesh's, not an outline's.
    bool isMesh() const { return m_type == "POLYLINE" && (m_flags70 & (16 | 64)); }
    // For a mesh, a following entity (a vertex, the end of the sequence) kept with
    // it, its kind as a group 0.
    void appendGroupsFrom(const DxfEntityParser& part);
    // The entity's own line type (empty: by layer) and scale of its pattern.
    QString lineTypeName() const;
    double lineTypeScale() const { return m_ltScale; }

    // The entity these groups describe; null for kinds that are not kept.
    std::unique_ptr<ZcDbEntity> build();

private:
    void take(const DxfGroup& group);
    void keep(const DxfGroup& group, bool binary);
    void takeXData(const DxfGroup& group);
    std::shared_ptr<const std::vector<ZcDbXDataApp>> makeXData();
    void applyCommon(ZcDbEntity& entity);
    std::unique_ptr<ZcDbEntity> buildText();

    DxfStringPool& m_strings;
    std::string_view m_type;
    bool m_isLwPolyline = false;
    bool m_embedded = false;
    quint64 m_handle = 0;
    std::string_view m_layer;
    int m_color = 256;
    qint64 m_trueColor = -1;
    bool m_paperSpace = false;
    ZcGePoint3d m_p10;
    ZcGePoint3d m_p11;
    bool m_has11 = false;
    double m_r40 = 0.0;
    double m_r41 = 1.0;
    double m_r42 = 1.0;
    double m_r43 = 1.0;
    bool m_has41 = false;
    bool m_has42 = false;
    bool m_has43 = false;
    double m_a50 = 0.0;
    double m_a51 = 0.0;
    double m_elevation = 0.0;
    double m_r44 = 0.0;
    double m_r45 = 0.0;
    double m_ltScale = 1.0;
    ZcGeVector3d m_normal { 0.0, 0.0, 1.0 };
    std::string_view m_lineType;
    std::string_view m_s1;
    std::string_view m_s2;
    std::string_view m_s3;
    std::string m_mtextChunks;
    int m_flags66 = 0;
    int m_flags70 = 0;
    int m_i71 = 0;
    int m_i72 = 0;
    int m_i73 = 0;
    int m_i74 = 0;
    std::vector<ZcDbPolyline::Vertex> m_vertices;
    // The extended data groups from the first application name (1001) on, and
    // their bytes as the key under which equal lists are shared.
    std::vector<DxfGroup> m_xdataGroups;
    std::string m_xdataKey;
    // An entity of a kind without its own class keeps all its groups.
    bool m_keepGroups = false;

public:
    // Keeps all groups whatever the kind (the parts of a mesh).
    void keepAllGroups() { m_keepGroups = true; }

private:
    // Packed as ZcDbProxyEntity keeps them.
    QByteArray m_groups;
};
