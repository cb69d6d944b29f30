#pragma once

// The attribute library as the attribute-definition dialog edits it: the name
// paths of the small categories and of their detail members, and the two edits
// the dialog offers (add a member, rename a member), each one transaction on the
// open project's store. Names are checked first: not empty, no "\", at most 64
// characters, unique in their category.
#include <QString>
#include <QStringList>

class AttDefStore
{
public:
    static constexpr int kMaxNameLength = 64;

    // Category paths ("电气\管线\导线·导管") and member paths (category path, "\",
    // member name), each sorted by the library's numbers. False when no project is open.
    static bool LoadPaths(QStringList& categoryPaths, QStringList& memberPaths);
    // Adds `name` as the last member of the small category; false with `error`.
    static bool AddMember(const QString& categoryPath, const QString& name, QString& error);
    // Renames the member the path names; false with `error`.
    static bool RenameMember(const QString& memberPath, const QString& newName, QString& error);
    // Why `name` cannot be a member's name; empty when it can.
    static QString CheckName(const QString& name);
};
