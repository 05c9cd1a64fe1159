#include "map/LightPool.h"

#include <new>

namespace {

// Large enough to come from the system in one piece, of which only the pages in use count.
constexpr std::size_t kBlocksPerSlab = 1024;

} // namespace

LightPool::LightPool(std::size_t size, std::size_t alignment)
    : m_size(size)
    , m_alignment(alignment)
{}

LightPool::~LightPool()
{
    release();
}

void* LightPool::take()
{
    void* block = m_free;
    if (m_free != nullptr) {
        m_free = m_free->next;
    } else {
        if (m_slabs.empty() || m_used == kBlocksPerSlab) {
            m_slabs.push_back(static_cast<unsigned char*>(
                ::operator new(kBlocksPerSlab* m_size, std::align_val_t(m_alignment))));
            m_used = 0;
        }
        block = m_slabs.back() + m_used * m_size;
        ++m_used;
    }
    ++m_live;
    return block;
}

void LightPool::giveBack(void* block)
{
    m_free = ::new (block) Free{m_free};
    if (--m_live == 0) {
        release();
    }
}

void LightPool::release()
{
    for (unsigned char* const slab : m_slabs) {
        ::operator delete(slab, std::align_val_t(m_alignment));
    }
    m_slabs.clear();
    m_used = 0;
    m_free = nullptr;
}
