// Project store, schema version 1 (PRAGMA user_version; application_id 'QVKS').
//
//   meta(key, value)                  project_name, current_spec, current_floor,
//                                     line_type_scale, color_show_type
//   spec(spec_id = ESysCodeSpecType, name, ord, max_index)
//                                     max_index: highest NodeIndex ever given out in
//                                     the specialty; never lowered, so indices of
//                                     deleted codes are not reused
//   sys_code(spec_id, node_index, parent_index (0 = top level), ord, name, color,
//            line_width, alpha, line_style, line_string, hor_laying, ver_laying,
//            added_msg, describe)     one row per code; siblings unique by name
//   floor(floor_id, name, ord, elevation, height, dwg_file)
//                                     dwg_file relative to the project folder
//   qd_item(qd_id, floor_id, code, idx, name, feature, unit, quantity, sys_code)
//   de_item(de_id, floor_id, qd_id (null: not under a bill item), code, idx, name,
//           unit, quantity, sys_code)  sys_code: the code's full path
//                                     ("电气\公共照明"), so renames carry into items
//   att_category(cat_id, major, middle, small, name)
//                                     middle = small = 0: a major category;
//                                     small = 0: a middle category
//   att_member(mem_id, cat_id, member_no, name)
//   att_relation(cat_id, related_cat_id)   rename relations between categories
//   lay_mode(floor_id, ord, name, code, describe)   horizontal laying modes
//   ver_lay_mode(ord, name)                          vertical laying modes
//
// Journal: rollback journal (DELETE), not WAL. The store is one file in a project
// folder that users copy, mail and keep on shares; WAL needs shared memory (no
// network shares) and keeps committed data in a side file until a checkpoint, so a
// copy of the main file alone could lose the last saves. There is one writer (the
// host's UI thread), so WAL's concurrent readers buy nothing here.
#include "StoreSchema.h"

#include "SqlStatement.h"
#include "SqlTransaction.h"
#include "SqliteDb.h"

#include <sqlite3.h>

