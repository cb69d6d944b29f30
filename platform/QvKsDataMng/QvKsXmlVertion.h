#pragma once

// The version stamp of ".scn" files: the "Version" attribute of the root element,
// in every layout the product ever wrote.
#include <QString>

class QvKsXmlVertion
{
public:
    // Sets the stamp of the file at `filePath`, keeping everything else. The file is
    // rewritten in one step (QvKsAtomicFile), so a failure leaves it as it was; a
    // file that carries the stamp already is left untouched.
    static bool SetXmlVersion(const QString& version, const QString& filePath);
    // Reads the stamp; false when the file cannot be read, is not XML, or has none.
    static bool GetXmlVersion(QString& version, const QString& filePath);
};
