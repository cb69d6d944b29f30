#pragma once

// The name a new or pasted code takes when its proposal is already used at its level.
#include <QString>
#include <QStringList>

// Steps the proposal's last letter on (A to B, b to c) until no name in `present`
// equals it, ignoring letter case; a last "z" or "Z" stays and gets "a" or "A"
// appended (Az becomes Aza). True with the result in `out`. False, with `out`
// untouched, when the proposal is empty or does not end in an ASCII letter.
bool MakeUniqueSysName(const QString& proposal, const QStringList& present, QString& out);
