#pragma once

// One system code's row of the sys_code table as a save stores it, readable column
// by column as a stored row is (the columns of CodeTreeStore's row reads: index,
// parent, name, color, line width, alpha, line style, line string, horizontal and
// vertical laying, added message, description, order).
#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

class CSysCodeData;

struct CodeRow
{
    static constexpr int kColumns = 13;
    static constexpr int kIndex = 0;
    static constexpr int kParent = 1;
    static constexpr int kName = 2;
    static constexpr int kColor = 3;
    static constexpr int kLineWidth = 4;
    static constexpr int kAlpha = 5;
    static constexpr int kFirstText = 6; // line style … description
    static constexpr int kLastText = 11;
    static constexpr int kOrd = 12;

    static bool IsText(int col) { return col == kName || (col >= kFirstText && col <= kLastText); }

    // What a save does with the row: stored already column for column (Keep), stored
    // under the same parent and name with other values (Update), or not stored in
    // this place (Insert).
    enum class Write { Insert, Update, Keep };

    CodeRow() = default;
    CodeRow(const CSysCodeData& code, int index, int parentIndex, int ord);

    qint64 Int64(int col) const { return ints[col]; }
    double Double(int) const { return lineWidth; }
    QByteArrayView Utf8(int col) const { return texts[col]; }

    const CSysCodeData* node = nullptr;
    qint64 ints[kColumns] = {};
    double lineWidth = 0;
    QByteArray texts[kColumns];
    Write write = Write::Insert;
};
