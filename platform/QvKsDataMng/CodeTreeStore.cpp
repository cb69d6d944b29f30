#include "CodeTreeStore.h"

#include "CSysCodeData.h"
#include "CodeRow.h"
#include "CodeRowWrites.h"
#include "SqlDb.h"
#include "SqlStatement.h"
#include "SqlTransaction.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

namespace CodeTreeStore {

namespace {

bool sqlFail(SqlDb* db, QString* error, const QString& what)
{
    if (error)
        *error = QStringLiteral("%1: %2").arg(what, db->Message());
    return false;
}

// The columns of a code's row in CodeRow's order.
const char* const kSelectRows
    = "SELECT node_index, parent_index, name, color, line_width, alpha, line_style, line_string, "
      "hor_laying, ver_laying, added_msg, describe, ord FROM sys_code WHERE spec_id = ?";

void fillFromRow(CSysCodeData* node, const SqlStatement& row)
{
    node->SetNodeIndex(row.Int(0));
    node->SetNodeName(row.Text(2));
    node->SetMfcColor(COLORREF(row.Int64(3)));
    node->SetLineWidth(row.Double(4));
    node->SetAlpha(row.Int(5));
    node->SetLineStyle(row.Text(6));
    node->SetLineString(row.Text(7));
    node->SetHorLayingMode(row.Text(8));
    node->SetVerLayingMode(row.Text(9));
    node->SetAddedMsg(row.Text(10));
    node->SetDescribe(row.Text(11));
}

CSysCodeData* nodeFromRow(const SqlStatement& row)
{
    auto* node = new CSysCodeData;
    fillFromRow(node, row);
    return node;
}

// One row's part of the stamp: every column as the store holds it, so that no
// text is decoded to know whether a row changed. The same for a row read and for
// the row a save wrote.
template <typename Row> quint64 rowStamp(const Row& row)
{
    size_t hash = 0;
    for (int col = 0; col < CodeRow::kColumns; ++col) {
        if (CodeRow::IsText(col))
            hash = qHashMulti(hash, row.Utf8(col));
        else if (col == CodeRow::kLineWidth)
            hash = qHashMulti(hash, row.Double(col));
        else
            hash = qHashMulti(hash, row.Int64(col));
    }
    return hash;
}

bool sameRow(const CodeRow& mine, const SqlStatement& stored)
{
    for (int col = 0; col < CodeRow::kColumns; ++col) {
        const bool same = CodeRow::IsText(col) ? mine.Utf8(col) == stored.Utf8(col)
            : col == CodeRow::kLineWidth       ? mine.Double(col) == stored.Double(col)
                                               : mine.Int64(col) == stored.Int64(col);
        if (!same)
            return false;
    }
    return true;
}

// Row stamps are added up, so the stamp does not depend on the order rows are met.
quint64 foldStamp(quint64 sum, std::size_t rows)
{
    return sum ^ (quint64(rows) * 0x9E3779B97F4A7C15ull);
}

// Pre-order list of the codes under `root` with the index each is stored under.
std::vector<std::pair<const CSysCodeData*, int>> numberTree(const CSysCodeData& root, int& highWater)
{
    std::vector<std::pair<const CSysCodeData*, int>> order;
    std::vector<const CSysCodeData*> stack(root.GetChildren().rbegin(), root.GetChildren().rend());
    QSet<int> taken;
    std::vector<std::size_t> unnumbered;
    while (!stack.empty()) {
        const CSysCodeData* node = stack.back();
        stack.pop_back();
        int index = node->GetNodeIndex();
        if (index <= 0 || taken.contains(index)) {
            unnumbered.push_back(order.size());
            index = 0;
        } else {
            taken.insert(index);
            highWater = std::max(highWater, index);
        }
        order.emplace_back(node, index);
        const auto& children = node->GetChildren();
        stack.insert(stack.end(), children.rbegin(), children.rend());
    }
    // Numbered after every index the tree keeps, so no new index collides.
    for (std::size_t i : unnumbered)
        order[i].second = ++highWater;
    return order;
}

// The rows of the numbered codes, parents before their children.
std::vector<CodeRow> codeRows(
    const CSysCodeData& root, const std::vector<std::pair<const CSysCodeData*, int>>& order)
{
    QHash<const CSysCodeData*, int> indexOf;
    indexOf.reserve(qsizetype(order.size()) + 1);
    indexOf.insert(&root, 0);
    QHash<const CSysCodeData*, int> ordOf;
    std::vector<CodeRow> rows;
    rows.reserve(order.size());
    for (const auto& [node, index] : order) {
        indexOf.insert(node, index);
        const CSysCodeData* parent = node->GetParent();
        rows.emplace_back(*node, index, indexOf.value(parent), ordOf[parent]++);
    }
    return rows;
}

// What the store holds of the specialty against what a save brings: what is done
// with each row (marked in `rows`), the indexes of the stored rows that go or move
// or are renamed, and the stamp of the stored rows. A row changed in place is
// updated: no other row can hold its parent and name meanwhile, and its indexes
// stay as they are.
struct StoredDiff
{
    std::vector<int> gone;
    std::size_t storedRows = 0;
    quint64 stamp = 0;
};

bool compareStored(SqlDb* db, int specId, std::vector<CodeRow>& rows, StoredDiff& diff, QString* error)
{
    QHash<int, CodeRow*> byIndex;
    byIndex.reserve(qsizetype(rows.size()));
    for (CodeRow& row : rows)
        byIndex.insert(int(row.ints[CodeRow::kIndex]), &row);
    SqlStatement stmt(db, kSelectRows);
    stmt.Bind(1, specId);
    quint64 sum = 0;
    while (stmt.Next()) {
        sum += rowStamp(stmt);
        ++diff.storedRows;
        const int index = stmt.Int(CodeRow::kIndex);
        CodeRow* mine = byIndex.value(index);
        if (mine && sameRow(*mine, stmt))
            mine->write = CodeRow::Write::Keep;
        else if (mine && mine->Int64(CodeRow::kParent) == stmt.Int64(CodeRow::kParent)
            && mine->Utf8(CodeRow::kName) == stmt.Utf8(CodeRow::kName))
            mine->write = CodeRow::Write::Update; // its place among its siblings' names stays
        else
            diff.gone.push_back(index);
    }
    if (!stmt.Done())
        return sqlFail(db, error, QStringLiteral("the system codes cannot be read"));
    diff.stamp = foldStamp(sum, diff.storedRows);
    return true;
}

std::vector<const CodeRow*> rowsTo(const std::vector<CodeRow>& rows, CodeRow::Write write)
{
    std::vector<const CodeRow*> chosen;
    for (const CodeRow& row : rows) {
        if (row.write == write)
            chosen.push_back(&row);
    }
    return chosen;
}

// The rows that go or move or are renamed out, then the changed ones updated in
// place, then the new ones and the moved ones in: false with `error` set.
bool writeRows(
    SqlDb* db, int specId, const std::vector<CodeRow>& rows, const StoredDiff& diff, QString* error)
{
    const bool none = diff.storedRows > 0 && diff.gone.size() == diff.storedRows; // none stays
    if (!CodeRowWrites::Delete(db, specId, diff.gone, none))
        return sqlFail(db, error, QStringLiteral("the old system codes cannot be replaced"));
    const CodeRow* failed = nullptr;
    if (!CodeRowWrites::Update(db, specId, rowsTo(rows, CodeRow::Write::Update), &failed)
        || !CodeRowWrites::Insert(db, specId, rowsTo(rows, CodeRow::Write::Insert), &failed))
        return sqlFail(db, error,
            QStringLiteral("the system code \"%1\" cannot be saved")
                .arg(failed ? failed->node->GetFullName() : QString()));
    return true;
}

// The specialty's high-water mark, read inside the save's transaction. On a server,
// writers of one specialty take turns: the specialty's row stays locked until the
// transaction ends, so a second writer reads the stamp only after the first one's
// codes are stored, and the mark is read by one writer at a time. The store file
// is locked whole by the transaction already.
bool readMark(SqlDb* db, int specId, int& mark)
{
    SqlStatement stmt(db,
        db->Engine() == SqlEngine::Server ? "SELECT max_index FROM spec WHERE spec_id = ? FOR UPDATE"
                                          : "SELECT max_index FROM spec WHERE spec_id = ?");
    stmt.Bind(1, specId);
    if (!stmt.Next())
        return false;
    mark = stmt.Int(0);
    stmt.Next();
    return true;
}

bool raiseMark(SqlDb* db, int specId, int highWater)
{
    SqlStatement mark(db,
        db->Engine() == SqlEngine::Server
            ? "UPDATE spec SET max_index = greatest(max_index, ?) WHERE spec_id = ?"
            : "UPDATE spec SET max_index = max(max_index, ?) WHERE spec_id = ?");
    mark.Bind(1, highWater).Bind(2, specId);
    return mark.Exec();
}

} // namespace

bool FindSpec(SqlDb* db, const QString& spec, int& specId, int& maxIndex, QString* error)
{
    SqlStatement stmt(db, "SELECT spec_id, max_index FROM spec WHERE name = ?");
    stmt.Bind(1, spec);
    if (!stmt.Next()) {
        if (!stmt.Done())
            sqlFail(db, error, QStringLiteral("the project's specialties cannot be read"));
        return false;
    }
    specId = stmt.Int(0);
    maxIndex = stmt.Int(1);
    return true;
}

bool Stamp(SqlDb* db, int specId, quint64& stamp, QString* error)
{
    SqlStatement stmt(db, kSelectRows);
    stmt.Bind(1, specId);
    quint64 sum = 0;
    std::size_t rows = 0;
    while (stmt.Next()) {
        sum += rowStamp(stmt);
        ++rows;
    }
    if (!stmt.Done())
        return sqlFail(db, error, QStringLiteral("the system codes cannot be read"));
    stamp = foldStamp(sum, rows);
    return true;
}

bool Load(SqlDb* db, int specId, CSysCodeData& root, QString* error, quint64* stamp)
{
    root.DeleteData();
    // A scan in primary-key order reads the rows straight from the table; sorting
    // each parent's children by their stored order afterwards is cheaper than
    // asking the query for that order through the secondary index.
    SqlStatement stmt(db, kSelectRows);
    stmt.Bind(1, specId);
    struct Row
    {
        int parent;
        int ord;
        CSysCodeData* node;
    };
    std::vector<Row> rows;
    quint64 sum = 0;
    while (stmt.Next()) {
        rows.push_back({ stmt.Int(1), stmt.Int(12), nodeFromRow(stmt) });
        if (stamp)
            sum += rowStamp(stmt);
    }
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        return a.parent != b.parent ? a.parent < b.parent : a.ord < b.ord;
    });
    QHash<int, std::vector<CSysCodeData*>> byParent;
    const std::size_t count = rows.size();
    for (const Row& row : rows)
        byParent[row.parent].push_back(row.node);
    if (!stmt.Done()) {
        for (auto& list : byParent)
            for (CSysCodeData* node : list)
                delete node;
        return sqlFail(db, error, QStringLiteral("the system codes cannot be read"));
    }
    // Breadth first from the top level: only codes reachable from it are attached.
    std::vector<std::pair<CSysCodeData*, int>> queue { { &root, 0 } };
    int unused = 0;
    std::size_t attached = 0;
    for (std::size_t head = 0; head < queue.size(); ++head) {
        auto it = byParent.find(queue[head].second);
        if (it == byParent.end())
            continue;
        std::vector<CSysCodeData*> children = std::move(*it);
        byParent.erase(it);
        for (CSysCodeData* child : children) {
            queue[head].first->AddDataToChild(unused, child, false);
            queue.emplace_back(child, child->GetNodeIndex());
            ++attached;
        }
    }
    if (attached != count) {
        for (auto& list : byParent)
            for (CSysCodeData* node : list)
                delete node;
        root.DeleteData();
        if (error)
            *error = QStringLiteral("the stored system-code tree is damaged: %1 codes hang under no code")
                         .arg(count - attached);
        return false;
    }
    if (stamp)
        *stamp = foldStamp(sum, count);
    return true;
}

