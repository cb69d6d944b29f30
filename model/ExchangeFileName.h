#pragma once

// The name the export offers by default: the project's name, "-" and the
// specialty. Both come from the project, which is shared between people, so they
// are cleaned before they become part of a path: path separators, "..", control
// characters and the characters no file name may hold are taken out, as are blanks
// and dots at either end. A part with nothing left takes a neutral name.
#include <QString>

// "项目名-电气" from the project name and the specialty.
QString DefaultExchangeFileName(const QString& projectName, const QString& spec);
// One part of a file name, cleaned; `fallback` when nothing is left.
QString CleanFileNamePart(const QString& text, const QString& fallback);
