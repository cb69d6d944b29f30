#pragma once

// The names new, pasted and copied codes take so that they never clash with the
// codes already at their place.
#include <QSet>
#include <QString>
#include <QStringList>

// Steps the proposal's last letter on (A to B, b to c) until no name in `present`
// equals it, ignoring letter case; a last "z" or "Z" stays and gets "a" or "A"
// appended (Az becomes Aza). True with the result in `out`. False, with `out`
// untouched, when the proposal is empty or does not end in an ASCII letter.
bool MakeUniqueSysName(const QString& proposal, const QStringList& present, QString& out);

// Splits a name into a base and its trailing number, so that base + number spells
// the name again: at most the last six digits count, and the zeros they lose in
// front go to the base (A007 gives A00 and 7, B00 gives B0 and 0, 12 gives "" and
// 12, WS gives WS and 0). False for an empty name.
bool SplitSysNameNumber(const QString& name, QString& base, int& number);

// `name`, or when one of `siblings` already has it (ignoring letter case), its base
// with the next free number (WS gives WS1, then WS2).
QString MakeUniqueChildName(const QString& name, const QStringList& siblings);

// The full name ("&" between levels) of a code added beside the code `fullName`, or
// below it when `child` is set, different from every name of `present` ignoring
// letter case. A child of A&WS2 starts as A&WS2&WS1; a name ending in a letter steps
// its letter (A, B, … Z, ZA), any other its number; a level longer than the legal
// length starts again as N1. The last level is always a legal name.
QString MakeNewRowName(const QString& fullName, bool child, const QStringList& present);
// The same with the present names given case-folded (QString::toCaseFolded).
QString MakeNewRowName(const QString& fullName, bool child, const QSet<QString>& foldedPresent);