SaveResult Save(
    SqlDb* db, int specId, CSysCodeData& root, QString* error, const quint64* expected, quint64* written)
{
    const auto failed = [&](const QString& what) {
        sqlFail(db, error, what);
        return SaveResult::Failed;
    };
    SqlTransaction tx(db);
    if (!tx.IsActive())
        return failed(QStringLiteral("the system codes cannot be saved"));
    int storedMark = 0;
    if (!readMark(db, specId, storedMark))
        return failed(QStringLiteral("the specialty cannot be locked for the save"));
    int highWater = storedMark;
    const auto order = numberTree(root, highWater);
    std::vector<CodeRow> rows = codeRows(root, order);
    // Only the rows that differ from the stored ones are written: a dialog's save
    // of a few edits costs a few rows, and the store's readers see the rest as it was.
    StoredDiff diff;
    if (!compareStored(db, specId, rows, diff, error))
        return SaveResult::Failed;
    if (expected && diff.stamp != *expected)
        return SaveResult::ChangedSinceRead;
    if (!writeRows(db, specId, rows, diff, error))
        return SaveResult::Failed;
    if (highWater > storedMark && !raiseMark(db, specId, highWater))
        return failed(QStringLiteral("the system codes cannot be saved"));
    if (!tx.Commit())
        return failed(QStringLiteral("the system codes cannot be saved"));
    for (const auto& [node, index] : order) {
        if (node->GetNodeIndex() != index)
            const_cast<CSysCodeData*>(node)->SetNodeIndex(index);
    }
    root.SetNodeIndex(highWater);
    if (written) {
        // The store now holds exactly these rows.
        quint64 sum = 0;
        for (const CodeRow& row : rows)
            sum += rowStamp(row);
        *written = foldStamp(sum, rows.size());
    }
    return SaveResult::Saved;
}

} // namespace CodeTreeStore
