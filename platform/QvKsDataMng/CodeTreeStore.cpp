#include "CodeTreeStore.h"

#include "CSysCodeData.h"
#include "SqlDb.h"
#include "SqlStatement.h"
#include "SqlTransaction.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <memory>
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

// One stored row's part of the stamp: every column as the store holds it, so that
// no text is decoded to know whether a row changed.
quint64 rowStamp(const SqlStatement& row)
{
    constexpr int kColumns = 13;
    constexpr int kLineWidth = 4;
    constexpr int kFirstText = 6, kLastText = 11;
    size_t hash = 0;
    for (int col = 0; col < kColumns; ++col) {
        if (col == 2 || (col >= kFirstText && col <= kLastText))
            hash = qHashMulti(hash, row.Utf8(col));
        else if (col == kLineWidth)
            hash = qHashMulti(hash, row.Double(col));
        else
            hash = qHashMulti(hash, row.Int64(col));
    }
    return hash;
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

constexpr int kRowColumns = 14;
constexpr std::size_t kServerBatch = 500;

// An insert of `rows` codes.
QByteArray insertSql(std::size_t rows)
{
    QByteArray sql = "INSERT INTO sys_code(spec_id, node_index, parent_index, ord, name, color, line_width, "
                     "alpha, line_style, line_string, hor_laying, ver_laying, added_msg, describe) "
                     "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
    for (std::size_t i = 1; i < rows; ++i)
        sql += ",(?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
    return sql;
}

// Binds one code's row after the `base` binds of the rows before it.
void bindRow(
    SqlStatement& insert, int base, int specId, int index, int parentIndex, int ord, const CSysCodeData& node)
{
    insert.Bind(base + 1, specId).Bind(base + 2, index).Bind(base + 3, parentIndex).Bind(base + 4, ord);
    insert.Bind(base + 5, node.GetNodeName())
        .Bind(base + 6, qint64(node.GetMfcColor()))
        .Bind(base + 7, node.GetLineWidth());
    insert.Bind(base + 8, node.GetAlpha())
        .Bind(base + 9, node.GetLineStyle())
        .Bind(base + 10, node.GetLineString());
    insert.Bind(base + 11, node.GetHorLayingMode()).Bind(base + 12, node.GetVerLayingMode());
    insert.Bind(base + 13, node.GetAddedMsg()).Bind(base + 14, node.GetDescribe());
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
    // On a server, writers of one specialty take turns: the specialty's row stays
    // locked until this transaction ends, so a second writer reads the stamp only
    // after the first one's codes are stored, and the store's high-water mark is
    // read by one writer at a time. The store file is locked whole by the
    // transaction already.
    if (db->Engine() == SqlEngine::Server) {
        SqlStatement lock(db, "SELECT max_index FROM spec WHERE spec_id = ? FOR UPDATE");
        lock.Bind(1, specId);
        if (!lock.Next())
            return failed(QStringLiteral("the specialty cannot be locked for the save"));
        lock.Next();
    }
    if (expected) {
        quint64 now = 0;
        if (!Stamp(db, specId, now, error))
            return SaveResult::Failed;
        if (now != *expected)
            return SaveResult::ChangedSinceRead;
    }
    int highWater = 0;
    {
        SqlStatement mark(db, "SELECT max_index FROM spec WHERE spec_id = ?");
        mark.Bind(1, specId);
        if (!mark.Next())
            return failed(QStringLiteral("the specialty is gone from the store"));
        highWater = mark.Int(0);
    }
    const auto order = numberTree(root, highWater);
    SqlStatement clear(db, "DELETE FROM sys_code WHERE spec_id = ?");
    clear.Bind(1, specId);
    if (!clear.Exec())
        return failed(QStringLiteral("the old system codes cannot be replaced"));

    QHash<const CSysCodeData*, int> indexOf;
    indexOf.reserve(qsizetype(order.size()) + 1);
    indexOf.insert(&root, 0);
    QHash<const CSysCodeData*, int> ordOf;
    // On a server a statement carries many rows, one round trip for all of them.
    const std::size_t batch = db->Engine() == SqlEngine::Server ? kServerBatch : 1;
    std::unique_ptr<SqlStatement> insert;
    std::size_t statementRows = 0;
    std::size_t pending = 0;
    const CSysCodeData* first = nullptr;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const auto& [node, index] = order[i];
        indexOf.insert(node, index);
        const CSysCodeData* parent = node->GetParent();
        if (pending == 0) {
            const std::size_t rows = std::min(batch, order.size() - i);
            if (rows != statementRows) {
                insert = std::make_unique<SqlStatement>(db, insertSql(rows).constData());
                statementRows = rows;
            }
            first = node;
        }
        bindRow(*insert, int(pending) * kRowColumns, specId, index, indexOf.value(parent), ordOf[parent]++,
            *node);
        if (++pending < statementRows)
            continue;
        pending = 0;
        if (!insert->Exec())
            return failed(statementRows == 1
                    ? QStringLiteral("the system code \"%1\" cannot be saved").arg(first->GetFullName())
                    : QStringLiteral("the system codes from \"%1\" on cannot be saved")
                          .arg(first->GetFullName()));
    }
    SqlStatement mark(db,
        db->Engine() == SqlEngine::Server
            ? "UPDATE spec SET max_index = greatest(max_index, ?) WHERE spec_id = ?"
            : "UPDATE spec SET max_index = max(max_index, ?) WHERE spec_id = ?");
    mark.Bind(1, highWater).Bind(2, specId);
    if (!mark.Exec())
        return failed(QStringLiteral("the system codes cannot be saved"));
    // The stamp of the rows as the store now holds them, read inside the write.
    quint64 stored = 0;
    if (written && !Stamp(db, specId, stored, error))
        return SaveResult::Failed;
    if (!tx.Commit())
        return failed(QStringLiteral("the system codes cannot be saved"));
    for (const auto& [node, index] : order) {
        if (node->GetNodeIndex() != index)
            const_cast<CSysCodeData*>(node)->SetNodeIndex(index);
    }
    root.SetNodeIndex(highWater);
    if (written)
        *written = stored;
    return SaveResult::Saved;
}

} // namespace CodeTreeStore
