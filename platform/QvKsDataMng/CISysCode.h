#pragma once

// The store's system-code operations on the open project (QvKsDataMng.h). All
// static; failures return false or an empty string and leave the store as it was
// (QvKsDataMng::LastError() says why).
#include <QString>
#include <QStringList>
#include <QtGlobal>

class CSysCodeData;

class CISysCode
{
public:
    // Fills `root` (its children are cleared first) with the specialty's tree, in
    // stored sibling order. The root's own NodeIndex is the specialty's high-water
    // mark: the highest index ever given out there. False for an unknown specialty.
    static bool GetSpecCodeInfos(CSysCodeData& root, const QString& spec);
    // The same, with the stamp of what was read: a writer that hands it back to
    // SetSpecCodeInfos never overwrites a change made since by anyone.
    static bool GetSpecCodeInfos(CSysCodeData& root, const QString& spec, quint64& stamp);

    // Replaces the specialty's tree with `root`'s in one transaction; on any failure
    // the previous tree stays whole. Codes keep the NodeIndex they carry; codes
    // without one (0 or less) or with one already taken in the tree get new indices
    // after the specialty's high-water mark, written into `root` after the commit.
    // Sibling names must be unique.
    static bool SetSpecCodeInfos(CSysCodeData& root, const QString& spec);

    enum class SaveResult {
        Failed,
        Saved,
        ChangedSinceRead,
    };
    // The same, only when the stored specialty still is what was read with `stamp`
    // (checked inside the write transaction); otherwise nothing is written and the
    // result is ChangedSinceRead. After a save `stamp` is the stamp of the rows
    // stored, ready for the next save.
    static SaveResult SetSpecCodeInfos(CSysCodeData& root, const QString& spec, quint64& stamp);

    // The specialties of the project, in their order.
    static QStringList GetAllSpecNames();

    // Full names of every code, parents before their children, in sibling order.
    static bool GetFullNameAryBySpec(QStringList& fullNames, const QString& spec);

    // "电气\公共照明\一层" -> "3\1\7": the specialty number and each level's index.
    // Empty when the path names no code.
    static QString GetIndexPath(const QString& fullPath);

    // Splits a full name at "\" into its level names. False for an empty name or an
    // empty level ("a\\b", "a\").
    static bool SysCodeDivide(QString fullName, QStringList& levels, int& levelCount);

    // Combined attribute text: the two parts joined by "|", where "\" and "|" inside
    // a part are escaped as "\\" and "\|". Text without a separator is all first part.
    static QString UniteSysInfo(const QString& first, const QString& second);
    // False for a dangling escape; the outputs are then unchanged.
    static bool DivideSysInfo(QString combined, QString& first, QString& second);

    // Brings a ".scn" file of an older layout to the current one in place: written
    // beside and renamed over, so the file is either old or new, never half. True
    // when the file is (now) of the current layout.
    static bool UpdataSysData(const QString& filePath);

    // "DispAddedMsg" of [SysCodeConfig] in profileFolder + "/SysCodeMng.ini": its
    // integer value. A missing file, section or key, or a value that is not an
    // integer, gives kDefaultDispAddedMsg: the bar shows the information until the
    // user turns it off.
    static int ReadSysCodeConfigFile(const QString& profileFolder);
    static constexpr int kDefaultDispAddedMsg = 1;

    // The project's line-type scale as text ("1.0" in a new project). Set refuses
    // text that is not a non-negative number.
    static bool GetLineTypeScale(QString& scale);
    static bool SetLineTypeScale(const QString& scale);
};
