#pragma once

// The two spellings of a code's level path: the store's and the drawings' "\"
// form ("给水\生活给水") and the "&" form the settings file and the new-name rules
// use ("给水&生活给水"). Names never hold either character, so the forms convert
// one to one.
#include <QString>
#include <QStringList>

// `parent` and `name` joined by "\"; `name` alone under the root (empty parent).
QString JoinSysCodePath(const QString& parent, const QString& name);
QStringList SplitSysCodePath(const QString& path);
// The path with the specialty in front: "给排水\给水\生活给水".
QString SpecSysCodePath(const QString& spec, const QString& fullName);
QString AmpersandSysCodePath(QString path);
QString BackslashSysCodePath(QString ampersandPath);
