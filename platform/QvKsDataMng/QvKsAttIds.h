#pragma once

// Identifiers of the attribute library and the look-ups between names and ids.
// Category ids are the major, middle and small numbers as text ("3", "1", "1");
// written together they form "3\1\1". A name path joins the names with "\":
// "电气\管线\导线·导管" for a small category, and that followed by "\" and the
// member's name for a detail member. Look-ups that find nothing give empty parts.
#include <QString>

struct SQvKsSmallCategoryId
{
    QString strMajorId;
    QString strMiddleId;
    QString strSmallId;
    bool IsComplete() const
    {
        return !strMajorId.isEmpty() && !strMiddleId.isEmpty() && !strSmallId.isEmpty();
    }
    QString ToString() const; // "3\1\1"
};

struct SQvKsDetailMemId
{
    QString strMajorId;
    QString strMiddleId;
    QString strSmallId;
    QString strMemId;
    SQvKsSmallCategoryId SmallCategory() const { return { strMajorId, strMiddleId, strSmallId }; }
};

// "电气\管线\导线·导管" -> 3, 1, 1.
SQvKsSmallCategoryId SmallCategoryNameToId(const QString& namePath);
// "电气\管线\导线·导管\BV-2.5" -> 3, 1, 1, member number.
SQvKsDetailMemId AttNameToAttId(const QString& namePath);
// The small category's index in the library (its key as text); empty when unknown.
QString SmallCategoryIdToIndex(const SQvKsSmallCategoryId& id);
// The detail member's index (its key as text); empty when the path is not the name
// of a member of the library.
QString AttNameToAttIndex(const QString& namePath);
