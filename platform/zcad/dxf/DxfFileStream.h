#pragma once

// The bytes of a drawing file, read piece by piece while they are parsed. All of
// the file gets one address range up front, so views into it stay valid; pages
// are filled as the reader reaches them, and pages the reader has left behind for
// good are used again further on. A large floor is thus never whole in memory at
// once.
#include <QFile>
#include <QString>

#include <string_view>

class DxfFileStream
{
public:
    DxfFileStream() = default;
    ~DxfFileStream();
    DxfFileStream(const DxfFileStream&) = delete;
    DxfFileStream& operator=(const DxfFileStream&) = delete;

    // False (and error() says why) when the file cannot be opened or mapped.
    bool open(const QString& fileName);
    // The whole range: its size is the file's size when opened.
    std::string_view range() const { return { m_base, m_size }; }
    // Makes at least `wanted` bytes from the start readable (all of them when the
    // file has fewer) and answers how many are.
    size_t fill(size_t wanted);
    size_t available() const { return m_filled; }
    // Bytes before `offset` are not looked at again.
    void release(size_t offset);
    // The file could not be read on (one that grew shorter simply ends early).
    bool failed() const { return !m_error.isEmpty(); }
    QString error() const { return m_error; }

private:
    QFile m_file;
    char* m_base = nullptr;
    size_t m_mapped = 0;
    size_t m_size = 0;
    size_t m_filled = 0;
    size_t m_released = 0;
    // Pages moved ahead for reading end here.
    size_t m_recycled = 0;
    QString m_error;
};
