#pragma once

// The display list written out as JSON, for checking what the view holds against
// another program's drawing of the same file: per entity (by its handle in the
// drawing) its paths, areas and texts in drawing coordinates.
#include <QByteArray>
#include <QString>

#include <map>

class DisplayList;

class DisplayListDump
{
public:
    // `notShown`: the kinds the list could not draw, and how many of each.
    static QByteArray ToJson(const DisplayList& list, const std::map<QString, int>& notShown);
};
