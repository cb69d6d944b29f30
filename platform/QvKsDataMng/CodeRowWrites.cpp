#include "CodeRowWrites.h"

#include "CodeRow.h"
#include "SqlDb.h"
#include "SqlStatement.h"

#include <QLocale>

namespace CodeRowWrites {

namespace {

// One column of many rows as the server's array text: "{1,2}", "{"a","b\"c"}".
class ArrayText
{
public:
    void Add(qint64 value) { Next() += QByteArray::number(value); }
    void Add(double value) { Next() += QByteArray::number(value, 'g', QLocale::FloatingPointShortest); }
    void Add(QByteArrayView text)
    {
        QByteArray& out = Next();
        out += '"';
        for (char c : text) {
            if (c == '"' || c == '\\')
                out += '\\';
            out += c;
        }
        out += '"';
    }
    QByteArray Text() const { return m_text + '}'; }

private:
    QByteArray& Next()
    {
        m_text += m_text.size() == 1 ? "" : ",";
        return m_text;
    }
    QByteArray m_text = "{";
};

// The arrays of the columns `cols` of `rows`, bound from `first` on.
void bindColumns(
    SqlStatement& stmt, int first, const std::vector<int>& cols, const std::vector<const CodeRow*>& rows)
{
    for (std::size_t i = 0; i < cols.size(); ++i) {
        const int col = cols[i];
        ArrayText array;
        for (const CodeRow* row : rows) {
            if (CodeRow::IsText(col))
                array.Add(row->Utf8(col));
            else if (col == CodeRow::kLineWidth)
                array.Add(row->Double(col));
            else
                array.Add(row->Int64(col));
        }
        stmt.BindUtf8(first + int(i), array.Text());
    }
}

// "?::int8[], ?::text[], …" for the columns `cols`.
QByteArray arrayBinds(const std::vector<int>& cols)
{
    QByteArray sql;
    for (int col : cols) {
        sql += sql.isEmpty() ? "" : ", ";
        sql += CodeRow::IsText(col) ? "?::text[]" : col == CodeRow::kLineWidth ? "?::float8[]" : "?::int8[]";
    }
    return sql;
}

// The columns an update writes, after the index it finds the row by.
const std::vector<int> kUpdateCols = { CodeRow::kIndex, CodeRow::kOrd, CodeRow::kColor, CodeRow::kLineWidth,
    CodeRow::kAlpha, 6, 7, 8, 9, 10, 11 };
const char* const kUpdateNames = "node_index, ord, color, line_width, alpha, line_style, line_string, "
                                 "hor_laying, ver_laying, added_msg, describe";
// The columns an insert writes after the specialty.
const std::vector<int> kInsertCols = { CodeRow::kIndex, CodeRow::kParent, CodeRow::kOrd, CodeRow::kName,
    CodeRow::kColor, CodeRow::kLineWidth, CodeRow::kAlpha, 6, 7, 8, 9, 10, 11 };
const char* const kInsertNames = "node_index, parent_index, ord, name, color, line_width, alpha, line_style, "
                                 "line_string, hor_laying, ver_laying, added_msg, describe";

// Binds the columns `cols` of one row from `first` on.
void bindRow(SqlStatement& stmt, int first, const std::vector<int>& cols, const CodeRow& row)
{
    for (std::size_t i = 0; i < cols.size(); ++i) {
        const int col = cols[i];
        const int at = first + int(i);
        if (CodeRow::IsText(col))
            stmt.BindUtf8(at, row.texts[col]);
        else if (col == CodeRow::kLineWidth)
            stmt.Bind(at, row.lineWidth);
        else
            stmt.Bind(at, row.ints[col]);
    }
}

bool onServer(SqlDb* db)
{
    return db->Engine() == SqlEngine::Server;
}

// Runs `stmt` once per row (the store file) or once for all of them (a server),
// the binds set by `bind`.
template <typename Bind>
bool runFor(SqlDb* db, SqlStatement& stmt, const std::vector<const CodeRow*>& rows, const CodeRow** failedAt,
    Bind bind)
{
    if (rows.empty())
        return true;
    if (onServer(db)) {
        bind(rows, nullptr);
        if (stmt.Exec())
            return true;
        if (failedAt)
            *failedAt = rows.front();
        return false;
    }
    for (const CodeRow* row : rows) {
        bind(rows, row);
        if (!stmt.Exec()) {
            if (failedAt)
                *failedAt = row;
            return false;
        }
    }
    return true;
}

} // namespace

bool Delete(SqlDb* db, int specId, const std::vector<int>& indexes, bool all)
{
    if (all) {
        SqlStatement clear(db, "DELETE FROM sys_code WHERE spec_id = ?");
        clear.Bind(1, specId);
        return clear.Exec();
    }
    if (indexes.empty())
        return true;
    if (onServer(db)) {
        ArrayText array;
        for (int index : indexes)
            array.Add(qint64(index));
        SqlStatement stmt(db, "DELETE FROM sys_code WHERE spec_id = ? AND node_index = ANY(?::int8[])");
        stmt.Bind(1, specId).BindUtf8(2, array.Text());
        return stmt.Exec();
    }
    SqlStatement stmt(db, "DELETE FROM sys_code WHERE spec_id = ? AND node_index = ?");
    for (int index : indexes) {
        stmt.Bind(1, specId).Bind(2, index);
        if (!stmt.Exec())
            return false;
    }
    return true;
}

bool Update(SqlDb* db, int specId, const std::vector<const CodeRow*>& rows, const CodeRow** failedAt)
{
    const QByteArray sql = onServer(db)
        ? "UPDATE sys_code AS t SET ord = v.ord, color = v.color, line_width = v.line_width, alpha = "
          "v.alpha, "
          "line_style = v.line_style, line_string = v.line_string, hor_laying = v.hor_laying, "
          "ver_laying = v.ver_laying, added_msg = v.added_msg, describe = v.describe FROM unnest("
            + arrayBinds(kUpdateCols) + ") AS v(" + kUpdateNames
            + ") WHERE t.spec_id = ? AND t.node_index = v.node_index"
        : "UPDATE sys_code SET ord = ?2, color = ?3, line_width = ?4, alpha = ?5, line_style = ?6, "
          "line_string = ?7, hor_laying = ?8, ver_laying = ?9, added_msg = ?10, describe = ?11 "
          "WHERE node_index = ?1 AND spec_id = ?12";
    SqlStatement stmt(db, sql.constData());
    const int specBind = int(kUpdateCols.size()) + 1;
    return runFor(db, stmt, rows, failedAt, [&](const std::vector<const CodeRow*>& all, const CodeRow* one) {
        if (one)
            bindRow(stmt, 1, kUpdateCols, *one);
        else
            bindColumns(stmt, 1, kUpdateCols, all);
        stmt.Bind(specBind, specId);
    });
}

bool Insert(SqlDb* db, int specId, const std::vector<const CodeRow*>& rows, const CodeRow** failedAt)
{
    const QByteArray head = QByteArray("INSERT INTO sys_code(spec_id, ") + kInsertNames + ") ";
    const QByteArray sql = onServer(db) ? head + "SELECT ?, * FROM unnest(" + arrayBinds(kInsertCols) + ")"
                                        : head + "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
    SqlStatement stmt(db, sql.constData());
    return runFor(db, stmt, rows, failedAt, [&](const std::vector<const CodeRow*>& all, const CodeRow* one) {
        stmt.Bind(1, specId);
        if (one)
            bindRow(stmt, 2, kInsertCols, *one);
        else
            bindColumns(stmt, 2, kInsertCols, all);
    });
}

} // namespace CodeRowWrites
