#include "DxfFileStream.h"

#include "ReadableFile.h"

#include <algorithm>

#include <sys/mman.h>
#include <unistd.h>

namespace {
// Read ahead in pieces of this size; give back in pieces at least as large.
constexpr size_t kPiece = size_t(1) << 20;

size_t pageSize()
{
    static const size_t size = size_t(sysconf(_SC_PAGESIZE));
    return size;
}
} // namespace

DxfFileStream::~DxfFileStream()
{
    if (m_base)
        munmap(m_base, m_mapped);
}

bool DxfFileStream::open(const QString& fileName)
{
    // A regular file only: a pipe or a device would never end.
    if (!ReadableFile::Open(m_file, fileName, &m_error, QIODevice::Unbuffered))
        return false;
    m_size = size_t(std::max<qint64>(m_file.size(), 0));
    if (m_size == 0)
        return true;
    // Address space only: pages take memory when filled.
    void* base
        = mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (base == MAP_FAILED) {
        m_size = 0;
        m_error = QStringLiteral("not enough memory for the file");
        return false;
    }
    m_base = static_cast<char*>(base);
    m_mapped = m_size;
    return true;
}

size_t DxfFileStream::fill(size_t wanted)
{
    wanted = std::min(std::max(wanted, m_filled + kPiece), m_size);
    if (wanted > m_filled) {
        // The pages about to be read into, made present in one call rather than
        // one fault per page while the system copies the bytes.
        const size_t begin = m_filled / pageSize() * pageSize();
        const size_t end = std::min((wanted + pageSize() - 1) / pageSize() * pageSize(), m_mapped);
        madvise(m_base + begin, end - begin, MADV_POPULATE_WRITE);
    }
    while (m_filled < wanted && !failed()) {
        const qint64 got = m_file.read(m_base + m_filled, qint64(wanted - m_filled));
        if (got <= 0) {
            // Shorter than it was when opened, or unreadable: what there is counts.
            if (got < 0)
                m_error = m_file.errorString();
            m_size = m_filled;
            break;
        }
        m_filled += size_t(got);
    }
    return m_filled;
}

void DxfFileStream::release(size_t offset)
{
    const size_t end = std::min(offset, m_filled) / pageSize() * pageSize();
    if (end < m_released + kPiece)
        return;
    const size_t length = end - m_released;
    // The pages left behind move to where the next pieces will be read: a large
    // file passes through the same few pages instead of taking new ones all along.
    // Their old range stays reserved, empty as if given back.
    const size_t target = std::max((m_filled + pageSize() - 1) / pageSize() * pageSize(), m_recycled);
    if (target + length <= m_mapped
        && mremap(m_base + m_released, length, length, MREMAP_MAYMOVE | MREMAP_FIXED | MREMAP_DONTUNMAP,
               m_base + target)
            != MAP_FAILED)
        m_recycled = target + length;
    else
        madvise(m_base + m_released, length, MADV_DONTNEED);
    m_released = end;
}
