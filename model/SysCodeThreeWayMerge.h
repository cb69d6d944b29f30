#pragma once

// Two people save one specialty: the codes this dialog read (base), the codes the
// store holds now (theirs) and the codes in the dialog (mine) become one tree.
// Codes are matched by their stored index; a code of mine whose index the base does
// not know is new. A change made on one side only is taken from that side; the same
// attribute changed two ways, a code deleted on one side and changed on the other,
// and two codes of one name under one parent are collisions, each settled by a
// choice of theirs or mine.
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

class CSysCodeData;

enum class SysCodeField {
    Name,
    Parent,
    Color,
    LineWidth,
    Alpha,
    LineStyle,
    LineString,
    HorLaying,
    VerLaying,
    AddedMsg,
    Describe,
};

enum class SysCodeCollisionKind {
    BothChanged, // one attribute given two different values
    DeletedByThem, // deleted in the store, changed here
    DeletedByMe, // deleted here, changed in the store
    SameName, // a code of mine and a code of theirs took one name under one parent
};

enum class SysCodeMergeChoice {
    Undecided,
    Theirs,
    Mine,
};

struct SysCodeCollision
{
    SysCodeCollisionKind kind = SysCodeCollisionKind::BothChanged;
    SysCodeField field = SysCodeField::Name; // the attribute, for BothChanged
    QString code; // the code's full name ("\" between levels) as the store has it
    QString base; // the attribute's value as read, as the store has it, as edited
    QString theirs;
    QString mine;
};

struct SysCodeThreeWayMerge
{
    // The merged codes: those kept from the store keep their index, new ones of
    // mine carry 0 for the store to number. Null while a collision is undecided.
    std::unique_ptr<CSysCodeData> merged;
    QList<SysCodeCollision> collisions;
    // Each change the store brought that the merged codes keep, one line each.
    QStringList fromTheirs;
    // Full names ("\" form) of codes whose place or name differs between the store
    // and the merged codes: (as stored now, as merged), to carry into the items.
    std::vector<std::pair<QString, QString>> renames;

    bool HasUndecided() const { return !merged; }
};

// `choices[i]` settles `collisions[i]` of the same inputs; collisions past the end
// of `choices` are undecided. The same inputs always give the same collisions in
// the same order.
SysCodeThreeWayMerge MergeSysCodeThreeWay(const CSysCodeData& base, const CSysCodeData& theirs,
    const CSysCodeData& mine, const QList<SysCodeMergeChoice>& choices = {});

// "名称", "颜色" …: the attribute as the dialog's columns call it.
QString SysCodeFieldTitle(SysCodeField field);
