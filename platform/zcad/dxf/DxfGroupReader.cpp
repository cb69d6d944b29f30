#include "DxfGroupReader.h"

#include "DxfFileStream.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>

namespace {
// A binary drawing starts with a 22-byte sentinel whose last 14 bytes are these.
constexpr size_t kSentinelSize = 22;
constexpr std::string_view kSentinelTail("Binary DXF\r\n\x1a\0", 14);

std::string_view trimmed(std::string_view s)
{
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

// The first '\n' of the `size` bytes at `p`, null when there is none. Lines of a
// drawing are short (a group code, a number, a name): eight bytes are looked at a
// time at first, and the library's search takes over for long lines.
const char* findNewline(const char* p, size_t size)
{
    const char* end = p + size;
    if constexpr (std::endian::native == std::endian::little) {
        constexpr quint64 kOnes = 0x0101010101010101ULL;
        constexpr quint64 kHighs = 0x8080808080808080ULL;
        for (int words = 0; words < 4 && end - p >= 8; ++words, p += 8) {
            quint64 word;
            std::memcpy(&word, p, sizeof word);
            const quint64 x = word ^ (kOnes * quint64('\n'));
            // The lowest high bit set marks the first byte equal to '\n'.
            const quint64 found = (x - kOnes) & ~x & kHighs;
            if (found)
                return p + (std::countr_zero(found) >> 3);
        }
    }
    return static_cast<const char*>(std::memchr(p, '\n', size_t(end - p)));
}

// Plain decimals ("12", "-0.75", "2.5"), as nearly all numbers of a drawing are:
// at most 15 digits make an exact integer, and one division by an exact power of
// ten rounds correctly, so the value is the one the general conversion gives.
bool parsePlainDecimal(std::string_view s, double& value)
{
    static constexpr double kPowersOfTen[]
        = { 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15 };
    const char* p = s.data();
    const char* end = p + s.size();
    const bool negative = p != end && *p == '-';
    p += negative;
    quint64 mantissa = 0;
    int digits = 0;
    int fractionDigits = -1;
    for (; p != end; ++p) {
        const unsigned digit = unsigned(quint8(*p)) - '0';
        if (digit <= 9) {
            if (++digits > 15)
                return false;
            mantissa = mantissa * 10 + digit;
            fractionDigits += fractionDigits >= 0;
        } else if (*p == '.' && fractionDigits < 0) {
            fractionDigits = 0;
        } else {
            return false;
        }
    }
    if (digits == 0)
        return false;
    value = fractionDigits > 0 ? double(mantissa) / kPowersOfTen[fractionDigits] : double(mantissa);
    if (negative)
        value = -value;
    return true;
}

std::string_view numberText(std::string_view s)
{
    s = trimmed(s);
    if (!s.empty() && s.front() == '+')
        s.remove_prefix(1);
    return s;
}

enum class ValueType { String, Real, Int16, Int32, Int64, Bool, Binary };

ValueType typeOf(int code)
{
    if (code >= 10 && code <= 59)
        return ValueType::Real;
    if ((code >= 60 && code <= 79) || (code >= 170 && code <= 179) || (code >= 270 && code <= 289)
        || (code >= 370 && code <= 389) || (code >= 400 && code <= 409) || (code >= 1060 && code <= 1070))
        return ValueType::Int16;
    if ((code >= 90 && code <= 99) || (code >= 420 && code <= 429) || (code >= 440 && code <= 459)
        || code == 1071)
        return ValueType::Int32;
    if (code >= 160 && code <= 169)
        return ValueType::Int64;
    if ((code >= 110 && code <= 149) || (code >= 210 && code <= 239) || (code >= 460 && code <= 469)
        || (code >= 1010 && code <= 1059))
        return ValueType::Real;
    if (code >= 290 && code <= 299)
        return ValueType::Bool;
    if ((code >= 310 && code <= 319) || code == 1004)
        return ValueType::Binary;
    return ValueType::String;
}

// A group code line, trimmed: decimal digits with an optional minus sign, in the
// range group codes have.
bool parseCode(std::string_view text, int& code)
{
    const char* p = text.data();
    const char* end = p + text.size();
    const bool negative = p != end && *p == '-';
    p += negative;
    if (p == end)
        return false;
    int value = 0;
    for (; p != end; ++p) {
        const unsigned digit = unsigned(quint8(*p)) - '0';
        if (digit > 9)
            return false;
        value = value * 10 + int(digit);
        // Leading zeros are allowed; anything this large is no group code.
        if (value > 1071)
            return false;
    }
    code = negative ? -value : value;
    return code >= -5;
}

template <typename T> T readLittleEndian(const char* p)
{
    T value;
    std::memcpy(&value, p, sizeof(T));
    return value;
}
} // namespace

double DxfGroup::toDouble(bool* ok) const
{
    if (binaryNumber) {
        if (ok)
            *ok = true;
        return real != 0.0 || integer == 0 ? real : double(integer);
    }
    const std::string_view s = numberText(text);
    double value = 0.0;
    if (parsePlainDecimal(s, value)) {
        if (ok)
            *ok = true;
        return value;
    }
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
    const bool good = ec == std::errc() && end == s.data() + s.size() && !s.empty();
    if (ok)
        *ok = good;
    return good ? value : 0.0;
}

qint64 DxfGroup::toInt(bool* ok) const
{
    if (binaryNumber) {
        if (ok)
            *ok = true;
        return integer != 0 || real == 0.0 ? integer : qint64(real);
    }
    const std::string_view s = numberText(text);
    qint64 value = 0;
    const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
    bool good = ec == std::errc() && !s.empty();
    // Some writers put a real where an integer belongs ("1.0").
    if (good && end != s.data() + s.size()) {
        double real = 0.0;
        const auto [end2, ec2] = std::from_chars(s.data(), s.data() + s.size(), real);
        good = ec2 == std::errc() && end2 == s.data() + s.size() && real > -9.2e18 && real < 9.2e18;
        value = good ? qint64(real) : 0;
    }
    if (ok)
        *ok = good;
    return good ? value : 0;
}

DxfGroupReader::DxfGroupReader(std::string_view data)
    : m_data(data)
    , m_end(data.size())
{
    detectFormat();
}

DxfGroupReader::DxfGroupReader(DxfFileStream& stream)
    : m_data(stream.range())
    , m_stream(&stream)
{
    m_end = stream.fill(kSentinelSize);
    m_data = m_data.substr(0, stream.range().size());
    detectFormat();
    // Binary groups are short and rare in practice: those files are read whole.
    if (m_binary) {
        m_end = stream.fill(m_data.size());
        m_data = m_data.substr(0, m_end);
    }
}

bool DxfGroupReader::readMore()
{
    if (!m_stream || m_end >= m_data.size())
        return false;
    m_end = m_stream->fill(m_end + 1);
    // A file that grew shorter since it was opened ends where its bytes end.
    m_data = m_data.substr(0, m_stream->range().size());
    return true;
}

void DxfGroupReader::releaseBeforeLastGroup()
{
    if (m_stream)
        m_stream->release(m_lastStart);
}

void DxfGroupReader::detectFormat()
{
    if (m_data.size() >= kSentinelSize
        && m_data.substr(kSentinelSize - kSentinelTail.size(), kSentinelTail.size()) == kSentinelTail) {
        m_binary = true;
        m_position = kSentinelSize;
        // Old binary files give codes one byte wide: the first group is 0 "SECTION".
        m_shortCodes
            = m_data.size() > m_position + 1 && m_data[m_position] == 0 && m_data[m_position + 1] == 'S';
    } else if (m_data.substr(0, 3) == "\xEF\xBB\xBF") {
        m_position = 3;
    }
}

bool DxfGroupReader::fail(const QString& message)
{
    if (m_error.isEmpty())
        m_error = m_binary ? QStringLiteral("%1 at byte %2").arg(message).arg(m_position)
                           : QStringLiteral("%1 at line %2").arg(message).arg(m_line);
    m_position = m_data.size();
    return false;
}

void DxfGroupReader::pushBack()
{
    m_pushedBackAt = position();
    m_position = m_lastStart;
    m_line = m_lastLine;
}

bool DxfGroupReader::next(DxfGroup& group)
{
    m_pushedBackAt = -1;
    if (failed() || m_position >= m_data.size())
        return false;
    m_lastStart = m_position;
    m_lastLine = m_line;
    return m_binary ? nextBinary(group) : nextText(group);
}

inline bool DxfGroupReader::readLine(std::string_view& line)
{
    if (m_position >= m_data.size())
        return false;
    const char* begin = m_data.data() + m_position;
    size_t left = m_end - m_position;
    const void* newline = findNewline(begin, left);
    while (!newline && readMore()) {
        const size_t searched = left;
        left = m_end - m_position;
        newline = std::memchr(begin + searched, '\n', left - searched);
    }
    const size_t length = newline ? size_t(static_cast<const char*>(newline) - begin) : left;
    m_position += newline ? length + 1 : length;
    ++m_line;
    line = std::string_view(begin, length);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return true;
}

inline bool DxfGroupReader::readPlainCode(int& code)
{
    const char* begin = m_data.data() + m_position;
    const char* end = m_data.data() + m_end;
    const char* p = begin;
    while (p != end && *p == ' ')
        ++p;
    const char* digits = p;
    int value = 0;
    for (; p != end && p - digits < 4; ++p) {
        const unsigned digit = unsigned(quint8(*p)) - '0';
        if (digit > 9)
            break;
        value = value * 10 + int(digit);
    }
    if (p == digits || value > 1071)
        return false;
    if (p != end && *p == '\r')
        ++p;
    if (p == end || *p != '\n')
        return false;
    m_position += size_t(p + 1 - begin);
    ++m_line;
    code = value;
    return true;
}

bool DxfGroupReader::nextText(DxfGroup& group)
{
    int code = 0;
    if (!readPlainCode(code)) {
        std::string_view codeLine;
        // Blank lines between groups (a trailing newline at the end, say) are no group.
        do {
            if (!readLine(codeLine))
                return false;
            codeLine = trimmed(codeLine);
        } while (codeLine.empty() && m_position < m_data.size());
        if (codeLine.empty())
            return false;
        if (!parseCode(codeLine, code))
            return fail(QStringLiteral("invalid group code"));
    }
    std::string_view value;
    if (!readLine(value))
        return fail(QStringLiteral("group %1 without a value").arg(code));
    // Field by field: the group is written for every line pair of the file.
    group.code = code;
    group.text = value;
    group.real = 0.0;
    group.integer = 0;
    group.binaryNumber = false;
    return true;
}

bool DxfGroupReader::nextBinary(DxfGroup& group)
{
    const char* p = m_data.data();
    size_t left = m_data.size() - m_position;
    int code = 0;
    if (m_shortCodes) {
        code = quint8(p[m_position]);
        ++m_position;
        if (code == 255) {
            if (left < 3)
                return fail(QStringLiteral("truncated group code"));
            code = readLittleEndian<qint16>(p + m_position);
            m_position += 2;
        }
    } else {
        if (left < 2)
            return fail(QStringLiteral("truncated group code"));
        code = readLittleEndian<qint16>(p + m_position);
        m_position += 2;
    }
    if (code < -5 || code > 1071)
        return fail(QStringLiteral("invalid group code"));
    left = m_data.size() - m_position;
    group = DxfGroup { code, {} };
    group.binaryNumber = true;
    const char* at = p + m_position;
    auto need = [&](size_t bytes) { return left >= bytes; };
    switch (typeOf(code)) {
    case ValueType::Real:
        if (!need(8))
            return fail(QStringLiteral("truncated value"));
        group.real = readLittleEndian<double>(at);
        m_position += 8;
        break;
    case ValueType::Int16:
        if (!need(2))
            return fail(QStringLiteral("truncated value"));
        group.integer = readLittleEndian<qint16>(at);
        m_position += 2;
        break;
    case ValueType::Int32:
        if (!need(4))
            return fail(QStringLiteral("truncated value"));
        group.integer = readLittleEndian<qint32>(at);
        m_position += 4;
        break;
    case ValueType::Int64:
        if (!need(8))
            return fail(QStringLiteral("truncated value"));
        group.integer = readLittleEndian<qint64>(at);
        m_position += 8;
        break;
    case ValueType::Bool:
        if (!need(1))
            return fail(QStringLiteral("truncated value"));
        group.integer = quint8(*at);
        m_position += 1;
        break;
    case ValueType::Binary: {
        if (!need(1) || !need(1 + size_t(quint8(*at))))
            return fail(QStringLiteral("truncated binary chunk"));
        const size_t length = quint8(*at);
        group.text = std::string_view(at + 1, length);
        group.binaryNumber = false;
        m_position += 1 + length;
        break;
    }
    case ValueType::String: {
        const void* nul = std::memchr(at, 0, left);
        if (!nul)
            return fail(QStringLiteral("unterminated string"));
        const size_t length = size_t(static_cast<const char*>(nul) - at);
        group.text = std::string_view(at, length);
        group.binaryNumber = false;
        m_position += length + 1;
        break;
    }
    }
    return true;
}
