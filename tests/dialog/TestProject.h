#pragma once

// A small project made for a test in a temporary folder: the five specialties,
// floors B1, 1F (current) and 2F with drawings that hold no product entity, and a
// few codes of "电气" (three levels) and "给排水". Closed again when the object goes.
#include <QList>
#include <QString>
#include <QTemporaryDir>

class ZcDbDatabase;

class TestProject
{
public:
    // `extraSql` runs after the standard content (more codes, another current floor).
    explicit TestProject(const QString& extraSql = QString());
    ~TestProject();

    bool isOpen() const { return m_open; }
    QString folder() const { return m_dir.path(); }
    // Writes a floor drawing with one product entity per index path.
    bool writeFloor(const QString& fileName, const QStringList& indexPaths) const;

private:
    QTemporaryDir m_dir;
    bool m_open = false;
};

// The standard codes: 照明 (1) > WL1 (2) > 一层 (3); 动力 (4); 插座 (5); 给水 (1 of 给排水).
constexpr unsigned kLightingColour = 0x0000FFFF;
