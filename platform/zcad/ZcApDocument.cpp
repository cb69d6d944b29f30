#include "ZcApDocument.h"

#include <QFileInfo>

QString ZcApDocument::docTitle() const
{
    return QFileInfo(m_fileName).fileName();
}
