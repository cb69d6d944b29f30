#pragma once

// Text of a DXF file: UTF-8 from the 2007 format on; before that the drawing's
// code page ($DWGCODEPAGE, "ANSI_936" being GBK), with characters outside it
// written as "\U+XXXX". A file that names no code page is taken as UTF-8 where its
// bytes are valid UTF-8 and as GBK elsewhere.
#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>

#include <string_view>

class DxfTextCodec
{
public:
    DxfTextCodec();

    // $ACADVER ("AC1009" …) and $DWGCODEPAGE ("ANSI_936" …), either may be empty.
    void configure(const QString& acadVersion, const QString& codePage);
    bool isUtf8() const { return m_utf8; }

    QString decode(std::string_view bytes);
    QByteArray encode(const QString& text);

    // The Qt codec name for a DXF code page, empty when unknown.
    static QByteArray codecNameFor(const QString& codePage);
    // Whether a $ACADVER value means UTF-8 text (AC1021 and later).
    static bool isUtf8Version(const QString& acadVersion);

private:
    QString decodeLegacy(std::string_view bytes);
    static void expandUnicodeEscapes(QString& text);

    bool m_utf8 = false;
    bool m_guess = true;
    QStringDecoder m_decoder;
    QStringEncoder m_encoder;
};
