#include "ZcDbObjectArena.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <sys/mman.h>
#include <unistd.h>

namespace {
thread_local ZcDbObjectArena* t_current = nullptr;

// Makes the whole pages of a new block present in one call rather than one fault
// per page as the objects are written: the block is filled soon anyway.
void prefault(char* memory, std::size_t size)
{
    const auto page = std::uintptr_t(sysconf(_SC_PAGESIZE));
    const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(memory) + page - 1) & ~(page - 1);
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(memory) + size) & ~(page - 1);
    if (end > begin)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
}

std::size_t alignedSize(std::size_t size)
{
    return (size + ZcDbObjectArena::kAlignment - 1) & ~(ZcDbObjectArena::kAlignment - 1);
}
} // namespace

ZcDbObjectArena::Scope::Scope(ZcDbObjectArena& arena)
    : m_previous(t_current)
{
    t_current = &arena;
}

ZcDbObjectArena::Scope::~Scope()
{
    t_current = m_previous;
}

ZcDbObjectArena* ZcDbObjectArena::current()
{
    return t_current;
}

ZcDbObjectArena::~ZcDbObjectArena()
{
    for (const Block& block : m_blocks)
        std::free(block.begin);
}

char* ZcDbObjectArena::newBlock(std::size_t blockSize)
{
    auto* memory = static_cast<char*>(std::malloc(blockSize));
    if (!memory)
        throw std::bad_alloc();
    m_blocks.push_back({ memory, memory + blockSize });
    prefault(memory, blockSize);
    return memory;
}

void* ZcDbObjectArena::allocate(std::size_t size)
{
    size = alignedSize(size == 0 ? 1 : size);
    if (size > std::size_t(m_end - m_next)) {
        if (size > m_nextBlockSize / 2) {
            // A block of its own; the current one goes on being filled.
            m_used += size;
            char* memory = newBlock(size);
            if (m_blocks.size() > 1)
                std::swap(m_blocks.back(), m_blocks[m_blocks.size() - 2]);
            return memory;
        }
        // Small drawings take little; blocks grow with the drawing up to full size.
        m_next = newBlock(m_nextBlockSize);
        m_end = m_next + m_nextBlockSize;
        m_nextBlockSize = std::min(m_nextBlockSize * 2, kBlockSize);
    }
    char* memory = m_next;
    m_next += size;
    m_used += size;
    return memory;
}

bool ZcDbObjectArena::contains(const void* address) const
{
    const auto p = reinterpret_cast<std::uintptr_t>(address);
    // Newest first: the object asked about was nearly always made just now.
    for (auto it = m_blocks.rbegin(); it != m_blocks.rend(); ++it)
        if (p >= reinterpret_cast<std::uintptr_t>(it->begin) && p < reinterpret_cast<std::uintptr_t>(it->end))
            return true;
    return false;
}
