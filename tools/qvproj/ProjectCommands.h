#pragma once

// The commands of qvproj. Each returns the process exit code (0 on success) and
// writes its messages to `out` and `err`.
#include <QString>

class CSysCodeData;
class QTextStream;

namespace ProjectCommands {

int Demo(const QString& folder, QTextStream& out, QTextStream& err);
int Print(const QString& folder, const QString& spec, QTextStream& out, QTextStream& err);
int Export(
    const QString& folder, const QString& spec, const QString& file, QTextStream& out, QTextStream& err);
// A file naming another specialty is refused unless `anySpec`.
int Import(const QString& folder, const QString& spec, const QString& file, bool anySpec, QTextStream& out,
    QTextStream& err);

// One line describing a code and every attribute it carries.
QString DescribeCode(const CSysCodeData& node);

} // namespace ProjectCommands
