#pragma once

// One node of a specialty's system-code tree. The top node of a tree (the one
// without a parent) is the specialty's root: it has no name of its own that counts,
// and its children are the top-level codes.
//
// Ownership: a node owns its children; destroying a node destroys its subtree and
// takes it out of its parent's child list.
//
// Look-ups by full name go through an index kept on the top node. It is built on
// the first look-up, kept up to date when subtrees are added, and dropped when a
// name changes or a subtree is moved, so a merge of n codes costs O(n), not O(n²).
#include "WinTypes.h"

#include <QString>

#include <memory>
#include <vector>

class CSysCodeData
{
public:
    CSysCodeData();
    ~CSysCodeData();
    // A deep copy of the node and its subtree; the copy has no parent.
    CSysCodeData(const CSysCodeData& other);
    CSysCodeData& operator=(const CSysCodeData& other);

    QString GetNodeName() const { return m_name; }
    void SetNodeName(const QString& name);
    // The names from the top level down to this node joined by "\", without the
    // specialty. Empty for the top node itself.
    QString GetFullName() const;

    int GetNodeIndex() const { return m_index; }
    void SetNodeIndex(const int& index);
    COLORREF GetMfcColor() const { return m_color; }
    void SetMfcColor(const COLORREF& color) { m_color = color; }
    double GetLineWidth() const { return m_lineWidth; }
    void SetLineWidth(const double& width) { m_lineWidth = width; }
    int GetAlpha() const { return m_alpha; }
    void SetAlpha(const int& alpha) { m_alpha = alpha; }
    QString GetLineStyle() const { return m_lineStyle; }
    void SetLineStyle(const QString& style) { m_lineStyle = style; }
    QString GetLineString() const { return m_lineString; }
    void SetLineString(const QString& text) { m_lineString = text; }
    QString GetHorLayingMode() const { return m_horLayingMode; }
    void SetHorLayingMode(const QString& mode) { m_horLayingMode = mode; }
    QString GetVerLayingMode() const { return m_verLayingMode; }
    void SetVerLayingMode(const QString& mode) { m_verLayingMode = mode; }
    QString GetAddedMsg() const { return m_addedMsg; }
    void SetAddedMsg(const QString& msg) { m_addedMsg = msg; }
    QString GetDescribe() const { return m_describe; }
    void SetDescribe(const QString& text) { m_describe = text; }

    // Copies every attribute except name, index, parent and children.
    void CopyAttributesFrom(const CSysCodeData& other);

    CSysCodeData* GetParent() const { return m_parent; }
    // Moves this node (with its subtree) under `parent`, appended last; null detaches
    // it, and the caller then owns it.
    void SetParent(CSysCodeData* parent);

    const std::vector<CSysCodeData*>& GetChildren() const { return m_children; }
    int GetChildCount() const { return int(m_children.size()); }
    CSysCodeData* GetChild(int i) const;

    // Appends `child` (which this node then owns) with its subtree. With `bNewIndex`
    // the child and every node under it are numbered ++counter, after first raising
    // counter to the highest index in use in this tree.
    void AddDataToChild(int& counter, CSysCodeData* child, bool bNewIndex);

    // Adds a copy of `node` with its subtree at the place `fullName` names: under the
    // node whose full name is everything before the last "\" (under the top node
    // when there is no "\"), with the last level as its name. Nothing is created on
    // the way: when that parent does not exist, or a code of that full name already
    // exists, nothing changes and the result is false. `bNewIndex` numbers the added
    // nodes as AddDataToChild does; without it they keep their own indices.
    bool AddNewSysCodeByFullName(
        int& counter, const CSysCodeData* node, const QString& fullName, bool bNewIndex);

    // Finds in this tree the code with `node`'s full name and overwrites its
    // attributes with `node`'s (not its name, index or children). Whether it existed.
    bool ResetExistNodeMsg(const CSysCodeData* node);

    // The code of this tree with that full name, or null.
    CSysCodeData* FindByFullName(const QString& fullName) const;

    // Destroys every child (with its subtree); this node stays, without children.
    void DeleteData();

    // The highest node index in this tree (0 for an empty tree).
    int GetMaxNodeIndex() const;

    // Writes this tree to a ".scn" file (current layout, stamped with the running
    // version; `spec` is recorded when not empty). Written beside and renamed over
    // the target, so a failure leaves any old file as it was.
    bool ExportData(const QString& filePath, const QString& spec) const;
    // Replaces this node's children with the codes of a ".scn" file of the current
    // layout. The whole file is read into a separate tree first: a broken, hostile
    // or empty file, or anything that is not a regular file, returns false (the
    // data service's last error says why and where) and leaves this tree untouched.
    // `spec`, when given, receives the specialty the file was written for.
    bool ImportData(const QString& filePath, QString* spec = nullptr);

private:
    struct Index;

    CSysCodeData* Top() const;
    void InvalidateIndex() const;
    Index& EnsureIndex() const;
    void IndexSubtree(Index& index, const CSysCodeData* node, const QString& fullName) const;
    void Renumber(int& counter);
    void DetachFromParent();
    void CopyFrom(const CSysCodeData& other);

    QString m_name;
    int m_index = 0;
    COLORREF m_color = 0;
    double m_lineWidth = 0.0;
    int m_alpha = 0;
    QString m_lineStyle;
    QString m_lineString;
    QString m_horLayingMode;
    QString m_verLayingMode;
    QString m_addedMsg;
    QString m_describe;

    CSysCodeData* m_parent = nullptr;
    std::vector<CSysCodeData*> m_children;
    // Kept on the top node only.
    mutable std::unique_ptr<Index> m_lookup;
};
