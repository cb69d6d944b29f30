#pragma once

// Splits DXF bytes into groups (a code and its value), from text DXF (LF or CRLF
// line ends, optional UTF-8 byte-order mark) or binary DXF (one- or two-byte codes).
// Values stay views into the bytes; numbers are converted only when asked for.
#include <QString>
#include <QtGlobal>

#include <string_view>

class DxfFileStream;

struct DxfGroup
{
    int code = 0;
    // The value as text (text DXF) or the string value (binary DXF).
    std::string_view text;
    // Numbers of binary DXF.
    double real = 0.0;
    qint64 integer = 0;
    bool binaryNumber = false;

    double toDouble(bool* ok = nullptr) const;
    qint64 toInt(bool* ok = nullptr) const;
    bool is(std::string_view value) const { return text == value; }
};

class DxfGroupReader
{
public:
    explicit DxfGroupReader(std::string_view data);
    // Reads the bytes of `stream` as they are needed.
    explicit DxfGroupReader(DxfFileStream& stream);

    bool isBinary() const { return m_binary; }
    // The next group; false at the end of the data or on a malformed group (then
    // failed() is true and error() says where).
    bool next(DxfGroup& group);
    // The group last returned by next() is returned once more by the next call
    // (read again from its bytes, which are still there).
    void pushBack();
    bool failed() const { return !m_error.isEmpty(); }
    QString error() const { return m_error; }
    bool atEnd() const { return m_position >= m_data.size(); }
    // The line (text DXF) or byte offset (binary DXF) reached; a group given back
    // counts as read.
    qint64 position() const
    {
        return m_pushedBackAt >= 0 ? m_pushedBackAt : m_binary ? qint64(m_position) : m_line;
    }
    size_t bytesLeft() const { return m_data.size() - m_position; }
    // Nothing before the group last returned is looked at again (the views of
    // earlier groups may then be gone).
    void releaseBeforeLastGroup();

private:
    bool nextText(DxfGroup& group);
    bool nextBinary(DxfGroup& group);
    bool readLine(std::string_view& line);
    // The usual code line (blanks, up to four digits, the line end) in one pass;
    // false, and nothing read, for any other.
    bool readPlainCode(int& code);
    bool fail(const QString& message);
    void detectFormat();
    bool readMore();

    std::string_view m_data;
    size_t m_position = 0;
    // Bytes readable so far (all of m_data without a stream).
    size_t m_end = 0;
    // Where the group last returned starts, and its line.
    size_t m_lastStart = 0;
    qint64 m_lastLine = 0;
    // The position after the group given back; -1 when none is.
    qint64 m_pushedBackAt = -1;
    DxfFileStream* m_stream = nullptr;
    qint64 m_line = 0;
    bool m_binary = false;
    bool m_shortCodes = false;
    QString m_error;
};
