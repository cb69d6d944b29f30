#pragma once

// Memory for the objects a drawing reader makes. A floor holds hundreds of
// thousands of small entities that are made one after the other and all die with
// their database: they are placed one after the other in large blocks, and the
// blocks are given back at once, instead of one heap allocation (and one free) each.
//
// While a Scope is active on a thread, every ZcDbObject made there with new takes
// its memory from that arena (ZcDbObject::operator new). The objects are still
// deleted with delete, which then runs their destructor and keeps the memory; the
// arena must outlive them, so it belongs to the database that owns them.
#include <cstddef>
#include <vector>

class ZcDbObjectArena
{
public:
    ZcDbObjectArena() = default;
    ~ZcDbObjectArena();
    ZcDbObjectArena(const ZcDbObjectArena&) = delete;
    ZcDbObjectArena& operator=(const ZcDbObjectArena&) = delete;

    class Scope
    {
    public:
        explicit Scope(ZcDbObjectArena& arena);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        ZcDbObjectArena* m_previous;
    };

    // The arena of the innermost active scope of this thread; null when none.
    static ZcDbObjectArena* current();

    // `size` bytes aligned for any object of the database; never null (throws
    // std::bad_alloc as new does).
    void* allocate(std::size_t size);
    // Whether `address` lies in memory this arena handed out.
    bool contains(const void* address) const;
    // Bytes handed out so far, alignment padding included.
    std::size_t bytesUsed() const { return m_used; }

    static constexpr std::size_t kAlignment
        = alignof(double) > alignof(void*) ? alignof(double) : alignof(void*);
    // Blocks start at the first size and double up to the full one.
    static constexpr std::size_t kFirstBlockSize = std::size_t(64) << 10;
    static constexpr std::size_t kBlockSize = std::size_t(2) << 20;

private:
    struct Block
    {
        char* begin;
        char* end;
    };

    char* newBlock(std::size_t blockSize);

    std::vector<Block> m_blocks;
    char* m_next = nullptr;
    char* m_end = nullptr;
    std::size_t m_used = 0;
    std::size_t m_nextBlockSize = kFirstBlockSize;
};