namespace StoreSchema {

namespace {

const char* const kTables = R"sql(
CREATE TABLE meta(key TEXT PRIMARY KEY, value TEXT NOT NULL);
CREATE TABLE spec(
  spec_id INTEGER PRIMARY KEY,
  name TEXT NOT NULL UNIQUE,
  ord INTEGER NOT NULL,
  max_index INTEGER NOT NULL DEFAULT 0 CHECK(max_index >= 0));
CREATE TABLE sys_code(
  spec_id INTEGER NOT NULL REFERENCES spec(spec_id) ON DELETE CASCADE,
  node_index INTEGER NOT NULL CHECK(node_index > 0),
  parent_index INTEGER NOT NULL CHECK(parent_index >= 0),
  ord INTEGER NOT NULL,
  name TEXT NOT NULL CHECK(length(name) BETWEEN 1 AND 50 AND instr(name, '\') = 0),
  color INTEGER NOT NULL,
  line_width REAL NOT NULL,
  alpha INTEGER NOT NULL,
  line_style TEXT NOT NULL,
  line_string TEXT NOT NULL,
  hor_laying TEXT NOT NULL,
  ver_laying TEXT NOT NULL,
  added_msg TEXT NOT NULL,
  describe TEXT NOT NULL,
  PRIMARY KEY(spec_id, node_index),
  UNIQUE(spec_id, parent_index, name)) WITHOUT ROWID;
CREATE TABLE floor(
  floor_id INTEGER PRIMARY KEY,
  name TEXT NOT NULL UNIQUE,
  ord INTEGER NOT NULL,
  elevation REAL NOT NULL DEFAULT 0,
  height REAL NOT NULL DEFAULT 0,
  dwg_file TEXT NOT NULL);
CREATE TABLE qd_item(
  qd_id INTEGER PRIMARY KEY,
  floor_id INTEGER NOT NULL REFERENCES floor(floor_id) ON DELETE CASCADE,
  code TEXT NOT NULL,
  idx INTEGER NOT NULL,
  name TEXT NOT NULL,
  feature TEXT NOT NULL DEFAULT '',
  unit TEXT NOT NULL DEFAULT '',
  quantity REAL NOT NULL DEFAULT 0,
  sys_code TEXT NOT NULL DEFAULT '',
  UNIQUE(floor_id, code, idx));
CREATE TABLE de_item(
  de_id INTEGER PRIMARY KEY,
  floor_id INTEGER NOT NULL REFERENCES floor(floor_id) ON DELETE CASCADE,
  qd_id INTEGER REFERENCES qd_item(qd_id) ON DELETE CASCADE,
  code TEXT NOT NULL,
  idx INTEGER NOT NULL,
  name TEXT NOT NULL,
  unit TEXT NOT NULL DEFAULT '',
  quantity REAL NOT NULL DEFAULT 0,
  sys_code TEXT NOT NULL DEFAULT '');
CREATE INDEX de_item_by_qd ON de_item(qd_id);
CREATE TABLE att_category(
  cat_id INTEGER PRIMARY KEY,
  major INTEGER NOT NULL,
  middle INTEGER NOT NULL DEFAULT 0,
  small INTEGER NOT NULL DEFAULT 0,
  name TEXT NOT NULL,
  UNIQUE(major, middle, small));
CREATE TABLE att_member(
  mem_id INTEGER PRIMARY KEY,
  cat_id INTEGER NOT NULL REFERENCES att_category(cat_id) ON DELETE CASCADE,
  member_no INTEGER NOT NULL,
  name TEXT NOT NULL,
  UNIQUE(cat_id, member_no),
  UNIQUE(cat_id, name));
CREATE TABLE att_relation(
  cat_id INTEGER NOT NULL REFERENCES att_category(cat_id) ON DELETE CASCADE,
  related_cat_id INTEGER NOT NULL REFERENCES att_category(cat_id) ON DELETE CASCADE,
  PRIMARY KEY(cat_id, related_cat_id));
CREATE TABLE lay_mode(
  floor_id INTEGER NOT NULL REFERENCES floor(floor_id) ON DELETE CASCADE,
  ord INTEGER NOT NULL,
  name TEXT NOT NULL,
  code TEXT NOT NULL DEFAULT '',
  describe TEXT NOT NULL DEFAULT '',
  PRIMARY KEY(floor_id, ord));
CREATE TABLE ver_lay_mode(ord INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE);
INSERT INTO meta(key, value) VALUES
  ('project_name', ''), ('current_spec', ''), ('current_floor', ''),
  ('line_type_scale', '1.0'), ('color_show_type', '1');
)sql";

const char* const kColumns[][2] = {
    { "meta", "key,value" },
    { "spec", "spec_id,name,ord,max_index" },
    { "sys_code",
        "spec_id,node_index,parent_index,ord,name,color,line_width,alpha,line_style,line_string,"
        "hor_laying,ver_laying,added_msg,describe" },
    { "floor", "floor_id,name,ord,elevation,height,dwg_file" },
    { "qd_item", "qd_id,floor_id,code,idx,name,feature,unit,quantity,sys_code" },
    { "de_item", "de_id,floor_id,qd_id,code,idx,name,unit,quantity,sys_code" },
    { "att_category", "cat_id,major,middle,small,name" },
    { "att_member", "mem_id,cat_id,member_no,name" },
    { "att_relation", "cat_id,related_cat_id" },
    { "lay_mode", "floor_id,ord,name,code,describe" },
    { "ver_lay_mode", "ord,name" },
};

QString sqliteMessage(SqliteDb* db)
{
    return db->Message();
}

bool readPragma(SqliteDb* db, const char* sql, int& value, QString* error)
{
    SqlStatement stmt(db, sql);
    if (stmt.IsValid() && stmt.Next()) {
        value = stmt.Int(0);
        return true;
    }
    const int rc = stmt.IsValid() ? stmt.ResultCode() : sqlite3_errcode(db->Handle());
    if (!error)
        return false;
    switch (rc & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        *error = QStringLiteral("the project store is locked by another program; close it and try again");
        break;
    case SQLITE_NOTADB:
        *error = QStringLiteral("the file is not a project store (damaged, or another kind of file)");
        break;
    case SQLITE_CORRUPT:
        *error = QStringLiteral("the project store is damaged: %1").arg(sqliteMessage(db));
        break;
    default:
        *error = QStringLiteral("the project store cannot be read: %1").arg(sqliteMessage(db));
        break;
    }
    return false;
}

} // namespace

QStringList Tables()
{
    QStringList tables;
    for (const auto& table : kColumns)
        tables << QString::fromLatin1(table[0]);
    return tables;
}

QStringList Columns(const QString& table)
{
    for (const auto& t : kColumns) {
        if (table == QLatin1String(t[0]))
            return QString::fromLatin1(t[1]).split(u',');
    }
    return {};
}

bool Create(SqliteDb* db, QString* error)
{
    // Before the first table: both take effect only on an empty file.
    db->Execute("PRAGMA journal_mode=DELETE");
    SqlTransaction tx(db);
    const QByteArray stamp = QStringLiteral("PRAGMA application_id=%1; PRAGMA user_version=%2;")
                                 .arg(kApplicationId)
                                 .arg(kSchemaVersion)
                                 .toUtf8();
    if (!tx.IsActive() || !db->Execute(kTables) || !db->Execute(stamp.constData())) {
        if (error)
            *error = QStringLiteral("the project store cannot be created: %1").arg(sqliteMessage(db));
        return false;
    }
    if (!tx.Commit()) {
        if (error)
            *error = QStringLiteral("the project store cannot be written: %1").arg(sqliteMessage(db));
        return false;
    }
    return true;
}

bool Check(SqliteDb* db, QString* error)
{
    int appId = 0;
    int version = 0;
    if (!readPragma(db, "PRAGMA application_id", appId, error)
        || !readPragma(db, "PRAGMA user_version", version, error))
        return false;
    if (appId != kApplicationId || version < 1) {
        if (error)
            *error = QStringLiteral("the file is a database, but not a project store of this product");
        return false;
    }
    if (version > kSchemaVersion) {
        if (error)
            *error = QStringLiteral(
                "the project store was written by a newer version (layout %1; this program reads up "
                "to %2); it is left unchanged")
                         .arg(version)
                         .arg(kSchemaVersion);
        return false;
    }
    SqlStatement check(db, "PRAGMA quick_check");
    QString verdict;
    while (check.Next())
        verdict += check.Text(0);
    if (!check.Done() || verdict != QLatin1String("ok")) {
        if (error)
            *error = QStringLiteral("the project store is damaged: %1")
                         .arg(verdict.isEmpty() ? sqliteMessage(db) : verdict.left(200));
        return false;
    }
    return true;
}

} // namespace StoreSchema
