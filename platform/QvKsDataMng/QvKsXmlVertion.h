#pragma once

// The version stamp of ".scn" files: the "Version" attribute of the root element,
// in every layout the product ever wrote.
#include <QString>

class QvKsXmlVertion
{
public:
    // Sets the stamp of the file at `filePath`, keeping everything else. The file is
    // rewritten beside and renamed over, so a failure leaves it as it was.
    static bool SetXmlVersion(const QString& version, const QString& filePath);
    // Reads the stamp; false when the file cannot be read, is not XML, or has none.
    static bool GetXmlVersion(QString& version, const QString& filePath);
};
