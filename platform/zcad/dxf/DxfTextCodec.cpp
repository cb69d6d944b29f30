#include "DxfTextCodec.h"

#include <algorithm>

namespace {
bool isAscii(std::string_view bytes)
{
    for (const char c : bytes)
        if (quint8(c) >= 0x80)
            return false;
    return true;
}

int hexValue(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'a' && u <= 'f')
        return u - 'a' + 10;
    if (u >= 'A' && u <= 'F')
        return u - 'A' + 10;
    return -1;
}
} // namespace

DxfTextCodec::DxfTextCodec()
    : m_decoder("GBK")
    , m_encoder("GBK")
{ }

QByteArray DxfTextCodec::codecNameFor(const QString& codePage)
{
    const QString page = codePage.trimmed().toUpper();
    if (page == u"ANSI_936" || page == u"GB2312" || page == u"GBK")
        return "GBK";
    if (page == u"ANSI_950" || page == u"BIG5")
        return "Big5";
    if (page == u"ANSI_932" || page == u"DOS932")
        return "Shift_JIS";
    if (page == u"ANSI_949" || page == u"ANSI_1361")
        return "windows-949";
    if (page == u"UTF8" || page == u"UTF-8")
        return "UTF-8";
    if (page.startsWith(u"ANSI_125") || page == u"ANSI_874")
        return "windows-" + page.mid(5).toLatin1();
    if (page.startsWith(u"DOS"))
        return "IBM" + page.mid(3).toLatin1();
    if (page.startsWith(u"ISO8859_"))
        return "ISO-8859-" + page.mid(8).toLatin1();
    return {};
}

bool DxfTextCodec::isUtf8Version(const QString& acadVersion)
{
    const QString v = acadVersion.trimmed().toUpper();
    return v.startsWith(u"AC") && v.size() >= 6 && v.mid(2).toInt() >= 1021;
}

void DxfTextCodec::configure(const QString& acadVersion, const QString& codePage)
{
    m_utf8 = isUtf8Version(acadVersion);
    m_guess = false;
    if (m_utf8)
        return;
    const QByteArray name = codecNameFor(codePage);
    if (name == "UTF-8") {
        m_utf8 = true;
        return;
    }
    if (name.isEmpty()) {
        // No known code page: decide string by string.
        m_guess = true;
        m_decoder = QStringDecoder("GBK");
        m_encoder = QStringEncoder("GBK");
        return;
    }
    m_decoder = QStringDecoder(name.constData());
    m_encoder = QStringEncoder(name.constData());
    if (!m_decoder.isValid())
        m_decoder = QStringDecoder(QStringDecoder::Latin1);
    if (!m_encoder.isValid())
        m_encoder = QStringEncoder(QStringEncoder::Latin1);
}

QString DxfTextCodec::decode(std::string_view bytes)
{
    QString text;
    if (isAscii(bytes))
        text = QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));
    else if (m_utf8)
        text = QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
    else
        text = decodeLegacy(bytes);
    if (text.contains(QLatin1String("\\U+"), Qt::CaseInsensitive))
        expandUnicodeEscapes(text);
    return text;
}

QString DxfTextCodec::decodeLegacy(std::string_view bytes)
{
    const QByteArrayView view(bytes.data(), qsizetype(bytes.size()));
    if (m_guess) {
        QStringDecoder utf8(QStringDecoder::Utf8);
        QString text = utf8(view);
        if (!utf8.hasError())
            return text;
    }
    if (!m_decoder.isValid())
        return QString::fromLatin1(view);
    m_decoder.resetState();
    QString text = m_decoder(view);
    return text;
}

void DxfTextCodec::expandUnicodeEscapes(QString& text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 6 < text.size() + 0 && (text[i + 1] == u'U' || text[i + 1] == u'u')
            && text[i + 2] == u'+') {
            int value = 0;
            bool good = true;
            for (int k = 3; k < 7; ++k) {
                const int digit = hexValue(text[i + k]);
                good = good && digit >= 0;
                value = value * 16 + std::max(digit, 0);
            }
            if (good) {
                out.append(QChar(char16_t(value)));
                i += 6;
                continue;
            }
        }
        out.append(text[i]);
    }
    text = out;
}

QByteArray DxfTextCodec::encode(const QString& text)
{
    bool ascii = true;
    for (const QChar c : text)
        if (c.unicode() >= 0x80) {
            ascii = false;
            break;
        }
    if (ascii)
        return text.toLatin1();
    if (m_utf8)
        return text.toUtf8();
    m_encoder.resetState();
    QByteArray whole = m_encoder(text);
    if (!m_encoder.hasError())
        return whole;
    // Characters outside the code page go out as \U+XXXX, one by one.
    QByteArray out;
    for (const QChar c : text) {
        m_encoder.resetState();
        const QByteArray piece = m_encoder(QStringView(&c, 1));
        if (m_encoder.hasError() || (piece == "?" && c != u'?'))
            out += "\\U+" + QByteArray::number(c.unicode(), 16).toUpper().rightJustified(4, '0');
        else
            out += piece;
    }
    return out;
}
