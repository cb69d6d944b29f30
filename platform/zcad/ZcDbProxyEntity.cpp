#include "ZcDbProxyEntity.h"

#include <cstring>

ZCRX_DEFINE_MEMBERS(ZcDbProxyEntity, ZcDbEntity)

ZcDbProxyEntity::ZcDbProxyEntity(const ZcDbProxyEntity& other)
    : ZcDbEntity(other)
    , m_dxfName(other.m_dxfName)
    , m_packed(other.m_packed)
{ }

void ZcDbProxyEntity::appendPacked(QByteArray& packed, int code, QByteArrayView utf8)
{
    const qint16 shortCode = qint16(code);
    packed.append(reinterpret_cast<const char*>(&shortCode), sizeof shortCode);
    // A zero ends the value: one inside it (a broken drawing) is left out.
    for (const char c : utf8)
        if (c != '\0')
            packed.append(c);
    packed.append('\0');
}

std::vector<ZcDbProxyEntity::Group> ZcDbProxyEntity::unpackedDxfGroups() const
{
    std::vector<Group> groups;
    const char* p = m_packed.constData();
    const char* end = p + m_packed.size();
    while (end - p > qsizetype(sizeof(qint16))) {
        qint16 code = 0;
        std::memcpy(&code, p, sizeof code);
        p += sizeof code;
        const auto* zero = static_cast<const char*>(std::memchr(p, 0, size_t(end - p)));
        if (!zero)
            break;
        groups.push_back({ code, QString::fromUtf8(p, zero - p) });
        p = zero + 1;
    }
    return groups;
}

const std::vector<ZcDbProxyEntity::Group>& ZcDbProxyEntity::dxfGroups() const
{
    if (!m_unpacked) {
        m_groups = unpackedDxfGroups();
        m_unpacked = true;
    }
    return m_groups;
}

void ZcDbProxyEntity::setDxfGroups(std::vector<Group> groups)
{
    QByteArray packed;
    for (const Group& group : groups)
        appendPacked(packed, group.code, group.value.toUtf8());
    setPackedDxfGroups(std::move(packed));
}

void ZcDbProxyEntity::setPackedDxfGroups(QByteArray packed)
{
    m_packed = std::move(packed);
    m_packed.squeeze();
    m_groups.clear();
    m_unpacked = false;
}
